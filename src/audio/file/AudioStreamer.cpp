#include "audio/file/AudioStreamer.h"

#include "audio/file/FileReading.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/output/QueueThreads.h"

#include <QUrl>
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
    : m_url(url)
    , m_services(std::move(services))
    , m_states(*this)
    , m_output(m_states, m_timing, m_services.newOutputQueue, QUrl(url.text()).fileName())
{
}

AudioStreamer::~AudioStreamer() { stop(); }

void AudioStreamer::start()
{
    {
        const StreamerLock::Holder holder(m_states.lock());
        if (isPaused())
            pause();
        if (!isIdle())
            return;
        m_alertWasShown = false;
        m_output.begin(weak_from_this(), listenToInterruptions());
        m_states.begin();
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
    if (!QueueThreads::run(body, end))
        m_states.setState(AudioStreamerStateInitialized);
}

// Returns whether one lasts.
bool AudioStreamer::listenToInterruptions()
{
    AudioSession &session = AudioSession::sharedInstance();
    session.setInterruptionListener(this, [weak = weak_from_this()](InterruptionState state) {
        if (const std::shared_ptr<AudioStreamer> streamer = weak.lock())
            streamer->handleInterruptionChangeToState(state);
    });
    return session.isInterrupted();
}

void AudioStreamer::handleInterruptionChangeToState(InterruptionState state)
{
    const StreamerLock::Holder holder(m_states.lock());
    if (state == InterruptionState::End)
        AudioSession::sharedInstance().setActive(true);
    m_output.setInterrupted(state == InterruptionState::Begin);
}

void AudioStreamer::pause()
{
    const StreamerLock::Holder holder(m_states.lock());
    m_output.togglePause();
}

void AudioStreamer::stop()
{
    {
        const StreamerLock::Holder holder(m_states.lock());
        if (isIdle())
            return;
        if (!m_output.stopForUser())
            m_states.setState(AudioStreamerStateStopped, AudioStreamerStopReasonUserAction);
        noteStopRequest();
    }
    while (!m_states.lock().wait(stopPollSeconds, [this] { return isIdle(); })) {
        const StreamerLock::Holder holder(m_states.lock());
        if (state() == AudioStreamerStateStopping)
            m_states.setState(AudioStreamerStateStopped);
    }
}

void AudioStreamer::stopAtOnce()
{
    const StreamerLock::Holder holder(m_states.lock());
    if (isIdle())
        return;
    m_states.setState(AudioStreamerStateStopped, AudioStreamerStopReasonUserAction);
    noteStopRequest();
}

void AudioStreamer::noteStopRequest()
{
    m_states.noteStopRequest();
    m_timing.requestedSeek.reset();
    m_output.noteStopRequest();
}

void AudioStreamer::seekToTime(double seconds)
{
    const StreamerLock::Holder holder(m_states.lock());
    if (!std::isfinite(seconds))
        return;
    m_timing.requestedSeek = std::max(0.0, seconds);
    if (isPaused() || !m_output.canSeek())
        return;
    m_output.interruptWaiting();
    wakeThread();
}

void AudioStreamer::stateHasChanged()
{
    wakeThread();
    m_states.lock().afterwards([weak = weak_from_this()] {
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
    if (m_reading)
        m_reading->wake();
}

void AudioStreamer::hasFailed()
{
    m_output.stopForFailure();
    wakeThread();
    showAlert();
}

// Deliberate: the same for every failure (AudioStreamerTest.ShowsOneAlertAStart).
void AudioStreamer::showAlert()
{
    if (!m_services.showAlert || std::exchange(m_alertWasShown, true))
        return;
    m_states.lock().afterwards([show = m_services.showAlert] {
        MainQueue::async([show] { show(alertTitle, alertMessage, alertButton); });
    });
}

double AudioStreamer::progress()
{
    const StreamerLock::Holder holder(m_states.lock());
    if (m_timing.format().sampleRate <= 0 || m_states.isFinishing() || !m_states.isQueueAtWork())
        return m_lastProgress;
    const std::optional<double> frames = m_output.currentTime();
    if (!frames) // it is stopped
        return m_lastProgress;
    if (!std::isfinite(*frames)) {
        m_states.failWithErrorCode(AudioStreamerErrorGetAudioTime);
        return m_lastProgress;
    }
    m_lastProgress = m_timing.secondsAt(*frames);
    return m_lastProgress;
}

double AudioStreamer::duration() const
{
    const StreamerLock::Holder holder(m_states.lock());
    return m_timing.duration();
}

quint32 AudioStreamer::bitRate() const
{
    const StreamerLock::Holder holder(m_states.lock());
    return m_timing.bitRate();
}

void AudioStreamer::setBitRate(quint32 bitRate)
{
    const StreamerLock::Holder holder(m_states.lock());
    m_timing.setBitRate(bitRate);
}

double AudioStreamer::calculatedBitRate() const
{
    const StreamerLock::Holder holder(m_states.lock());
    return m_timing.calculatedBitRate();
}

HeaderFields AudioStreamer::httpHeaders() const
{
    const StreamerLock::Holder holder(m_states.lock());
    return m_timing.httpHeaders();
}

void AudioStreamer::startInternal()
{
    auto reading =
        std::make_unique<FileReading>(m_url, m_services.openAudioFileStream, m_states, m_timing, m_output);
    {
        const StreamerLock::Holder holder(m_states.lock());
        if (state() != AudioStreamerStateStartingThread) {
            if (state() != AudioStreamerStateStopping && state() != AudioStreamerStateStopped)
                qCWarning(logAudio, "### Not starting audio thread. State code is: %ld", long(state()));
            m_states.setState(AudioStreamerStateInitialized);
            return;
        }
        m_reading = reading.get();
    }
    AudioSession &session = AudioSession::sharedInstance();
    session.setCategory(AudioSession::Category::Playback);
    session.setActive(true);
    bool isOpen = false;
    {
        const StreamerLock::Holder holder(m_states.lock());
        isOpen = reading->openReadStream();
        if (!isOpen && !m_states.isOver())
            showAlert();
    }
    if (isOpen)
        reading->run();
    cleanUp(std::move(reading));
}

void AudioStreamer::cleanUp(std::unique_ptr<FileReading> reading)
{
    {
        const StreamerLock::Holder holder(m_states.lock());
        m_reading = nullptr;
    }
    reading.reset();
    closeConnections();
    // By its address alone: the streamer may be gone by then.
    MainQueue::async([owner = this] { AudioSession::sharedInstance().removeInterruptionListener(owner); });
    std::shared_ptr<OutputQueue> queue; // let go of without the lock
    const StreamerLock::Holder holder(m_states.lock());
    queue = m_output.dispose();
    AudioSession::sharedInstance().setActive(false);
    m_timing.forgetDownload();
    m_states.setState(AudioStreamerStateInitialized);
}

} // namespace orvel
