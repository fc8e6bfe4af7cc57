#include "support/CapturedSound.h"

#include "platform/media/output/SoundOutput.h"

#include <QFile>
#include <cstring>

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
    QFile file(m_folder.filePath(QStringLiteral("sound.raw")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    std::vector<float> samples(std::size_t(bytes.size()) / sizeof(float));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

} // namespace orvel::test
