#pragma once

#include "platform/media/device/AudioDevice.h"

#include <chrono>

namespace orvel {

// Makes no sound, in real time: what it consumes follows the steady clock without drift for as long as it has
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
    qint64 m_base = 0;         // consumed by `m_since`
    Clock::time_point m_since; // from when on the clock counts
};

} // namespace orvel
