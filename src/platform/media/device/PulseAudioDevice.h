#pragma once

#include "platform/media/device/AudioBackEnd.h"
#include "platform/media/device/PulseAudioServer.h"
#include "platform/media/device/SentSound.h"

#include <QByteArray>
#include <chrono>

namespace orvel {

// A stream on a PulseAudio server, or PipeWire's. The server is given about a second of sound at a time, so
// that everybody sleeps most of the time. What has not been heard is kept: a change of volume sends it again.
// When the server or its last sink goes, the time runs on in silence until there is one again.
class PulseAudioDevice final : public AudioDevice, private PulseAudioClient
{
public:
    // The three operations of an AudioBackEnd.
    static AudioBackEnd::Opening open(const AudioDeviceRequest &request);
    static void leaveThread() {}
    static void quit() { PulseAudioServer::instance().quit(); }

    ~PulseAudioDevice() override;

    void setPlaying(bool playing) override;
    qint64 write(const float *samples, qint64 frames) override;
    qint64 written() const override { return m_sound.written(); } // changed by the calling thread alone
    qint64 consumed() const override;
    std::optional<qint64> framesUntilRefill() const override;
    bool isStanding() const override;
    void followVolume() override;
    void setMediaName(const QString &name) override;

private:
    using Clock = std::chrono::steady_clock;

    explicit PulseAudioDevice(const AudioDeviceRequest &request);

    // What follows needs the lock.
    void serverAnswers(pa_context &context) override;
    void serverIsGone() override { m_stream.reset(); }
    PulseAudioHandle<pa_stream> newStream(pa_context &context);
    bool connectStream();
    void onState();
    void onRequest();
    void onUnderflow();
    void onEvent(const char *name);

    bool isReady() const;
    bool isGone() const;
    bool isSpent() const { return m_isDrained && written() > m_sound.sent(); }
    bool isToSound() const { return m_isPlaying && !m_isInterrupted; }
    void beginSilence();
    void countSilenceFromNow();
    void noteHeard() const;
    qint64 beforeEnd(qint64 due) const;
    qint64 room() const;
    qint64 taken() const;
    void send();
    void followTransport();
    qint64 framesIn(Clock::duration time) const;

    const std::atomic<float> &m_volume;
    const std::function<void()> m_wantsData;
    const std::function<void(bool begins)> m_interrupted;
    const Clock::duration m_standing;

    bool m_isAdded = false; // to the server's clients

    QByteArray m_mediaName;
    PulseAudioHandle<pa_stream> m_stream;
    SentSound m_sound;
    bool m_isPlaying = false;
    bool m_isInterrupted = false; // by the server
    bool m_isCorked = true;
    bool m_isUnderrun = false;
    bool m_isDrained = false;            // the stream takes no more
    mutable qint64 m_heard = 0;          // frames of the sound, at ...
    mutable Clock::time_point m_seen;    // ... this time
    mutable qint64 m_endOf = -1;         // the frames sent when the last one was due ...
    mutable Clock::time_point m_endSeen; // ... first
    qint64 m_silentFrom = 0;             // the frame that was due when ...
    Clock::time_point m_silentSince;     // ... the silence began to count
    Clock::time_point m_goneAt;
};

} // namespace orvel
