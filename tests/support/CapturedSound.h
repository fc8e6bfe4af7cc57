#pragma once

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
    QTemporaryDir m_folder;
};

} // namespace orvel::test
