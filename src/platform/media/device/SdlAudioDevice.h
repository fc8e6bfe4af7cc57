#pragma once

#include "platform/media/device/AudioBackEnd.h"
#include "platform/media/device/PcmRing.h"
#include "platform/media/device/VolumeRamp.h"

#include <condition_variable>
#include <mutex>

namespace orvel {

// SDL's default device. Its callback reads the ring and applies the volume. It does not lock, allocate or
// wait, with two exceptions. The first callback waits a little for the first sound, which would else follow a
// whole period of silence. And SDL's disk driver runs at the pace of its data: there every callback waits for
// it, so that what it writes holds what was sent without gaps.
class SdlAudioDevice final : public AudioDevice
{
public:
    // The three operations of an AudioBackEnd.
    static AudioBackEnd::Opening open(const AudioDeviceRequest &request);
    static void leaveThread();
    static void quit();

    ~SdlAudioDevice() override;

    void setPlaying(bool playing) override;
    qint64 write(const float *samples, qint64 frames) override;
    qint64 written() const override { return m_ring->written(); }
    qint64 consumed() const override { return m_ring->consumed(); }

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
    VolumeRamp m_ramp; // callback only

    std::atomic<bool> m_hasBegun = false; // the first callback need wait no more
    bool m_waitsForData = false;          // set before the first callback
    // For waiting only.
    std::mutex m_waitMutex;
    std::condition_variable m_dataOrEnd;
    bool m_isClosing = false;
};

} // namespace orvel
