#pragma once

#include "audio/file/AudioStreamerError.h"
#include "audio/file/AudioStreamerState.h"
#include "audio/file/StreamerLock.h"

namespace orvel {

// What follows from a streamer's changes. Called under the lock.
class StreamerStatesClient
{
public:
    virtual ~StreamerStatesClient() = default;
    virtual void stateHasChanged() = 0;
    virtual void hasFailed() = 0;
};

// A streamer's state, why it stops, and what went wrong first. Holds the lock that guards it and the
// streamer's other parts. Any thread: every operation takes the lock.
class StreamerStates
{
public:
    explicit StreamerStates(StreamerStatesClient &client) : m_client(client) {}

    StreamerLock &lock() const { return m_lock; }

    AudioStreamerState state() const;
    bool isIdle() const { return state() == AudioStreamerStateInitialized; }
    bool isPlaying() const { return state() == AudioStreamerStatePlaying; }
    bool isPaused() const { return state() == AudioStreamerStatePaused; }
    bool isWaitingForData() const { return state() == AudioStreamerStateWaitingForData; }
    bool isBuffering() const { return state() == AudioStreamerStateBuffering; }
    // Sound is not there yet, or not any more.
    bool isWaiting() const;
    // No more sound is to be enqueued.
    bool isFinishing() const;
    // A stop or a failure wins: no step but theirs changes the state after it.
    bool isOver() const;
    bool runLoopShouldExit() const;
    // The output queue was started.
    bool isQueueStarted() const;
    // The output queue has run.
    bool isQueueAtWork() const;

    // Leaves the idle state, also after a failure.
    void begin();
    void noteStopRequest();
    // No effect once it is over, unless it goes to a state that ends the streamer.
    void setState(AudioStreamerState state);
    void setState(AudioStreamerState state, AudioStreamerStopReason reason);

    AudioStreamerErrorCode errorCode() const;
    void setErrorCode(AudioStreamerErrorCode code);
    // No effect once it is over.
    void failWithErrorCode(AudioStreamerErrorCode code, AudioStatus err = 0);

private:
    StreamerStatesClient &m_client;
    mutable StreamerLock m_lock; // guards what follows
    AudioStreamerState m_state = AudioStreamerStateInitialized;
    AudioStreamerStopReason m_stopReason = AudioStreamerStopReasonNone;
    AudioStreamerErrorCode m_errorCode = AudioStreamerErrorNone;
    bool m_stopWasRequested = false;
};

} // namespace orvel
