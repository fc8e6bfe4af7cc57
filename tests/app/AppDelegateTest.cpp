#include "app/AppFixture.h"

#include "platform/foundation/NotificationCentre.h"
#include "platform/media/device/AudioDeviceChoice.h"
#include "platform/media/output/AudioSession.h"

using namespace orvel;
using namespace orvel::test;

namespace {

struct QuietRadio : Radio
{
    QuietRadio() : Radio(*Url::fromText("http://a.example/")) {}
    void setTitle(const QString &title) { m_radioTitle = title; }
    void setError(RadioError error) { m_radioError = error; }
};

struct AppDelegateTest : AppFixture
{
    QStringList posted;
    QuietRadio radio;
    AppDelegateTest()
    {
        for (const QString &name : {AppDelegate::isPlayingNotification, AppDelegate::isNotPlayingNotification,
                                    AppDelegate::songTitleNotification})
            NotificationCentre::defaultCentre().addObserver(
                this, name, [this](const Notification &notification) {
                    posted << notification.name + notification.object.toString();
                });
    }
    ~AppDelegateTest() override { NotificationCentre::defaultCentre().removeObserver(this); }
};

} // namespace

TEST_F(AppDelegateTest, PostsTheTitleBeforeTheArtist)
{
    const std::pair<QString, const char *> cases[] = {{"Zoé - L'été - Album", "songtitleL'été&&&Zoé"},
                                                      {"Jingle", "songtitle&&&Jingle"},
                                                      {"", "songtitle&&&"},
                                                      {QString(), "songtitle&&&"},
                                                      {"A-B", "songtitle&&&A-B"}};
    for (const auto &[title, notification] : cases) {
        posted.clear();
        radio.setTitle(title);
        app->radioTitleChanged(radio);
        EXPECT_EQ(posted, QStringList({notification}));
    }
}

TEST_F(AppDelegateTest, TurnsStatesIntoNotifications)
{
    for (const RadioState state :
         {RadioStateStopped, RadioStateConnecting, RadioStateBuffering, RadioStatePlaying, RadioStateError}) {
        radio.setRadioState(state);
        app->radioStateChanged(radio);
    }
    EXPECT_EQ(posted, QStringList({"isNotPlaying", "isPlaying", "isNotPlaying"}));
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(AppDelegateTest, SaysOnEachStateChangeThatAStationIsOffline)
{
    const QString told = "Station Currently Offline: The selected station is currently offline. "
                         "Please check back later.";
    for (const RadioError error : {RadioErrorFileStreamOpen, RadioErrorHostNotReachable}) {
        radio.setError(error);
        app->radioStateChanged(radio);
        app->radioStateChanged(radio);
        EXPECT_EQ(alertTold() + alertTold() + alertTold(), told + told);
    }
    radio.setError(RadioErrorNetworkError);
    app->radioStateChanged(radio);
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(AppDelegateTest, LaunchesIntoTheRadiosUnderAPanelThatPansWithoutBouncing)
{
    const RevealSideViewController &panel = *app->revealSideViewController();
    EXPECT_EQ(app->window()->rootViewController(), &panel);
    EXPECT_EQ(panel.directionsToShowBounce(), 0);
    EXPECT_TRUE(panel.panOpens());
    EXPECT_TRUE(dynamic_cast<NavigationController &>(center()).isNavigationBarHidden());
    EXPECT_TRUE(radios().isVisible());
}

TEST_F(AppDelegateTest, EachRadioEndsTheOneBefore)
{
    AudioSession &session = AudioSession::sharedInstance();
    std::shared_ptr<Streamer> before;
    for (const char *url :
         {"http://127.0.0.1:1/", "https://127.0.0.1:1/", "(null)", "", "HTTP://a.example/"}) {
        session.setActive(false);
        session.setCategory(AudioSession::Category::Ambient);
        app->url = url;
        app->radio_play();
        EXPECT_EQ(app->radio() != nullptr, app->url.startsWith("http")) << url;
        EXPECT_TRUE(!app->radio() || app->radio()->isPlaying());
        EXPECT_TRUE(session.isActive() && session.category() == AudioSession::Category::Playback) << url;
        if (before) {
            before->pause();
            before->play();
            EXPECT_FALSE(before->isPlaying()) << url;
        }
        before = app->radio();
    }
    letEventsRun();
    EXPECT_EQ(alert(), nullptr);
}

TEST_F(AppDelegateTest, HearsItsPlayerAndTakesItAlong)
{
    media.network.status = Reachability::Status::NotReachable;
    app->url = "http://127.0.0.1:1/";
    app->radio_play();
    letEventsRun();
    EXPECT_TRUE(alertTold().startsWith("Station Currently Offline"));
    media.network.set(Reachability::Status::WiFi);
    app->radio_play();
    const auto player = app->radio();
    app.reset();
    EXPECT_FALSE(player->isPlaying());
}

TEST_F(AppDelegateTest, TellsTheListenerThatThereIsNoSoundDevice)
{
    NotificationCentre::defaultCentre().postNotification(noSoundDeviceNotification);
    EXPECT_TRUE(alertTold().startsWith("Son indisponible: "));
}
