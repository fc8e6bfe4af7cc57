#include "audio/file/AudioStreamer.h"

#include "audio/file/FileDownload.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/output/QueueThreads.h"

#include <cmath>

namespace orvel {

namespace {

constexpr double stopPollSeconds = 0.1;

const QString alertTitle = QStringLiteral("Erreur de fichier");
const QString alertMessage = QStringLiteral("Ce son ne peut pas être lu.");
const QString alertButton = QStringLiteral("OK");

} // namespace

std::shared_ptr<AudioStreamer> AudioStreamer::initWithURL(const Url &url, AudioStreamerServices services)
{
    return std::shared_ptr<AudioStreamer>(new AudioStreamer(url, std::move(services)));
}

AudioStreamer::AudioStreamer(const Url &url, AudioStreamerServices services)
    : m_url(url), m_services(std::move(services))
{
}

AudioStreamer::~AudioStreamer() { stop(); }

void AudioStreamer::start()
{
    {
        const StreamerLock::Holder holder(m_lock);
        if (m_state == AudioStreamerStatePaused)
            pause();
        if (m_state != AudioStreamerStateInitialized)
            return;
        m_ring->clear();
        m_stopWasRequested = false;
        m_alertWasShown = false;
        listenToInterruptions();
        m_state = AudioStreamerStateStartingThread;
        postStatusChanged();
    }
    const auto end = [weak = weak_from_this()] {
        if (std::shared_ptr<AudioStreamer> streamer = weak.lock()) {
            streamer->stopAtOnce();
            MainQueue::async([last = std::move(streamer)] {});
        }
    };
    const auto body = [streamer = shared_from_this()]() mutable {
        streamer->startInternal();
        // A last release must not happen on this thread.
        MainQueue::async([last = std::move(streamer)] {});
    };
    if (!QueueThreads::run(body, end)) {
        const StreamerLock::Holder holder(m_lock);
        setState(AudioStreamerStateInitialized);
    }
}

void AudioStreamer::listenToInterruptions()
{
    AudioSession &session = AudioSession::sharedInstance();
    session.setInterruptionListener(this, [weak = weak_from_this()](InterruptionState state) {
        if (const std::shared_ptr<AudioStreamer> streamer = weak.lock())
            streamer->handleInterruptionChangeToState(state);
    });
    m_isInterrupted = session.isInterrupted();
}

void AudioStreamer::pause()
{
    const StreamerLock::Holder holder(m_lock);
    m_pausedByInterruption = false;
    if (m_state == AudioStreamerStatePaused)
        resumeQueue();
    else if (m_state == AudioStreamerStatePlaying)
        pauseQueue();
}

void AudioStreamer::resumeQueue()
{
    if (!m_audioQueue->start()) {
        failWithErrorCode(AudioStreamerErrorAudioQueueStart);
        return;
    }
    setState(AudioStreamerStatePlaying);
    if (m_seekWasRequested && canSeek())
        m_ring->interrupt();
    finishAtEndOfFile();
}

void AudioStreamer::pauseQueue()
{
    m_audioQueue->pause();
    setState(AudioStreamerStatePaused);
}

void AudioStreamer::stop()
{
    const auto isIdleNow = [this] { return m_state == AudioStreamerStateInitialized; };
    {
        const StreamerLock::Holder holder(m_lock);
        if (isIdleNow())
            return;
        m_stopReason = AudioStreamerStopReasonUserAction;
        if (m_audioQueue && isQueueStarted()) {
            setState(AudioStreamerStateStopping);
            m_audioQueue->stop(true);
        } else {
            setState(AudioStreamerStateStopped);
        }
        noteStopRequest();
    }
    while (!m_lock.wait(stopPollSeconds, isIdleNow)) {
        const StreamerLock::Holder holder(m_lock);
        if (m_state == AudioStreamerStateStopping)
            setState(AudioStreamerStateStopped);
    }
}

void AudioStreamer::stopAtOnce()
{
    const StreamerLock::Holder holder(m_lock);
    if (m_state == AudioStreamerStateInitialized)
        return;
    m_stopReason = AudioStreamerStopReasonUserAction;
    setState(AudioStreamerStateStopped);
    noteStopRequest();
}

void AudioStreamer::noteStopRequest()
{
    m_stopWasRequested = true;
    m_seekWasRequested = false;
    m_pausedByInterruption = false;
    m_ring->interrupt();
}

void AudioStreamer::seekToTime(double seconds)
{
    const StreamerLock::Holder holder(m_lock);
    if (!std::isfinite(seconds))
        return;
    m_requestedSeekTime = std::max(0.0, seconds);
    m_seekWasRequested = true;
    if (m_state == AudioStreamerStatePaused || !canSeek())
        return;
    m_ring->interrupt();
    wakeThread();
}

bool AudioStreamer::canSeek() const { return calculatedBitRate() > 0 && m_fileLength > 0 && m_audioQueue; }

bool AudioStreamer::isPlaying() const { return state() == AudioStreamerStatePlaying; }

bool AudioStreamer::isPaused() const { return state() == AudioStreamerStatePaused; }

bool AudioStreamer::isIdle() const { return state() == AudioStreamerStateInitialized; }

bool AudioStreamer::isWaiting() const
{
    const StreamerLock::Holder holder(m_lock);
    return isFinishing() || m_state == AudioStreamerStateStartingThread ||
           m_state == AudioStreamerStateWaitingForData || m_state == AudioStreamerStateWaitingForQueueStart ||
           m_state == AudioStreamerStateBuffering;
}

bool AudioStreamer::isFinishing() const
{
    const StreamerLock::Holder holder(m_lock);
    const bool isStopping = m_state == AudioStreamerStateStopping || m_state == AudioStreamerStateStopped;
    return (m_errorCode != AudioStreamerErrorNone && m_state != AudioStreamerStateInitialized) ||
           (isStopping && m_stopReason != AudioStreamerStopReasonTemporary);
}

bool AudioStreamer::runLoopShouldExit() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_errorCode != AudioStreamerErrorNone ||
           (m_state == AudioStreamerStateStopped && m_stopReason != AudioStreamerStopReasonTemporary);
}

// A stop or a failure wins: no step but theirs changes the state after it.
bool AudioStreamer::isOver() const { return m_errorCode != AudioStreamerErrorNone || m_stopWasRequested; }

bool AudioStreamer::isQueueStarted() const
{
    return m_state == AudioStreamerStateWaitingForQueueStart || isQueueAtWork();
}

bool AudioStreamer::isQueueAtWork() const
{
    return m_state == AudioStreamerStatePlaying || m_state == AudioStreamerStateBuffering ||
           m_state == AudioStreamerStatePaused;
}

void AudioStreamer::setState(AudioStreamerState state)
{
    const bool endsIt = state == AudioStreamerStateStopping || state == AudioStreamerStateStopped ||
                        state == AudioStreamerStateInitialized;
    if (m_state == state || (isOver() && !endsIt))
        return;
    m_state = state;
    m_lock.notify();
    wakeThread();
    postStatusChanged();
}

void AudioStreamer::postStatusChanged()
{
    m_lock.afterwards([weak = weak_from_this()] {
        const auto post = [weak] {
            if (const std::shared_ptr<AudioStreamer> streamer = weak.lock())
                NotificationCentre::defaultCentre().postNotification(ASStatusChangedNotification,
                                                                     QVariant::fromValue(streamer.get()));
        };
        if (MainQueue::isMainThread())
            post();
        else
            MainQueue::async(post);
    });
}

void AudioStreamer::wakeThread()
{
    if (m_download)
        m_download->events.wake();
}

void AudioStreamer::failWithErrorCode(AudioStreamerErrorCode code, AudioStatus err)
{
    const StreamerLock::Holder holder(m_lock);
    if (isOver())
        return;
    m_errorCode = code;
    qCWarning(logAudio, "%s", qUtf8Printable(failureText(code, err)));
    if (isQueueAtWork()) {
        m_stopReason = AudioStreamerStopReasonError;
        setState(AudioStreamerStateStopping);
        m_audioQueue->stop(true);
    }
    m_ring->interrupt();
    wakeThread();
    showAlert();
}

// Deliberate: the same for every failure (AudioStreamerTest.ShowsOneAlertAStart).
void AudioStreamer::showAlert()
{
    if (!m_services.showAlert || std::exchange(m_alertWasShown, true))
        return;
    m_lock.afterwards([show = m_services.showAlert] {
        MainQueue::async([show] { show(alertTitle, alertMessage, alertButton); });
    });
}

AudioStreamerState AudioStreamer::state() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_state;
}

AudioStreamerErrorCode AudioStreamer::errorCode() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_errorCode;
}

void AudioStreamer::setErrorCode(AudioStreamerErrorCode code)
{
    const StreamerLock::Holder holder(m_lock);
    m_errorCode = code;
}

double AudioStreamer::progress()
{
    const StreamerLock::Holder holder(m_lock);
    if (m_sampleRate <= 0 || isFinishing() || !isQueueAtWork())
        return m_lastProgress;
    const std::optional<double> frames = m_audioQueue->currentTime();
    if (!frames) // it is stopped
        return m_lastProgress;
    if (!std::isfinite(*frames)) {
        failWithErrorCode(AudioStreamerErrorGetAudioTime);
        return m_lastProgress;
    }
    m_lastProgress = boundedSeconds(m_seekTime + *frames / m_sampleRate);
    return m_lastProgress;
}

double AudioStreamer::duration() const
{
    const StreamerLock::Holder holder(m_lock);
    const double bitRate = calculatedBitRate();
    if (bitRate == 0 || m_fileLength == 0)
        return 0;
    return boundedSeconds(double(m_fileLength - m_dataOffset) / (bitRate * 0.125));
}

quint32 AudioStreamer::bitRate() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_bitRate;
}

void AudioStreamer::setBitRate(quint32 bitRate)
{
    const StreamerLock::Holder holder(m_lock);
    m_bitRate = bitRate;
}

double AudioStreamer::calculatedBitRate() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_estimate.isKnown() && m_packetDuration > 0 ? m_estimate.bitsPerSecond(m_packetDuration)
                                                        : m_bitRate;
}

HeaderFields AudioStreamer::httpHeaders() const
{
    const StreamerLock::Holder holder(m_lock);
    return m_httpHeaders;
}

void AudioStreamer::handleQueueRunning(quint64 queueNumber, bool isRunning)
{
    const StreamerLock::Holder holder(m_lock);
    if (queueNumber != m_ring->queueNumber())
        return;
    if (m_state == AudioStreamerStateWaitingForQueueStart && isRunning) {
        setState(AudioStreamerStatePlaying);
        playingHasBegun();
    } else if (m_state == AudioStreamerStateStopping && !isRunning) {
        setState(AudioStreamerStateStopped);
    } else {
        qCDebug(logAudio, "AudioQueue changed state in unexpected way.");
    }
}

void AudioStreamer::playingHasBegun()
{
    if (m_state != AudioStreamerStatePlaying)
        return;
    if (m_isInterrupted) {
        pauseQueue();
        m_pausedByInterruption = true;
    }
    finishAtEndOfFile();
}

// Of a file whose bytes have all come: what is enqueued plays out. It waits until the sound plays.
void AudioStreamer::finishAtEndOfFile()
{
    if (!m_hasReachedEnd || isOver() || m_state != AudioStreamerStatePlaying)
        return;
    m_audioQueue->flush();
    m_stopReason = AudioStreamerStopReasonEndOfFile;
    setState(AudioStreamerStateStopping);
    m_audioQueue->stop(false);
}

void AudioStreamer::handleInterruptionChangeToState(InterruptionState state)
{
    const StreamerLock::Holder holder(m_lock);
    m_isInterrupted = state == InterruptionState::Begin;
    if (m_isInterrupted) {
        if (m_state == AudioStreamerStatePlaying) {
            pauseQueue();
            m_pausedByInterruption = true;
        }
        return;
    }
    AudioSession::sharedInstance().setActive(true);
    if (std::exchange(m_pausedByInterruption, false) && m_state == AudioStreamerStatePaused)
        resumeQueue();
}

} // namespace orvel
