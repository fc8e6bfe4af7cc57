#include "platform/media/device/NullAudioDevice.h"

#include <algorithm>

namespace orvel {

void NullAudioDevice::setPlaying(bool playing)
{
    if (playing == m_isPlaying)
        return;
    countFromNow();
    m_isPlaying = playing;
}

qint64 NullAudioDevice::write(const float *, qint64 frames)
{
    if (consumed() == m_written)
        countFromNow(); // after a gap the clock does not catch up
    frames = std::min(frames, capacity() - (m_written - consumed()));
    m_written += frames;
    return frames;
}

qint64 NullAudioDevice::consumed() const
{
    if (!m_isPlaying)
        return m_base;
    const std::chrono::duration<double> elapsed = Clock::now() - m_since;
    return std::min(m_written, m_base + qint64(elapsed.count() * sampleRate()));
}

void NullAudioDevice::countFromNow()
{
    m_base = consumed();
    m_since = Clock::now();
}

} // namespace orvel
