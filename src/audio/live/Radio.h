#pragma once

#include "audio/live/AudioQueue.h"
#include "audio/live/StationInfo.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/SerialQueue.h"
#include "platform/foundation/Url.h"
#include "platform/media/output/OutputQueue.h"
#include "platform/media/parse/AudioFileStream.h"
#include "platform/net/Reachability.h"

#include <array>
#include <atomic>
#include <memory>

namespace orvel {

class Radio;

enum class RadioState : qint32 {
    RadioStateStopped = 0,
    RadioStateConnecting = 1,
    RadioStateBuffering = 2,
    RadioStatePlaying = 3,
    RadioStateError = 4,
};
using enum RadioState;
// In one word, for tools and logs: "stopped", "connecting", "buffering", "playing", "error".
QString nameOf(RadioState state);

// 8 is never used.
enum class RadioError : qint32 {
    RadioErrorNone = 0,
    RadioErrorPlaylistParsing = 1,
    RadioErrorFileStreamGetProperty = 2,
    RadioErrorFileStreamOpen = 3,
    RadioErrorAudioQueueCreate = 4,
    RadioErrorAudioQueueBufferAllocation = 5,
    RadioErrorAudioQueueEnqueue = 6,
    RadioErrorAudioQueueStart = 7,
    RadioErrorNetworkError = 9,
    RadioErrorHostNotReachable = 10,
};
using enum RadioError;

// Told on the main queue, after the fact: read what is needed from the radio.
class RadioDelegate
{
public:
    virtual ~RadioDelegate() = default;
    virtual void radioStateChanged(Radio & /*radio*/) {}
    // The station's name, genre or site is known.
    virtual void radioMetadataReady(Radio & /*radio*/) {}
    virtual void radioTitleChanged(Radio & /*radio*/) {}
};

// What every player of one web radio has. Main thread, except where the player state says otherwise.
class Radio : public std::enable_shared_from_this<Radio>
{
public:
    virtual ~Radio();

    virtual void play() {}
    virtual void pause() {}
    virtual void shutdown() {}

    bool isPlaying() const { return m_playerState.isPlaying; }
    bool isPaused() const { return m_playerState.isPaused; }
    bool isBuffering() const { return m_playerState.isBuffering; }

    // How much sound is gathered before it starts: at most 30 s, at least one.
    void setBufferInSeconds(unsigned seconds);
    // In half seconds; 6 unless set.
    quint64 bufferCount() const { return m_playerState.bufferCount; }
    // Clamped to 0.0 to 1.0; 0.5 unless set.
    void setVolume(float volume);
    float volume() const { return m_playerState.volume; }

    RadioState radioState() const { return m_radioState; }
    // Stores without telling anybody.
    void setRadioState(RadioState state) { m_radioState = state; }
    // Of use in RadioStateError.
    RadioError radioError() const { return m_radioError; }
    // Null until the stream has told them.
    const QString &radioTitle() const { return m_radioTitle; }
    const QString &radioName() const { return m_station.name; }
    const QString &radioGenre() const { return m_station.genre; }
    const QString &radioUrl() const { return m_station.url; }

    std::shared_ptr<RadioDelegate> delegate() const { return m_delegate.lock(); }
    void setDelegate(std::weak_ptr<RadioDelegate> delegate) { m_delegate = std::move(delegate); }

protected:
    explicit Radio(const Url &url);

    struct QueueBuffer
    {
        OutputBuffer *buffer = nullptr;
        bool isEnqueued = false;
    };

    // The audio pipeline. Flags that the output queue's thread reads too are atomic; what the lock queue
    // guards says so.
    struct PlayerState
    {
        std::unique_ptr<AudioFileStream> audioFileStream;
        AudioStreamBasicDescription streamFormat;
        std::shared_ptr<OutputQueue> outputQueue;
        quint64 outputQueueNumber = 0;           // lock queue: tells a queue from its predecessors
        std::array<QueueBuffer, 3> queueBuffers; // lock queue
        bool hasPacketDescriptions = false;      // lock queue: the bit rate varies
        AudioQueue packetQueue;                  // lock queue
        quint64 queuedBytes = 0;                 // lock queue: packets added since the last (re)start
        std::atomic<bool> queueStarted = false;
        std::atomic<bool> isPlaying = false;
        std::atomic<bool> isPaused = false;
        std::atomic<bool> isBuffering = false;
        quint32 bufferSize = 4096; // bytes of an output buffer, and of the pieces fed to the parser
        quint64 bufferCount = 6;   // buffer sizes to queue before a (re)start
        float volume = 0.5F;
        SerialQueue lockQueue{QStringLiteral("lockQueue")};
    };

    Url m_url; // becomes the stream's once a playlist has named it
    QString m_radioTitle;
    StationInfo m_station;
    PlayerState m_playerState;
    RadioState m_radioState = RadioStateStopped;
    RadioError m_radioError = RadioErrorNone;
    std::weak_ptr<RadioDelegate> m_delegate;
    std::atomic<bool> m_shutdown = false;
    bool m_waitingForReconnection = false;
    bool m_connectionError = false; // the next pause is a lost connection, not the user's stop
    qint32 m_buffersInUse = 0;      // lock queue
    quint64 m_bgTask;               // background task held, or invalidBackgroundTask
    RunLoop::Token m_bufferTimer = 0;
    RunLoop::Token m_reconnectTimer = 0;
    std::unique_ptr<Reachability> m_reachability; // only while playing or waiting
    Reachability::Status m_connectionType = Reachability::Status::NotReachable; // as seen at the last play
};

} // namespace orvel
