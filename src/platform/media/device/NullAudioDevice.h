#pragma once

#include "platform/media/device/AudioDevice.h"

#include <chrono>

namespace orvel {

// Makes no sound, in time: what it consumes follows the steady clock without drift for as long as it has
// data.
class NullAudioDevice final : public AudioDevice
{
public:
    using AudioDevice::AudioDevice;

    void setPlaying(bool playing) override;
    qint64 write(const float *samples, qint64 frames) override;
    qint64 written() const override { return m_written; }
    qint64 consumed() const override;

private:
    using Clock = std::chrono::steady_clock;
    void countFromNow();

    bool m_isPlaying = false;
    qint64 m_written = 0;
    // What was consumed at the moment from which the clock counts.
    qint64 m_base = 0;
    Clock::time_point m_since;
};

} // namespace orvel
