#include "audio/live/Streamer.h"

#include "audio/icy/StreamFileType.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/output/AudioSession.h"

namespace orvel {

namespace {

constexpr double stallSeconds = 10;

} // namespace

std::shared_ptr<Streamer> Streamer::initWithURL(const Url &url, StreamerServices services)
{
    // Deliberate: only lower-case schemes are taken (StreamerTest.TakesOnlyLowerCaseWebSchemes).
    const QString scheme = url.scheme();
    if (scheme != QLatin1String("http") && scheme != QLatin1String("https"))
        return nullptr;
    std::shared_ptr<Streamer> streamer(new Streamer(url, std::move(services)));
    streamer->observeNotifications();
    return streamer;
}

Streamer::Streamer(const Url &url, StreamerServices services)
    : Radio(url)
    , m_network(std::move(services.reachability), m_background,
                {[this] { stop(StopReason::ConnectionLost); }, [this] { stop(StopReason::NoReconnection); }})
    , m_connection(std::make_shared<StreamConnection>(*this, *this, m_url, m_station))
    , m_output(std::make_shared<StreamOutput>(*this, std::move(services.openAudioFileStream),
                                              std::move(services.newOutputQueue)))
{
    AudioSession::sharedInstance().setCategory(AudioSession::Category::Playback);
    AudioSession::sharedInstance().setActive(true);
}

Streamer::~Streamer()
{
    AudioSession::sharedInstance().removeInterruptionListener(this);
    NotificationCentre::defaultCentre().removeObserver(this);
    endTransferAndSound();
}

void Streamer::observeNotifications()
{
    const auto observe = [this](const QString &name, void (Streamer::*operation)()) {
        NotificationCentre::defaultCentre().addObserver(
            this, name, [weak = std::weak_ptr(self()), operation](const Notification &) {
                if (const std::shared_ptr<Streamer> streamer = weak.lock())
                    (streamer.get()->*operation)();
            });
    };
    observe(Reachability::changedNotification, &Streamer::onReachabilityChanged);
    observe(applicationDidEnterBackground, &Streamer::onBackground);
    observe(applicationWillEnterForeground, &Streamer::onForeground);
    AudioSession::sharedInstance().setInterruptionListener(
        this, [weak = std::weak_ptr(self())](InterruptionState state) {
            if (const std::shared_ptr<Streamer> streamer = weak.lock())
                streamer->onInterruption(state);
        });
}

void Streamer::play()
{
    if (m_shutdown || m_isPlaying)
        return;
    m_pausedByInterruption = false;
    m_isPaused = false;
    if (!m_network.begin()) {
        fail(RadioErrorHostNotReachable);
        return;
    }
    m_isPlaying = true;
    setState(RadioStateConnecting);
    m_connection->start({httpUserAgent, httpTimeout});
}

void Streamer::pause()
{
    m_pausedByInterruption = false;
    // While a reconnection is waited for the player counts as paused, and a pause ends the wait.
    if (!m_shutdown && (!m_isPaused || m_network.isWaitingForReconnection()))
        stop(StopReason::ByListener);
}

void Streamer::stop(StopReason reason)
{
    m_isPlaying = false;
    m_isPaused = true;
    endTransferAndSound();
    switch (reason) {
    case StopReason::ByListener:
    case StopReason::StreamEnded:
        setState(RadioStateStopped);
        break;
    case StopReason::NoReconnection:
        fail(RadioErrorHostNotReachable);
        break;
    case StopReason::ConnectionLost:
        setState(RadioStateBuffering);
        if (m_network.waitForReconnection())
            play();
        break;
    }
}

void Streamer::fail(RadioError error)
{
    m_radioError = error;
    m_isPlaying = false;
    m_isPaused = false;
    endTransferAndSound();
    setState(RadioStateError);
}

void Streamer::endTransferAndSound()
{
    m_connection->cancel();
    m_output->dismissQueue();
    m_network.end();
}

void Streamer::shutdown()
{
    if (m_shutdown)
        return;
    pause();
    m_shutdown = true;
    m_background.end();
    AudioSession::sharedInstance().removeInterruptionListener(this);
    NotificationCentre::defaultCentre().removeObserver(this);
}

void Streamer::setBufferInSeconds(unsigned seconds)
{
    Radio::setBufferInSeconds(seconds);
    m_output->setBufferCount(bufferCount());
}

void Streamer::setVolume(float volume)
{
    Radio::setVolume(volume);
    m_output->setVolume(this->volume());
}

void Streamer::setState(RadioState state)
{
    if (m_radioState == state)
        return;
    m_radioState = state;
    tell(&RadioDelegate::radioStateChanged);
    // Deliberate: a stop keeps the task until the application is in front again
    // (StreamerTest.HoldsABackgroundTaskWhileItConnectsOutOfSight).
    if (state == RadioStatePlaying || state == RadioStateError)
        m_background.end();
}

void Streamer::tell(void (RadioDelegate::*operation)(Radio &))
{
    MainQueue::async([streamer = self(), operation] {
        const std::shared_ptr<RadioDelegate> delegate = streamer->delegate();
        if (delegate && !streamer->m_shutdown)
            (delegate.get()->*operation)(*streamer);
    });
}

void Streamer::onReachabilityChanged()
{
    if (!m_network.isWatching())
        return;
    if (!m_network.isReachable()) {
        if (m_output->isStarted())
            m_background.begin();
    } else if (m_network.isWaitingForReconnection()) {
        play();
    } else if (m_isPlaying && m_network.hasMovedToCellular()) {
        pause();
        play();
    }
}

void Streamer::onInterruption(InterruptionState state)
{
    if (state == InterruptionState::End) {
        if (m_pausedByInterruption)
            play();
    } else if (m_isPlaying) {
        pause();
        m_pausedByInterruption = true;
    }
}

void Streamer::onBackground()
{
    if (m_radioState == RadioStateConnecting || m_radioState == RadioStateBuffering)
        m_background.begin();
}

void Streamer::streamAnswered()
{
    setState(RadioStateBuffering);
    if (!openParser())
        fail(RadioErrorFileStreamOpen);
}

void Streamer::connectionLost()
{
    if (m_network.isReachable())
        fail(RadioErrorNetworkError);
    else
        stop(StopReason::ConnectionLost);
}

void Streamer::connectionFinished()
{
    // What is queued plays out, and the last buffer's return stops the player.
    if (!m_output->streamHasEnded())
        stop(StopReason::StreamEnded);
}

bool Streamer::openParser()
{
    return m_output->openParser(fileTypeHint(m_connection->icyStream().contentType()));
}

void Streamer::icyMetadataReady()
{
    nameSound();
    tell(&RadioDelegate::radioMetadataReady);
}

void Streamer::icyTitleChanged(const QString &title)
{
    m_radioTitle = title;
    nameSound();
    tell(&RadioDelegate::radioTitleChanged);
}

void Streamer::nameSound()
{
    QStringList parts{radioName(), m_radioTitle};
    parts.removeAll(QString());
    m_output->setMediaName(parts.join(QStringLiteral(" - ")));
}

void Streamer::outputPrepared(quint32 bufferSize)
{
    m_connection->icyStream().setBufferSize(bufferSize);
    m_connection->pacing().soundIsWanted();
    m_network.stopBufferTimer();
}

void Streamer::packetsWaiting(std::size_t bytes, std::size_t startThreshold)
{
    m_connection->pacing().packetsWaiting(bytes, startThreshold);
}

void Streamer::outputStarted()
{
    m_network.stopBufferTimer();
    m_connection->pacing().soundStarted();
    setState(RadioStatePlaying);
}

void Streamer::outputRanDry()
{
    m_connection->pacing().soundIsWanted();
    setState(RadioStateBuffering);
    // A stream whose packets never fill a buffer stalls too, however fast it is.
    if (!m_network.isBufferTimerRunning())
        m_network.startBufferTimerWithTimeout(stallSeconds);
}

} // namespace orvel
