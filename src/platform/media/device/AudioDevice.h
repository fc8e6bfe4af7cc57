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
    const std::atomic<float> *volume = nullptr; // 0.0 to 1.0; read whenever sound is made
    // The device calls it, on any thread, when it runs at the pace of its data and has none. Devices that
    // keep the time never call it.
    std::function<void()> wantsData;
};

// Where sound goes. Takes up to two seconds of interleaved samples ahead. Used by one thread. The destructor
// ends the sound and may take a while.
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

    // False until told otherwise. While it does not play, a device keeps what was written.
    virtual void setPlaying(bool playing) = 0;
    // Returns the number of frames taken.
    virtual qint64 write(const float *samples, qint64 frames) = 0;
    virtual qint64 written() const = 0;  // frames, since the device was opened
    virtual qint64 consumed() const = 0; // the frames among them that have gone on to be heard

protected:
    void setSampleRate(int sampleRate) { m_sampleRate = sampleRate; }

private:
    int m_sampleRate;
    int m_channels;
};

} // namespace orvel
