#include "app/AppFixture.h"
#include "demo/DemoStation.h"
#include "platform/foundation/RunLoop.h"
#include "screens/radio/FrequenceController.h"
#include "screens/radio/RadioCell.h"

#include <QDateTime>

using namespace orvel;
using namespace orvel::test;

namespace {

using StationScreensTest = AppFixture;

int width(const ImageView &view) { return view.image().width(); }

} // namespace

// What a real station answers arrives, and its large pictures and logos where they belong.
TEST_F(StationScreensTest, ShowEachPictureInItsPlace)
{
    const std::unique_ptr<DemoStation> station = DemoStation::start({});
    useSite(station->siteUrl());
    RunLoop::main().takeClock(double(QDateTime::currentSecsSinceEpoch()));
    const auto frequencies = std::make_shared<FrequenceController>();
    open(frequencies);
    clock.turn(0.11);
    EXPECT_TRUE(cell<TableViewCell>(frequencies->tableCont, 0));

    RadioViewController &list = open(std::make_shared<RadioViewController>());
    clock.turn(0.11);
    const auto row = cell<RadioCell>(list.tableCont, 1);
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

    defaults.setObject(QByteArray("[]"), "arrayFav");
    app->isLogin = true;
    row->btnFav.touchUpInside();
    // Screens that come later: the bar's logo stays empty.
    RadioViewController &fresh = open(std::make_shared<RadioViewController>());
    clock.turn(0.11);
    EXPECT_TRUE(waitUntil([&] {
        return width(fresh.viewHeader.himg) == logo && width(fresh.viewHeader.himgsinger) == large &&
               width(fresh.viewHideShow.bimgsinger) == large;
    }));
    EXPECT_EQ(width(fresh.viewHideShow.bimg), 0);
    RadioFav &favourites = open(std::make_shared<RadioFav>());
    EXPECT_TRUE(waitUntil([&] { return width(favourites.viewHideShow.bimgsinger) == large; }));
    EXPECT_EQ(width(favourites.viewHideShow.bimg), 0);
    app->gurl2.clear();
    favourites.viewHideShow.bimgsinger.setImage({});
    favourites.tableCont.selectRow(0, 0);
    EXPECT_TRUE(waitUntil([&] { return width(favourites.viewHideShow.bimgsinger) == large; }));
}
