#pragma once

#include <QtGlobal>
#include <atomic>
#include <functional>
#include <memory>

namespace orvel {

struct AudioDeviceRequest
{
    int sampleRate = 0;
    int channels = 0;                           // 1 or 2
    const std::atomic<float> *volume = nullptr; // read whenever sound is made
    // Asks for more, from any thread, without waiting for the queue's next look. A device that runs at the
    // pace of its data needs it; the others keep the time and never call it.
    std::function<void()> wantsData;
};

// Where sound goes: it takes up to two seconds of interleaved samples ahead. Used by one thread; destroying
// it ends the sound and may take a while.
class AudioDevice
{
public:
    AudioDevice(int sampleRate, int channels) : m_sampleRate(sampleRate), m_channels(channels) {}
    virtual ~AudioDevice() = default;
    AudioDevice(const AudioDevice &) = delete;
    AudioDevice &operator=(const AudioDevice &) = delete;

    int sampleRate() const { return m_sampleRate; }
    int channels() const { return m_channels; }
    qint64 capacity() const { return 2 * qint64(m_sampleRate); } // frames

    // A device is made silent; while it is, it keeps what was written.
    virtual void setPlaying(bool playing) = 0;
    // How many frames there was room for.
    virtual qint64 write(const float *samples, qint64 frames) = 0;
    virtual qint64 written() const = 0;  // frames
    virtual qint64 consumed() const = 0; // frames that have gone on to be heard

protected:
    void setSampleRate(int sampleRate) { m_sampleRate = sampleRate; }

private:
    int m_sampleRate;
    int m_channels;
};

} // namespace orvel
