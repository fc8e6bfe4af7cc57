#include "api/StationConfiguration.h"
#include "app/AppFixture.h"
#include "demo/DemoStation.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/UserDefaults.h"
#include "screens/radio/FrequenceController.h"
#include "screens/radio/RadioCell.h"

#include <QDateTime>

using namespace orvel;
using namespace orvel::test;

namespace {

// The screens on a real station.
struct StationScreensTest : AppFixture
{
    std::unique_ptr<DemoStation> station = DemoStation::start({});

    StationScreensTest()
    {
        StationConfiguration configuration = StationConfiguration::compiledIn();
        configuration.siteUrl = station->siteUrl();
        StationConfiguration::use(configuration);
        RunLoop::main().takeClock(double(QDateTime::currentSecsSinceEpoch()));
    }
    ~StationScreensTest() override
    {
        StationConfiguration::use(StationConfiguration::compiledIn());
        UserDefaults::standardUserDefaults().removeObjectForKey("arrayFav");
    }
    template<class Screen>
    Screen &open()
    {
        const auto screen = std::make_shared<Screen>();
        app->revealSideViewController()->popViewControllerWithNewCenterController(screen, false);
        screen->tableCont.setFrame({0, 0, 375, 600});
        clock.turn(0.11);
        letEventsRun();
        return *screen;
    }
    static int width(const ImageView &view) { return view.image().width(); }
};

} // namespace

TEST_F(StationScreensTest, ShowEachPictureInItsPlace)
{
    RadioViewController &list = open<RadioViewController>();
    const auto row = std::static_pointer_cast<RadioCell>(list.tableCont.cellForRowAtIndexPath({0, 1}));
    ASSERT_TRUE(row);
    list.tableCont.selectRow(0, 1);
    const NowPlayingHeader &header = list.viewHeader;
    ASSERT_TRUE(waitUntil([&] {
        return width(row->img) && width(header.himg) && width(header.himgsinger) &&
               width(list.viewHideShow.bimg) && width(list.viewHideShow.bimgsinger);
    }));
    const int large = width(header.himgsinger);
    const int logo = width(header.himg);
    EXPECT_GT(large, logo);
    EXPECT_EQ(width(row->img), large);
    EXPECT_EQ(width(list.viewHideShow.bimg), logo);
    EXPECT_EQ(width(list.viewHideShow.bimgsinger), large);

    UserDefaults::standardUserDefaults().setObject(QByteArray("[]"), "arrayFav");
    app->isLogin = true;
    row->btnFav.touchUpInside();
    // Screens that come later: the bar's logo stays empty.
    RadioViewController &fresh = open<RadioViewController>();
    EXPECT_TRUE(waitUntil([&] {
        return width(fresh.viewHeader.himg) == logo && width(fresh.viewHeader.himgsinger) == large &&
               width(fresh.viewHideShow.bimgsinger) == large;
    }));
    EXPECT_EQ(width(fresh.viewHideShow.bimg), 0);
    RadioFav &favourites = open<RadioFav>();
    EXPECT_TRUE(waitUntil([&] { return width(favourites.viewHideShow.bimgsinger) == large; }));
    EXPECT_EQ(width(favourites.viewHideShow.bimg), 0);
    app->gurl2.clear();
    favourites.viewHideShow.bimgsinger.setImage({});
    favourites.tableCont.selectRow(0, 0);
    EXPECT_TRUE(waitUntil([&] { return width(favourites.viewHideShow.bimgsinger) == large; }));
}

TEST_F(StationScreensTest, ListTheFrequencies)
{
    EXPECT_TRUE(open<FrequenceController>().tableCont.cellForRowAtIndexPath({0, 0}));
}
