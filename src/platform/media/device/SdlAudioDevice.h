#pragma once

#include "platform/media/device/AudioDevice.h"
#include "platform/media/device/PcmRing.h"

#include <condition_variable>
#include <mutex>

namespace orvel {

// SDL's default device. Its callback reads the ring and applies the volume; it neither locks nor allocates
// nor waits. There are two exceptions. The first callback waits a little for the first sound, which would
// else follow a whole period of silence. And SDL's disk driver runs at the pace of its data: there every
// callback waits for it, so that what it writes holds what was sent without gaps.
class SdlAudioDevice final : public AudioDevice
{
public:
    struct Opening
    {
        std::unique_ptr<SdlAudioDevice> device; // null when there is none
        bool isBusy = false;                    // with other queues' sound: so there is one after all
    };
    // Waits a little for a device that is being closed.
    static Opening open(const AudioDeviceRequest &request);
    ~SdlAudioDevice() override;

    void setPlaying(bool playing) override;
    qint64 write(const float *samples, qint64 frames) override;
    qint64 written() const override { return m_ring->written(); }
    qint64 consumed() const override { return m_ring->consumed(); }

    // Frees what SDL keeps for the calling thread. Call when a thread that opened devices ends.
    static void leaveThread();
    // Ends SDL's sound if all devices are closed; the next open starts it anew.
    static void quit();

private:
    explicit SdlAudioDevice(const AudioDeviceRequest &request);
    bool openDevice();
    void render(float *samples, qint64 frames);
    void awaitBeginning();
    qint64 readWaiting(float *samples, qint64 frames);
    void wakeReader();

    const std::atomic<float> &m_volume;
    const std::function<void()> m_wantsData;
    std::unique_ptr<PcmRing> m_ring; // made before the first callback
    quint32 m_id = 0;
    std::atomic<bool> m_isPlaying = false;
    float m_gain; // callback only: the volume of the last sample

    std::atomic<bool> m_hasBegun = false; // the first callback need wait no more
    bool m_waitsForData = false;          // set before the first callback; what follows is for waiting only
    std::mutex m_waitMutex;
    std::condition_variable m_dataOrEnd;
    bool m_isClosing = false;
};

} // namespace orvel
