#pragma once

#include "audio/file/AudioStreamerError.h"
#include "audio/file/AudioStreamerState.h"
#include "audio/file/BitRateEstimate.h"
#include "audio/file/BufferRing.h"
#include "audio/file/StreamerLock.h"
#include "platform/foundation/Url.h"
#include "platform/media/output/AudioSession.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/media/parse/AudioFileStreamOpener.h"
#include "platform/net/HeaderFields.h"

#include <memory>

namespace orvel {

class FileReadStream;
struct FileDownload;

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
class AudioStreamer final : public AudioFileStreamClient, public std::enable_shared_from_this<AudioStreamer>
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

    bool isPlaying() const;
    bool isPaused() const;
    bool isIdle() const;
    // Sound is not there yet, or not any more.
    bool isWaiting() const;

    AudioStreamerState state() const;
    AudioStreamerErrorCode errorCode() const;
    void setErrorCode(AudioStreamerErrorCode code);
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

    // Under the lock.
    void listenToInterruptions();
    void setState(AudioStreamerState state);
    void postStatusChanged();
    void failWithErrorCode(AudioStreamerErrorCode code, AudioStatus err = 0);
    void showAlert();
    bool isFinishing() const;
    bool isOver() const;
    bool runLoopShouldExit() const;
    bool isQueueStarted() const;
    bool isQueueAtWork() const;
    bool canSeek() const;
    void pauseQueue();
    void resumeQueue();
    void playingHasBegun();
    void finishAtEndOfFile();
    void stopAtOnce();
    void noteStopRequest();
    void wakeThread();

    // The streamer's own thread.
    void startInternal();
    void turn(FileDownload &download);
    bool openReadStream(FileDownload &download);
    void handleBytesAvailable(FileDownload &download);
    void takeHeaders(const FileReadStream &stream);
    bool openParser(FileDownload &download);
    void handleEndEncountered(FileDownload &download);
    void internalSeekToTime(FileDownload &download);
    void prepareSeek(const AudioFileStream &stream);
    void trimFrom(const AudioFileStream &stream, std::optional<qint64> firstPacket);
    void lookAtBuffers();
    void cleanUp(std::unique_ptr<FileDownload> download);

    // There too, from inside the parser.
    void handlePropertyChange(AudioFileStream &stream, AudioFileStreamProperty property) override;
    void takeFormat(const std::vector<AudioStreamBasicDescription> &formats);
    void updateFileLength();
    void createQueue(const AudioFileStream &stream);
    void handlePacket(AudioFileStream &stream, quint32 numberOfPackets, QByteArrayView inputData,
                      std::span<const AudioStreamPacketDescription> descriptions) override;
    bool prepareForPackets(const AudioFileStream &stream, quint32 numberOfPackets,
                           std::span<const AudioStreamPacketDescription> descriptions);
    void fillDescribed(FileDownload &download, QByteArrayView inputData,
                       std::span<const AudioStreamPacketDescription> descriptions);
    void fillConstant(FileDownload &download, QByteArrayView inputData);
    bool enqueueAndWait(FileDownload &download);
    bool enqueueBuffer(FileDownload &download);
    void startQueue();

    // The output queue's thread.
    void handleQueueRunning(quint64 queueNumber, bool isRunning);

    void handleInterruptionChangeToState(InterruptionState state);

    const Url m_url;
    const AudioStreamerServices m_services;
    const std::shared_ptr<BufferRing> m_ring = std::make_shared<BufferRing>();

    mutable StreamerLock m_lock; // guards what follows
    AudioStreamerState m_state = AudioStreamerStateInitialized;
    AudioStreamerStopReason m_stopReason = AudioStreamerStopReasonNone;
    AudioStreamerErrorCode m_errorCode = AudioStreamerErrorNone;
    bool m_stopWasRequested = false;
    bool m_alertWasShown = false;
    FileDownload *m_download = nullptr; // set while the thread runs; its content is the thread's

    std::shared_ptr<OutputQueue> m_audioQueue;
    AudioStreamBasicDescription m_asbd;
    double m_sampleRate = 0;     // frames a second
    double m_packetDuration = 0; // seconds
    quint32 m_packetBufferSize = 0;

    HeaderFields m_httpHeaders;
    qint64 m_fileLength = 0;
    qint64 m_dataOffset = 0;
    std::optional<quint64> m_audioDataByteCount;
    qint64 m_seekByteOffset = 0; // where the current download began
    quint32 m_bitRate = 0;
    BitRateEstimate m_estimate;

    double m_seekTime = 0; // of the current download's first sound
    bool m_seekWasRequested = false;
    double m_requestedSeekTime = 0;
    double m_lastProgress = 0;
    bool m_hasReachedEnd = false; // of the file; its sound may still have to begin or to go on

    bool m_isInterrupted = false;
    bool m_pausedByInterruption = false;
};

} // namespace orvel
