#include "audio/live/Streamer.h"

#include "platform/foundation/BackgroundTask.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/output/AudioSession.h"

#include <algorithm>

namespace orvel {

std::shared_ptr<Streamer> Streamer::initWithURL(const Url &url, StreamerServices services)
{
    const QString scheme = url.scheme();
    if (scheme != QLatin1String("http") && scheme != QLatin1String("https"))
        return nullptr;
    std::shared_ptr<Streamer> streamer(new Streamer(url, std::move(services)));
    streamer->observeNotifications();
    return streamer;
}

Streamer::Streamer(const Url &url, StreamerServices services)
    : Radio(url), m_services(std::move(services)), m_playlist(PlaylistDownload::forUrl(url))
{
    if (m_playlist)
        m_httpState = HttpState::FetchingPlaylist;
    AudioSession::sharedInstance().setCategory(AudioSession::Category::Playback);
    AudioSession::sharedInstance().setActive(true);
}

Streamer::~Streamer() { NotificationCentre::defaultCentre().removeObserver(this); }

void Streamer::observeNotifications()
{
    const auto observe = [this](const QString &name, void (Streamer::*operation)()) {
        NotificationCentre::defaultCentre().addObserver(
            this, name, [weak = std::weak_ptr(self()), operation](const Notification &) {
                const std::shared_ptr<Streamer> streamer = weak.lock();
                if (streamer && !streamer->m_shutdown)
                    (streamer.get()->*operation)();
            });
    };
    observe(Reachability::changedNotification, &Streamer::onReachabilityChanged);
    observe(applicationDidEnterBackground, &Streamer::onBackground);
    observe(applicationWillEnterForeground, &Streamer::onForeground);
}

void Streamer::play()
{
    if (m_shutdown || m_playerState.isPlaying)
        return;
    // Also ends a wait for reconnection.
    stopBufferTimer();
    stopReconnectTimer();
    m_playerState.isPaused = false;
    m_playerState.isPlaying = true;
    m_playerState.lockQueue.sync([this] {
        m_buffersInUse = 0;
        m_playerState.queuedBytes = 0;
    });
    m_connectionFinished = false;
    m_connectionError = false;
    m_waitingForReconnection = false;
    m_playerState.bufferSize = 4096;
    m_icyStream.reset();
    m_icyStream.setBufferSize(m_playerState.bufferSize);

    startReachability();
    if (isOnWiFiOrCellular())
        m_connectionType = m_reachability->currentReachabilityStatus();
    if (!m_reachability->isReachable()) {
        m_playerState.isPlaying = false;
        dropReachability();
        fail(RadioErrorHostNotReachable);
        return;
    }
    setState(RadioStateConnecting);
    if (m_httpState == HttpState::FetchingStream)
        requestAudioStream();
    else
        requestPlaylist();
}

void Streamer::pause()
{
    // While a reconnection is waited for the player counts as paused, and a pause ends the wait.
    if (m_shutdown || (m_playerState.isPaused && !m_waitingForReconnection))
        return;
    const bool connectionError = std::exchange(m_connectionError, false);
    const bool wasWaiting = std::exchange(m_waitingForReconnection, false);
    m_playerState.isPlaying = false;
    m_playerState.isPaused = true;
    cancelConnection();
    m_playerState.queueStarted = false;
    dismissQueue();
    stopBufferTimer();
    stopReconnectTimer();
    dropReachability();

    if (!connectionError) {
        setState(RadioStateStopped);
    } else if (wasWaiting) {
        fail(RadioErrorHostNotReachable);
    } else {
        m_waitingForReconnection = true;
        setState(RadioStateBuffering);
        startReconnectTimerWithTimeout(reconnectionSeconds);
        startReachability();
        if (isOnWiFiOrCellular())
            play();
    }
}

void Streamer::shutdown()
{
    if (m_shutdown)
        return;
    pause();
    m_shutdown = true;
    stopBufferTimer();
    stopReconnectTimer();
    dropReachability();
    endBackgroundTaskIfAny();
    NotificationCentre::defaultCentre().removeObserver(this);
    // Outlives packet work that is still under way; the last release is the main thread's.
    m_playerState.lockQueue.async(
        [last = self()]() mutable { MainQueue::async([last = std::move(last)] {}); });
}

void Streamer::requestPlaylist() { startRequest({m_url}); }

void Streamer::requestAudioStream()
{
    UrlRequest request{m_url};
    request.headers.set(QStringLiteral("Icy-Metadata"), QStringLiteral("1"));
    request.headers.set(QStringLiteral("Cache-Control"), QStringLiteral("no-cache"));
    // Sound is never packed: what claims to be could only unpack to a thousand times its size.
    request.headers.set(QStringLiteral("Accept-Encoding"), QStringLiteral("identity"));
    startRequest(std::move(request));
}

void Streamer::startRequest(UrlRequest request)
{
    if (!httpUserAgent.isNull())
        request.headers.set(QStringLiteral("User-Agent"), httpUserAgent);
    request.idleTimeout = httpTimeout;
    cancelConnection();
    m_httpStatusCode = 0;
    m_networkError.reset();
    m_urlConnection = UrlConnection::start(request, self());
}

void Streamer::cancelConnection()
{
    m_transferSuspended = false;
    if (const std::shared_ptr<UrlConnection> connection = std::exchange(m_urlConnection, nullptr))
        connection->cancel();
}

void Streamer::didReceiveResponse(UrlConnection &, const UrlResponse &response)
{
    m_httpStatusCode = response.statusCode;
    if (response.statusCode >= 400) {
        fail(RadioErrorHostNotReachable);
        return;
    }
    if (m_httpState == HttpState::FetchingPlaylist) {
        m_playlist->clear();
        return;
    }
    readStreamHeaders(response.headers);
    setState(RadioStateBuffering);
    if (!openParser()) {
        fail(RadioErrorFileStreamOpen);
        return;
    }
    m_icyStream.clearGathered();
}

void Streamer::readStreamHeaders(const HeaderFields &headers)
{
    m_icyStream.setContentType(headers.value(QStringLiteral("content-type")).value_or(QString()));
    bool hasMetadata = false;
    for (const HeaderFields::Field &field : headers.fields())
        hasMetadata |= m_icyStream.applyHeader(field.name, field.value) == IcyStream::HeaderKind::Metadata;
    if (hasMetadata)
        icyMetadataReady();
}

void Streamer::didReceiveData(UrlConnection &, QByteArrayView data)
{
    if (m_httpState == HttpState::FetchingStream) {
        parseAudioData(data);
        return;
    }
    if (!m_playlist->append(data))
        playlistReceived();
}

void Streamer::connectionDidFinishLoading(UrlConnection &)
{
    m_urlConnection.reset();
    if (m_httpState == HttpState::FetchingPlaylist) {
        playlistReceived();
        return;
    }
    bool isSilent = false;
    m_playerState.lockQueue.sync([&] {
        m_connectionFinished = true;
        isSilent = m_playerState.isBuffering || m_buffersInUse == 0;
    });
    // Otherwise what is queued plays out, and the last buffer's return stops the player.
    if (m_playerState.isPlaying && isSilent)
        pause();
}

void Streamer::playlistReceived()
{
    cancelConnection();
    const std::optional<Url> url = m_playlist->takeStreamUrl();
    if (!url) {
        fail(RadioErrorPlaylistParsing);
        return;
    }
    m_url = *url;
    m_httpState = HttpState::FetchingStream;
    requestAudioStream();
}

void Streamer::didFailWithError(UrlConnection &, const NetError &error)
{
    m_urlConnection.reset();
    m_networkError = error;
    if (m_httpState == HttpState::FetchingPlaylist) {
        fail(RadioErrorHostNotReachable);
        return;
    }
    if (!m_playerState.isPlaying)
        return;
    if (m_reachability && m_reachability->isReachable()) {
        dropReachability();
        fail(RadioErrorNetworkError);
    } else {
        m_connectionError = true;
        pause();
    }
}

void Streamer::fail(RadioError error)
{
    m_radioError = error;
    setState(RadioStateError);
}

void Streamer::setState(RadioState state)
{
    if (m_radioState == state)
        return;
    m_radioState = state;
    if (m_urlConnection && state != RadioStatePlaying)
        m_urlConnection->readAtMostEvery(0);
    if (state == RadioStateError) {
        m_playerState.queueStarted = false;
        m_playerState.isPlaying = false;
        m_playerState.isPaused = false;
        m_playerState.isBuffering = false;
        cancelConnection();
        dismissQueue();
        stopBufferTimer();
        stopReconnectTimer();
    }
    tell(&RadioDelegate::radioStateChanged);
    if (state == RadioStatePlaying || state == RadioStateError)
        endBackgroundTaskIfAny();
}

void Streamer::tell(void (RadioDelegate::*operation)(Radio &))
{
    MainQueue::async([streamer = self(), operation] {
        const std::shared_ptr<RadioDelegate> delegate = streamer->delegate();
        if (delegate && !streamer->m_shutdown)
            (delegate.get()->*operation)(*streamer);
    });
}

void Streamer::startBufferTimerWithTimeout(double seconds)
{
    stopBufferTimer();
    beginBackgroundTaskIfNone();
    m_bufferTimer = RunLoop::main().after(
        seconds, [streamer = self()] { streamer->onBufferTimerFired(); }, RunLoop::Lane::Service);
}

void Streamer::startReconnectTimerWithTimeout(double seconds)
{
    stopReconnectTimer();
    beginBackgroundTaskIfNone();
    m_reconnectTimer = RunLoop::main().after(
        seconds, [streamer = self()] { streamer->onReconnectTimerFired(); }, RunLoop::Lane::Service);
}

void Streamer::stopBufferTimer() { RunLoop::main().cancel(std::exchange(m_bufferTimer, 0)); }

void Streamer::stopReconnectTimer() { RunLoop::main().cancel(std::exchange(m_reconnectTimer, 0)); }

void Streamer::onBufferTimerFired()
{
    m_bufferTimer = 0;
    m_connectionError = true;
    startReachability();
    pause();
}

void Streamer::onReconnectTimerFired()
{
    m_reconnectTimer = 0;
    m_connectionError = true;
    pause();
}

void Streamer::onReachabilityChanged()
{
    if (!m_reachability)
        return;
    const std::shared_ptr<Streamer> keep = self();
    if (!m_reachability->isReachable()) {
        if (m_playerState.queueStarted)
            beginBackgroundTaskIfNone();
        return;
    }
    if (m_waitingForReconnection) {
        play();
    } else if (m_playerState.isPlaying && m_connectionType == Reachability::Status::WiFi &&
               m_reachability->currentReachabilityStatus() == Reachability::Status::Cellular) {
        pause();
        play();
    }
}

void Streamer::onBackground()
{
    if (m_radioState == RadioStateConnecting || m_radioState == RadioStateBuffering)
        beginBackgroundTaskIfNone();
}

void Streamer::onForeground() { endBackgroundTaskIfAny(); }

// While the application is in front no task is needed.
void Streamer::beginBackgroundTaskIfNone()
{
    if (m_bgTask != invalidBackgroundTask || applicationState() == ApplicationState::Active)
        return;
    m_bgTask = beginBackgroundTask([weak = std::weak_ptr(self())] {
        MainQueue::async([weak] {
            if (const std::shared_ptr<Streamer> streamer = weak.lock())
                streamer->endBackgroundTaskIfAny();
        });
    });
}

void Streamer::endBackgroundTaskIfAny()
{
    if (m_bgTask != invalidBackgroundTask)
        endBackgroundTask(std::exchange(m_bgTask, invalidBackgroundTask));
}

void Streamer::startReachability()
{
    if (!m_reachability)
        m_reachability = m_services.reachability();
    m_reachability->startNotifier();
}

void Streamer::dropReachability()
{
    if (const std::unique_ptr<Reachability> monitor = std::exchange(m_reachability, nullptr))
        monitor->stopNotifier();
}

bool Streamer::isOnWiFiOrCellular() const
{
    return m_reachability->currentReachabilityStatus() != Reachability::Status::NotReachable;
}

} // namespace orvel
