#pragma once

#include "app/ScreenCatalogue.h"
#include "audio/live/Streamer.h"
#include "platform/ui/containers/RevealSideViewController.h"
#include "platform/ui/containers/Window.h"

namespace orvel {

// Builds the window and its first screen at launch. Owns the one live player and the now-playing values that
// the radio screens share. Posts what the player reports as application-wide notifications. Main thread.
class AppDelegate : public RadioDelegate, public std::enable_shared_from_this<AppDelegate>
{
public:
    // Posted on the default notification centre. "isNotPlaying" means buffering or an error.
    static inline const QString isPlayingNotification = QStringLiteral("isPlaying");
    static inline const QString isNotPlayingNotification = QStringLiteral("isNotPlaying");
    // Its object is the song title, "&&&" and the artist.
    // Deliberate: the title stands first although streams name the artist first
    // (AppDelegateTest.PostsTheTitleBeforeTheArtist).
    static inline const QString songTitleNotification = QStringLiteral("songtitle");

    explicit AppDelegate(std::unique_ptr<ScreenCatalogue> catalogue, StreamerServices services = {});
    ~AppDelegate() override;
    // Returns the application's one delegate. Call it only while there is one.
    static AppDelegate &shared();

    bool didFinishLaunchingWithOptions();
    void applicationWillResignActive() {}
    void applicationDidEnterBackground() {}
    void applicationWillEnterForeground() {}
    void applicationDidBecomeActive() {}
    void applicationWillTerminate() {}

    // Shuts the player down, makes one for `url` and starts it. Leaves no player, without an alert, when
    // `url` is not an "http" or "https" address.
    void radio_play();

    // Deliberate: an offline station is told at each of its state changes
    // (AppDelegateTest.SaysOnEachStateChangeThatAStationIsOffline).
    void radioStateChanged(Radio &radio) override;
    void radioMetadataReady(Radio &radio) override;
    void radioTitleChanged(Radio &radio) override;

    Window *window() const { return m_window.get(); }
    const std::shared_ptr<RevealSideViewController> &revealSideViewController() const { return m_revealSide; }
    const ScreenCatalogue &catalogue() const { return *m_catalogue; }
    // nullptr before the first radio.
    const std::shared_ptr<Streamer> &radio() const { return m_radio; }

    QString url;                      // the stream that radio_play opens
    QString gl1 = QStringLiteral(""); // now playing: radio name
    QString gl2 = QStringLiteral(""); // radio description
    QString gl3 = QStringLiteral(""); // song title
    QString gl4 = QStringLiteral(""); // artist
    QString gurl1;                    // radio logo URL
    QString gurl2;                    // large picture URL
    qint32 intPlay = 0;               // 1 after a radio was started, -1 after a pause
    bool isLogin = false;             // the user logged in since the start

private:
    std::unique_ptr<ScreenCatalogue> m_catalogue;
    StreamerServices m_services;
    std::unique_ptr<Window> m_window;
    std::shared_ptr<RevealSideViewController> m_revealSide;
    std::shared_ptr<Streamer> m_radio;
};

} // namespace orvel
