#include "app/AppDelegate.h"

#include "platform/foundation/FormatText.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/device/AudioDeviceChoice.h"
#include "platform/media/output/AudioSession.h"
#include "platform/ui/containers/NavigationController.h"

namespace orvel {

namespace {

AppDelegate *sharedDelegate = nullptr;

void post(const QString &name, const QVariant &object = {})
{
    NotificationCentre::defaultCentre().postNotification(name, object);
}

} // namespace

AppDelegate::AppDelegate(std::unique_ptr<ScreenCatalogue> catalogue, StreamerServices services)
    : m_catalogue(std::move(catalogue)), m_services(std::move(services))
{
    sharedDelegate = this;
    NotificationCentre::defaultCentre().addObserver(
        this, noSoundDeviceNotification, [](const Notification &) {
            Window::showAlert(QStringLiteral("Son indisponible"),
                              QStringLiteral("Aucune sortie audio n'a été trouvée sur cet appareil. "
                                             "La radio est lue sans le son."),
                              {QStringLiteral("OK")});
        });
}

AppDelegate::~AppDelegate()
{
    NotificationCentre::defaultCentre().removeObserver(this);
    if (m_radio)
        m_radio->shutdown();
    sharedDelegate = nullptr;
}

AppDelegate &AppDelegate::shared()
{
    Q_ASSERT(sharedDelegate);
    return *sharedDelegate;
}

bool AppDelegate::didFinishLaunchingWithOptions()
{
    m_window = std::make_unique<Window>();
    const auto navigation = std::make_shared<NavigationController>(
        m_catalogue->screenNamed(QStringLiteral("RadioViewController")));
    navigation->setNavigationBarHidden(true);
    m_revealSide = std::make_shared<RevealSideViewController>(navigation);
    m_revealSide->setDirectionsToShowBounce(0);
    m_revealSide->setPanInteractionsWhenClosed(RevealSideViewController::PanNavigationBar |
                                               RevealSideViewController::PanContent);
    m_window->setRootViewController(m_revealSide);
    m_window->makeKeyAndVisible();
    return true;
}

void AppDelegate::radio_play()
{
    if (m_radio)
        m_radio->shutdown();
    m_radio.reset();
    if (const std::optional<Url> streamUrl = Url::fromText(url))
        m_radio = Streamer::initWithURL(*streamUrl, m_services);
    if (m_radio) {
        m_radio->setDelegate(weak_from_this());
        m_radio->play();
    }
    AudioSession::sharedInstance().setCategory(AudioSession::Category::Playback);
    AudioSession::sharedInstance().setActive(true);
}

void AppDelegate::radioStateChanged(Radio &radio)
{
    const RadioState state = radio.radioState();
    qCInfo(logApp, "%u", unsigned(state));
    if (state == RadioStatePlaying)
        post(isPlayingNotification);
    else if (state == RadioStateBuffering || state == RadioStateError)
        post(isNotPlayingNotification);

    const RadioError error = radio.radioError();
    if (error == RadioErrorFileStreamOpen || error == RadioErrorHostNotReachable)
        Window::showAlert(
            QStringLiteral("Station Currently Offline"),
            QStringLiteral("The selected station is currently offline. Please check back later."),
            {QStringLiteral("OK")});
}

void AppDelegate::radioMetadataReady(Radio &radio)
{
    qCInfo(logApp).noquote() << " Metadat ----" << formatText(radio.radioName())
                             << "::" << formatText(radio.radioGenre());
}

void AppDelegate::radioTitleChanged(Radio &radio)
{
    qCInfo(logApp).noquote() << formatText(radio.radioTitle());
    const QStringList parts = radio.radioTitle().split(QStringLiteral(" - "));
    const QString artist = parts.value(0, QStringLiteral(""));
    const QString title = parts.value(1, QStringLiteral(""));
    const QString album = parts.value(2, QStringLiteral(""));
    qCInfo(logApp).noquote().nospace() << "Title-->" << title;
    qCInfo(logApp).noquote().nospace() << "Artist-->" << artist;
    qCInfo(logApp).noquote().nospace() << "Album-->" << album;
    post(songTitleNotification, QString(title + QStringLiteral("&&&") + artist));
}

} // namespace orvel
