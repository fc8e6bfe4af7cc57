#pragma once

#include <QString>
#include <QtGlobal>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

namespace orvel {

struct AudioDeviceRequest
{
    int sampleRate = 0;
    int channels = 0;                           // 1 or 2
    const std::atomic<float> *volume = nullptr; // 0.0 to 1.0; read whenever sound is made
    // The device calls it, on any thread and with a lock held, when it takes more. Devices that neither run
    // at the pace of their data nor are asked by a server never call it.
    std::function<void()> wantsData = {};
    double ringSeconds = 2; // of sound, that the device takes ahead
    QString mediaName = {}; // how a sound server's mixer names the sound
    // How long a device whose sound server is gone stands still. After it, it goes on in silence.
    double standingSeconds = 0;
    // Called on any thread when a sound server wants the device silent for another sound, and at the end of
    // that.
    std::function<void(bool begins)> interrupted = {};
};

// Where sound goes. Takes interleaved samples ahead. Used by one thread. The destructor ends the sound and
// may take a while.
class AudioDevice
{
public:
    explicit AudioDevice(const AudioDeviceRequest &request)
        : m_sampleRate(request.sampleRate), m_channels(request.channels), m_ringSeconds(request.ringSeconds)
    {
    }
    virtual ~AudioDevice() = default;
    AudioDevice(const AudioDevice &) = delete;
    AudioDevice &operator=(const AudioDevice &) = delete;

    int sampleRate() const { return m_sampleRate; }
    int channels() const { return m_channels; }
    qint64 capacity() const { return qint64(m_ringSeconds * m_sampleRate); } // frames

    // False until told otherwise. While it does not play, a device keeps what was written.
    virtual void setPlaying(bool playing) = 0;
    // Returns the number of frames taken.
    virtual qint64 write(const float *samples, qint64 frames) = 0;
    virtual qint64 written() const = 0;  // frames, since the device was opened
    virtual qint64 consumed() const = 0; // the frames among them that have gone on to be heard
    // Returns how many frames are to be heard before a refill is due. nullopt for a device that asks for data
    // with wantsData.
    virtual std::optional<qint64> framesUntilRefill() const
    {
        return written() - consumed() - capacity() / 2;
    }
    // Whether the sound stands still although the device is told to play.
    virtual bool isStanding() const { return false; }
    // The volume has changed.
    virtual void followVolume() {}
    virtual void setMediaName(const QString & /*name*/) {}

protected:
    void setSampleRate(int sampleRate) { m_sampleRate = sampleRate; }

private:
    int m_sampleRate;
    int m_channels;
    double m_ringSeconds;
};

} // namespace orvel
