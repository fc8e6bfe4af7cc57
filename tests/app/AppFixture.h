#pragma once

#include "api/StationConfiguration.h"
#include "app/AppDelegate.h"
#include "app/MenuController.h"
#include "audio/live/FakeMedia.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/net/UrlConnection.h"
#include "platform/system/RecordingServices.h"
#include "platform/ui/containers/NavigationController.h"
#include "platform/ui/containers/ProgressHud.h"
#include "screens/account/MonoCompteController.h"
#include "screens/all/AllScreens.h"
#include "screens/radio/RadioFav.h"
#include "screens/radio/RadioViewController.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

namespace orvel::test {

// The launched application without a window on the screen and without sound, on a system that takes all it is
// handed. Time stands still.
struct AppFixture : testing::Test
{
    TakenClock clock;
    FakeMedia media;
    std::shared_ptr<RecordingServices> system = std::make_shared<RecordingServices>();
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    std::shared_ptr<AppDelegate> app;
    int overlays = 0; // how often the overlay has come up
    QObject overlayWatch;

    explicit AppFixture(std::unique_ptr<ScreenCatalogue> catalogue = std::make_unique<AllScreens>())
        : app(std::make_shared<AppDelegate>(std::move(catalogue), media.services()))
    {
        SystemServices::use(system);
        QObject::connect(&ProgressHud::shared(), &ProgressHud::changed, &overlayWatch,
                         [this] { overlays += ProgressHud::shared().isVisible() ? 1 : 0; });
        app->didFinishLaunchingWithOptions();
    }
    ~AppFixture() override
    {
        letEventsRun();
        closeConnections(); // a probe under way would keep its screen
        SystemServices::use(nullptr);
        StationConfiguration::use(StationConfiguration::compiledIn());
        for (const char *key : {"arrayFav", "user_id", "user_email", "user_save"})
            defaults.removeObjectForKey(key);
    }
    static void useSite(const QString &url)
    {
        StationConfiguration configuration = StationConfiguration::compiledIn();
        configuration.siteUrl = url;
        StationConfiguration::use(configuration);
    }
    template<class Screen>
    Screen &open(const std::shared_ptr<Screen> &screen)
    {
        app->revealSideViewController()->popViewControllerWithNewCenterController(screen, false);
        screen->tableCont.setFrame({0, 0, 375, 900});
        return *screen;
    }
    // nullptr when the row is not in view.
    template<class Cell>
    static std::shared_ptr<Cell> cell(const TableView &table, int row, int section = 0)
    {
        return std::static_pointer_cast<Cell>(table.cellForRowAtIndexPath({section, row}));
    }

    ViewController &center() { return *app->revealSideViewController()->centerController(); }
    RadioViewController &radios()
    {
        auto *const navigation = dynamic_cast<NavigationController *>(&center());
        return dynamic_cast<RadioViewController &>(navigation ? *navigation->topViewController() : center());
    }
    MenuController &menu()
    {
        return dynamic_cast<MenuController &>(*app->revealSideViewController()->leftController());
    }
    // How often the overlay comes while `action` runs; it goes again.
    int overlaysOf(const std::function<void()> &action)
    {
        letEventsRun();
        overlays = 0;
        action();
        letEventsRun();
        EXPECT_FALSE(ProgressHud::shared().isVisible());
        return overlays;
    }
    AlertView *alert() { return app->window()->alert(); }
    // Answers the alert in front. Returns "its title: its message"; a null text when there is no alert.
    QString alertTold(int button = 0)
    {
        if (!alert())
            return {};
        const QString told = alert()->title() + ": " + alert()->message();
        alert()->click(button);
        return told;
    }
    // The layout of the screen presented over the others; an empty text when there is none.
    QString presented()
    {
        const ViewController *const screen = app->window()->presentedViewController();
        return screen ? screen->layoutName() : QString();
    }
    template<class Screen>
    Screen &presentedAs()
    {
        return dynamic_cast<Screen &>(*app->window()->presentedViewController());
    }
};

} // namespace orvel::test
