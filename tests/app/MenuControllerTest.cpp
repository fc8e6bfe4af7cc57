#include "api/StationConfiguration.h"
#include "app/AppFixture.h"

using namespace orvel;
using namespace orvel::test;

namespace {

struct MenuControllerTest : AppFixture
{
    QString rowTitle(int section, int row)
    {
        const auto cell = menu().cellForRowAtIndexPath(menu().tableCont, {section, row});
        return std::static_pointer_cast<MenuCell>(cell)->textLabel.text();
    }
};

} // namespace

TEST_F(MenuControllerTest, RowsGetTheirTitlesHalfASecondLater)
{
    EXPECT_EQ(rowTitle(0, 0), "(null)");
    clock.turn(0.49);
    EXPECT_EQ(rowTitle(3, 7), "(null)");
    clock.turn(0.02);
    EXPECT_EQ(rowTitle(0, 2), QString::fromUtf8("Titre diffusés"));
    EXPECT_EQ(rowTitle(1, 0), "News");
    EXPECT_EQ(rowTitle(2, 1), QString::fromUtf8("Fréquences"));
    EXPECT_EQ(rowTitle(3, 7), QString::fromUtf8("Mentions légales"));
    const int counts[] = {4, 5, 2, 8, 0};
    for (int section = 0; section < 5; ++section)
        EXPECT_EQ(menu().numberOfRowsInSection(menu().tableCont, section), counts[section]);
    EXPECT_EQ(menu().tableCont.elements()->rowCount(), 0); // nothing is in view yet
}

TEST_F(MenuControllerTest, RadiosBringsAFreshScreenAndKeepsTheMenu)
{
    clock.turn(0.05);
    MenuController *const before = &menu();
    app->revealSideViewController()->open(false);
    menu().tableCont.selectRow(0, 0);
    EXPECT_EQ(&menu(), before);
    EXPECT_FALSE(app->revealSideViewController()->isOpen());
    EXPECT_EQ(radios().lblTitle.text(), "(null)"); // chosen before the titles were there
    clock.turn(1);
    menu().tableCont.selectRow(0, 0);
    EXPECT_EQ(radios().lblTitle.text(), "Radios");
}

TEST_F(MenuControllerTest, WhatIsMissingSaysSo)
{
    for (const IndexPath row : {IndexPath{0, 2}, {0, 3}, {1, 0}, {1, 4}, {2, 0}, {3, 7}}) {
        menu().tableCont.selectRow(row.section, row.row);
        ASSERT_NE(alert(), nullptr) << row.section << row.row;
        EXPECT_EQ(alert()->message(), "Cette rubrique n'est pas encore disponible.");
        alert()->click(0);
    }
    menu().searchBar.setText("jazz");
    menu().searchBar.searchButtonClicked();
    EXPECT_EQ(menu().searchBar.text(), "");
    EXPECT_NE(alert(), nullptr);
}

TEST_F(MenuControllerTest, PagesOpenInTheSystemsBrowser)
{
    const StationConfiguration &station = StationConfiguration::current();
    for (int row = 2; row <= 6; ++row)
        menu().tableCont.selectRow(3, row);
    EXPECT_EQ(system->opened, (QStringList{station.siteUrl, station.facebookPage, station.twitterPage,
                                           station.googlePage, station.instagramPage}));
    EXPECT_EQ(alert(), nullptr);
    system->refused = QStringList{"http"};
    menu().tableCont.selectRow(3, 2);
    ASSERT_NE(alert(), nullptr);
    EXPECT_TRUE(alert()->message().contains(station.siteUrl));
}

namespace {

// Every screen that the menu can ask for, as one that only keeps what is set on it.
struct EveryScreen : Screens
{
    struct Screen : ViewController
    {
    };
    std::shared_ptr<ViewController> screenNamed(const QString &layoutName) const override
    {
        asked << layoutName;
        const bool atLaunch = asked.size() <= 2; // the first list and its menu
        return atLaunch ? Screens::screenNamed(layoutName) : std::make_shared<Screen>();
    }
    mutable QStringList asked;
};

struct MenuRowsTest : AppFixture
{
    MenuRowsTest() : AppFixture(std::make_unique<EveryScreen>()) { clock.turn(1); }
    QString lastAsked() { return dynamic_cast<const EveryScreen &>(app->catalogue()).asked.last(); }
};

} // namespace

TEST_F(MenuRowsTest, EachRowOpensItsScreenAsTheTableSays)
{
    const QVariant none;
    const struct
    {
        IndexPath row;
        QString layoutName;
        bool modal;
        QVariant strTitle;
        QVariant strType;
        QVariant url;
    } cases[] = {
        {{0, 0}, "RadioViewController", false, "Radios", none, none},
        {{0, 1}, "RadioFav", false, "Favoris", none, none},
        {{0, 2}, "TitrusController", false, none, none, none},
        {{0, 3}, "RadioTopTen", false, "Top 10", none, none},
        {{1, 0}, "NewsController", false, "News", "news", none},
        {{1, 1}, "NewsController", false, "Sons", "son", none},
        {{1, 2}, "NewsController", false, QString::fromUtf8("Vidéos"), "video", none},
        {{1, 3}, "NewsController", false, "Concours", "concours", none},
        {{1, 4}, "AgendaController", false, "Agenda", "agenda", none},
        {{2, 0}, "EmissionsController", false, none, none, none},
        {{2, 1}, "FrequenceController", false, "Frequences", none, none},
        {{3, 0}, "MonoCompteController", true, none, none, none},
        {{3, 1}, "NewsLetterController", true, none, none, none},
        {{3, 7}, "webCont", true, none, none, "qrc:/assets/pages/leagals.html"},
    };
    app->isLogin = true; // the account row is the login form all the same
    for (const auto &test : cases) {
        app->revealSideViewController()->open(false);
        menu().tableCont.selectRow(test.row.section, test.row.row);
        EXPECT_EQ(lastAsked(), test.layoutName);
        const ViewController *const presented = app->window()->presentedViewController();
        EXPECT_EQ(presented != nullptr, test.modal) << qPrintable(test.layoutName);
        EXPECT_EQ(app->revealSideViewController()->isOpen(), test.modal);
        const ViewController &screen = presented ? *presented : center();
        EXPECT_EQ(screen.property("strTitle"), test.strTitle) << qPrintable(test.layoutName);
        EXPECT_EQ(screen.property("strType"), test.strType) << qPrintable(test.layoutName);
        EXPECT_EQ(screen.property("url"), test.url) << qPrintable(test.layoutName);
        menu().dismissViewController(false);
    }
}

TEST_F(MenuRowsTest, ASearchOpensTheHomeScreenAndEmptiesTheBar)
{
    for (const QString text : {"", "jazz & soul"}) {
        app->revealSideViewController()->open(false);
        menu().searchBar.setText(text);
        menu().searchBar.searchButtonClicked();
        EXPECT_EQ(lastAsked(), "HomeController");
        EXPECT_EQ(center().property("strSearch"), text);
        EXPECT_EQ(center().property("isRun"), true);
        EXPECT_FALSE(app->revealSideViewController()->isOpen());
        EXPECT_EQ(menu().searchBar.text(), "");
    }
}
