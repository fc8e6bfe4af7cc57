#include "api/json/JsonText.h"
#include "app/AppFixture.h"
#include "app/FavouriteStore.h"
#include "screens/radio/RadioCell.h"

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr const char *radiosAnswer = R"({"media_url":"http://127.0.0.1:1/media","content":[
    {"id":"1","title":"Un","file":"1.jpg","thumb_smartphone":"1.png","flux_aac":"http://127.0.0.1:1/1"},
    {"id":2,"title":"Deux","file":"2.jpg","thumb_smartphone":"2.png","flux_aac":"http://127.0.0.1:1/2"},
    {"id":"3","title":"Trois","file":"3.jpg","thumb_smartphone":"3.png","flux_aac":"http://127.0.0.1:1/3"}]})";

// A logged-in user with the list of web radios before them.
struct FavouritesTest : AppFixture
{
    RadioViewController &list = radios();
    FavouriteStore store;

    FavouritesTest()
    {
        app->isLogin = true;
        list.tableCont.setFrame({0, 0, 375, 600});
        list.PostSuccess(JSONValue(QString::fromUtf8(radiosAnswer)));
    }
    void tapHeart(int row) { cell<RadioCell>(list.tableCont, row)->btnFav.touchUpInside(); }
    // Favourites 3, 2, 1, in this order.
    void storeAll()
    {
        defaults.setObject(QByteArray("[]"), "arrayFav");
        for (int row = 0; row < 3; ++row)
            tapHeart(row);
    }
    RadioFav &openFavourites()
    {
        const auto screen = std::make_shared<RadioFav>();
        screen->strTitle = "Favoris";
        return open(screen);
    }
    QStringList stored() const
    {
        QStringList titles;
        for (const JsonValue &radio : store.radios().value_or(FavouriteStore::Radios()))
            titles << radio["title"].text();
        return titles;
    }
    QStringList shown(const RadioFav &screen)
    {
        QStringList titles;
        for (int row = 0; cell<RadioCell>(screen.tableCont, row); ++row) {
            titles << cell<RadioCell>(screen.tableCont, row)->lblTitle.text();
            EXPECT_EQ(cell<RadioCell>(screen.tableCont, row)->btnFav.tag(), row);
        }
        return titles;
    }
};

} // namespace

TEST_F(FavouritesTest, AreForUsersWhoLoggedIn)
{
    storeAll();
    RadioFav &favourites = openFavourites();
    app->isLogin = false;
    const std::pair<RadioCell *, const char *> cases[] = {
        {cell<RadioCell>(list.tableCont, 0).get(), "You must login before do favriout/unfavriout"},
        {cell<RadioCell>(favourites.tableCont, 0).get(), "You must login before do unfavriout"}};
    for (const auto &[row, refusal] : cases) {
        row->btnFav.touchUpInside();
        EXPECT_EQ(alertTold(), QString("Alert: ") + refusal);
        EXPECT_EQ(presented(), "MonoCompteController");
        app->window()->dismissFrontViewController(false);
    }
    EXPECT_EQ(stored().size(), 3);
    defaults.setObject(true, "user_save");
    cell<RadioCell>(favourites.tableCont, 0)->btnFav.touchUpInside();
    EXPECT_EQ(alertTold(), "Trois: Are you sure, you want to unfavourite?");
}

TEST_F(FavouritesTest, TheFirstIsDrawnAndNotKept)
{
    EXPECT_EQ(overlaysOf([&] { tapHeart(0); }), 1);
    EXPECT_EQ(cell<RadioCell>(list.tableCont, 0)->btnFav.normalImage(), "list_fav_icon_full.png");
    EXPECT_EQ(store.radios().value().size(), 0u);
    tapHeart(1);
    tapHeart(2);
    EXPECT_EQ(stored(), QStringList({"Trois", "Deux"}));
    EXPECT_EQ(store.radios()->at(0)["fav"].text(), "list_fav_icon_full.png");
    EXPECT_EQ(store.radios()->at(0)["imageurl"].text(), "http://127.0.0.1:1/media");
    EXPECT_FALSE(alert());
    tapHeart(0); // it counts as one until the list comes anew
    EXPECT_TRUE(alertTold().startsWith("Un: "));
}

TEST_F(FavouritesTest, LeaveFromTheListWhenThatIsConfirmed)
{
    storeAll();
    store.add(store.radios()->at(0)); // the same id again
    for (const int button : {0, 1}) {
        tapHeart(2);
        ASSERT_TRUE(alert());
        EXPECT_EQ(alert()->buttons(), QStringList({"Cancel", "Yes"}));
        EXPECT_EQ(overlaysOf([&] { alertTold(button); }), button);
        EXPECT_EQ(stored().size(), 4 - button);
    }
    EXPECT_EQ(stored().first(), "Trois");
    const Button &heart = cell<RadioCell>(list.tableCont, 2)->btnFav; // of a fresh cell
    EXPECT_EQ(heart.normalImage() + heart.backgroundImage(), "list_fav_icon.png");
    tapHeart(2);
    EXPECT_EQ(stored().size(), 4);
}

TEST_F(FavouritesTest, LeaveTheirOwnScreenAndRenewTheRowsBelow)
{
    storeAll();
    RadioFav &screen = openFavourites();
    EXPECT_EQ(screen.lblTitle.text(), "Favoris");
    EXPECT_EQ(screen.tableCont.contentHeight(), 3 * 60);
    EXPECT_EQ(shown(screen), QStringList({"Trois", "Deux", "Un"}));
    const auto remove = [&](int row, int button) {
        cell<RadioCell>(screen.tableCont, row)->btnFav.touchUpInside();
        EXPECT_EQ(overlaysOf([&] { alertTold(button); }), button);
    };
    remove(1, 0);
    EXPECT_EQ(shown(screen).size(), 3);
    remove(1, 1);
    EXPECT_EQ(shown(screen), QStringList({"Trois", "Un"}));
    EXPECT_EQ(stored(), QStringList({"Trois", "Un"}));
    store.remove(1); // meanwhile, elsewhere
    remove(1, 1);
    EXPECT_EQ(shown(screen), QStringList("Trois"));
    EXPECT_EQ(stored(), QStringList("Trois"));
}

TEST_F(FavouritesTest, ATapPlaysTheRowWithThePicturesOfTheRowBuiltLast)
{
    storeAll();
    RadioFav &screen = openFavourites();
    EXPECT_TRUE(screen.viewHideShow.hidden());
    app->gl4 = "x";
    screen.tableCont.selectRow(0, 0);
    EXPECT_EQ(app->url, "http://127.0.0.1:1/3");
    EXPECT_TRUE(app->radio());
    EXPECT_EQ(screen.viewHideShow.bl1.text() + screen.viewHideShow.bl2.text(), "Trois");
    EXPECT_EQ(app->gl3, "Trois");
    EXPECT_EQ(app->gl4, "x");
    EXPECT_EQ(app->gurl1, "http://127.0.0.1:1/media/1.png");
    EXPECT_EQ(app->gurl2, "http://127.0.0.1:1/media/1.jpg");
    EXPECT_FALSE(screen.viewHideShow.hidden());
}

TEST_F(FavouritesTest, TheBarsFirstPressAfterATapPlays)
{
    storeAll();
    RadioFav &screen = openFavourites();
    screen.tableCont.selectRow(0, 1);
    const CompactBar *bar = &screen.viewHideShow;
    // The button's tag and images, the radio's and the delegate's state.
    const auto state = [&] {
        return QString("%1 %2 %3 %4 %5")
            .arg(bar->bplay.tag())
            .arg(bar->bplay.normalImage(), bar->bplay.highlightedImage())
            .arg(app->radio()->isPlaying())
            .arg(app->intPlay);
    };
    for (const char *expected : {"0 mstop.png mstop.png 1 1", "1 mstop.png mstop.png 1 1",
                                 "0 mplay.png mplay.png 0 -1", "1 mstop.png mstop.png 1 -1"}) {
        EXPECT_EQ(state(), expected);
        screen.viewHideShow.bplay.touchUpInside();
    }
    // Paused by now: a new visit can resume it, and the next pauses it.
    app->gl3 = "Titre";
    for (const char *expected : {"0 mplay.png mplay.png 0 -1", "1 mstop.png mstop.png 1 -1"}) {
        RadioFav &visited = openFavourites();
        bar = &visited.viewHideShow;
        EXPECT_FALSE(bar->hidden());
        EXPECT_EQ(bar->bl1.text() + bar->bl2.text(), "Titre");
        EXPECT_EQ(state(), expected);
        visited.viewHideShow.bplay.touchUpInside();
    }
}
