#include "audio/file/StreamerStates.h"

#include "platform/foundation/Log.h"

namespace orvel {

AudioStreamerState StreamerStates::state() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_state;
}

bool StreamerStates::isWaiting() const
{
    const StreamerLock::Holder holder(m_lock);
    return isFinishing() || m_state == AudioStreamerStateStartingThread ||
           m_state == AudioStreamerStateWaitingForData || m_state == AudioStreamerStateWaitingForQueueStart ||
           m_state == AudioStreamerStateBuffering;
}

bool StreamerStates::isFinishing() const
{
    const StreamerLock::Holder holder(m_lock);
    const bool isStopping = m_state == AudioStreamerStateStopping || m_state == AudioStreamerStateStopped;
    return (m_errorCode != AudioStreamerErrorNone && m_state != AudioStreamerStateInitialized) ||
           (isStopping && m_stopReason != AudioStreamerStopReasonTemporary);
}

bool StreamerStates::isOver() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_errorCode != AudioStreamerErrorNone || m_stopWasRequested;
}

bool StreamerStates::runLoopShouldExit() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_errorCode != AudioStreamerErrorNone ||
           (m_state == AudioStreamerStateStopped && m_stopReason != AudioStreamerStopReasonTemporary);
}

bool StreamerStates::isQueueStarted() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_state == AudioStreamerStateWaitingForQueueStart || isQueueAtWork();
}

bool StreamerStates::isQueueAtWork() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_state == AudioStreamerStatePlaying || m_state == AudioStreamerStateBuffering ||
           m_state == AudioStreamerStatePaused;
}

void StreamerStates::begin()
{
    const StreamerLock::Holder holder(m_lock);
    m_stopWasRequested = false;
    m_state = AudioStreamerStateStartingThread;
    m_client.stateHasChanged();
}

void StreamerStates::noteStopRequest()
{
    const StreamerLock::Holder holder(m_lock);
    m_stopWasRequested = true;
}

void StreamerStates::setState(AudioStreamerState state)
{
    const StreamerLock::Holder holder(m_lock);
    const bool endsIt = state == AudioStreamerStateStopping || state == AudioStreamerStateStopped ||
                        state == AudioStreamerStateInitialized;
    if (m_state == state || (isOver() && !endsIt))
        return;
    m_state = state;
    m_lock.notify();
    m_client.stateHasChanged();
}

void StreamerStates::setState(AudioStreamerState state, AudioStreamerStopReason reason)
{
    const StreamerLock::Holder holder(m_lock);
    m_stopReason = reason;
    setState(state);
}

AudioStreamerErrorCode StreamerStates::errorCode() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_errorCode;
}

void StreamerStates::setErrorCode(AudioStreamerErrorCode code)
{
    const StreamerLock::Holder holder(m_lock);
    m_errorCode = code;
}

void StreamerStates::failWithErrorCode(AudioStreamerErrorCode code, AudioStatus err)
{
    const StreamerLock::Holder holder(m_lock);
    if (isOver())
        return;
    m_errorCode = code;
    qCWarning(logAudio, "%s", qUtf8Printable(failureText(code, err)));
    m_client.hasFailed();
}

} // namespace orvel
