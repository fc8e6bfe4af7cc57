#pragma once

#include "support/EnvironmentValue.h"

#include <QTemporaryDir>
#include <vector>

namespace orvel::test {

// What SDL's disk driver writes, as fast as it comes, while an object of this class lives. The driver begins
// its file anew whenever a device is opened.
class CapturedSound
{
public:
    CapturedSound();
    ~CapturedSound();

    // Ends all queues. Interleaved; SDL's own silence comes before and behind the sound.
    std::vector<float> samples() const;

private:
    const QTemporaryDir m_folder;
    const EnvironmentValue m_driver{"SDL_AUDIODRIVER", "disk"};
    const EnvironmentValue m_delay{"SDL_DISKAUDIODELAY", "0"};
    const EnvironmentValue m_file;
};

} // namespace orvel::test
