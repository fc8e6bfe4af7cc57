#pragma once

#include "audio/file/FileOutput.h"
#include "platform/foundation/Url.h"
#include "platform/media/output/AudioSession.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/media/parse/AudioFileStreamOpener.h"

#include <memory>

namespace orvel {

class FileReading;

// The platform services that a file's player stands on; the real ones unless others are handed in.
struct AudioStreamerServices
{
    AudioFileStreamOpener openAudioFileStream = orvel::openAudioFileStream;
    OutputQueueMaker newOutputQueue = orvel::newOutputQueue;
    // Shows an alert with one button. Main thread.
    std::function<void(const QString &title, const QString &message, const QString &button)> showAlert{};
};

// Plays one audio file from a web server while it arrives. Reads and parses on a thread of its own, which
// keeps the streamer alive: who lets go stops it before. The operations are the main thread's; none but
// stop() waits. Every change of state is told by ASStatusChangedNotification.
class AudioStreamer final : private StreamerStatesClient, public std::enable_shared_from_this<AudioStreamer>
{
public:
    static std::shared_ptr<AudioStreamer> initWithURL(const Url &url, AudioStreamerServices services = {});
    ~AudioStreamer() override;
    AudioStreamer(const AudioStreamer &) = delete;
    AudioStreamer &operator=(const AudioStreamer &) = delete;

    // Begins to play in the idle state, and goes on in the paused one.
    void start();
    // Pauses what plays, and goes on in the paused state.
    void pause();
    // Ends the sound for good, and returns when the thread has cleaned up: within 0.2 seconds.
    void stop();
    // Goes on at this many seconds from the sound's begin; below 0 at its begin. No effect unless the file's
    // length is known and finite seconds are asked for. What is paused jumps when it goes on.
    void seekToTime(double seconds);

    bool isPlaying() const { return m_states.isPlaying(); }
    bool isPaused() const { return m_states.isPaused(); }
    bool isIdle() const { return m_states.isIdle(); }
    // Sound is not there yet, or not any more.
    bool isWaiting() const { return m_states.isWaiting(); }

    AudioStreamerState state() const { return m_states.state(); }
    AudioStreamerErrorCode errorCode() const { return m_states.errorCode(); }
    void setErrorCode(AudioStreamerErrorCode code) { m_states.setErrorCode(code); }
    // Seconds of the sound that have been heard.
    double progress();
    // Seconds of the whole sound, estimated from the file's length; 0 when that is not known.
    // Deliberate: it is close to 0 until 51 packets are counted
    // (AudioStreamerTest.EstimatesTheBitRateFromThe51stPacketOn).
    double duration() const;
    // Bits a second: what counts until an estimate is there.
    quint32 bitRate() const;
    void setBitRate(quint32 bitRate);
    // Bits a second, estimated from 51 packets or more; before that bitRate().
    double calculatedBitRate() const;
    // Of the first answer; empty before it and after the end.
    HeaderFields httpHeaders() const;

private:
    AudioStreamer(const Url &url, AudioStreamerServices services);

    bool listenToInterruptions();
    void handleInterruptionChangeToState(InterruptionState state);
    void stopAtOnce();

    // Under the lock.
    void stateHasChanged() override;
    void hasFailed() override;
    void noteStopRequest();
    void wakeThread();
    void showAlert();

    // The streamer's own thread.
    void startInternal();
    void cleanUp(std::unique_ptr<FileReading> reading);

    const Url m_url;
    const AudioStreamerServices m_services;
    StreamerStates m_states; // its lock guards what follows
    FileTiming m_timing;
    FileOutput m_output;
    FileReading *m_reading = nullptr; // set while the thread runs; all but wake() is the thread's
    double m_lastProgress = 0;
    bool m_alertWasShown = false;
};

} // namespace orvel
