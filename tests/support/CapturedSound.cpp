#include "support/CapturedSound.h"

#include "platform/media/output/SoundOutput.h"
#include "support/SoundComparison.h"

namespace orvel::test {

CapturedSound::CapturedSound()
    : m_file("SDL_DISKAUDIOFILE", m_folder.filePath(QStringLiteral("sound.raw")).toLocal8Bit())
{
    joinOutputQueues(); // SDL remembers its driver
}

CapturedSound::~CapturedSound() { joinOutputQueues(); }

std::vector<float> CapturedSound::samples() const
{
    joinOutputQueues();
    return samplesIn(m_folder.filePath(QStringLiteral("sound.raw")));
}

} // namespace orvel::test
