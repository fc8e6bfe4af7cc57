#include "app/AppFixture.h"

using namespace orvel;
using namespace orvel::test;

namespace orvel::test {

// A screen that keeps what the menu sets on it.
class OpenedScreen : public orvel::ViewController
{
    Q_OBJECT
    Q_PROPERTY(QVariant strTitle MEMBER m_strTitle)
    Q_PROPERTY(QVariant strType MEMBER m_strType)
    Q_PROPERTY(QVariant url MEMBER m_url)
    Q_PROPERTY(QVariant strSearch MEMBER m_strSearch)
    Q_PROPERTY(QVariant isRun MEMBER m_isRun)

    QVariant m_strTitle, m_strType, m_url, m_strSearch, m_isRun;
};

} // namespace orvel::test

namespace {

// Every screen that the menu can ask for.
struct EveryScreen : AllScreens
{
    std::shared_ptr<ViewController> screenNamed(const QString &layoutName) const override
    {
        asked << layoutName;
        const bool atLaunch = asked.size() <= 2; // the first list and its menu
        return atLaunch ? AllScreens::screenNamed(layoutName) : std::make_shared<OpenedScreen>();
    }
    mutable QStringList asked;
};

struct MenuControllerTest : AppFixture
{
    MenuControllerTest() : AppFixture(std::make_unique<EveryScreen>()) {}
    QString rowTitle(int section, int row)
    {
        return cell<MenuCell>(menu().tableCont, row, section)->textLabel.text();
    }
    QString lastAsked() { return dynamic_cast<const EveryScreen &>(app->catalogue()).asked.last(); }
};

} // namespace

TEST_F(MenuControllerTest, RowsGetTheirTitlesHalfASecondLater)
{
    menu().tableCont.setFrame({0, 0, 300, 1000});
    EXPECT_EQ(menu().tableCont.contentHeight(), 4 * 30 + 19 * 45);
    EXPECT_EQ(rowTitle(0, 0), "(null)");
    clock.turn(0.49);
    EXPECT_EQ(rowTitle(3, 7), "(null)");
    EXPECT_FALSE(menu().searchBar.darkField());
    menu().tableCont.selectRow(0, 0);
    EXPECT_EQ(center().property("strTitle"), "(null)");
    clock.turn(0.02);
    EXPECT_TRUE(menu().searchBar.darkField());
    EXPECT_EQ(rowTitle(0, 2), QString::fromUtf8("Titre diffusés"));
    EXPECT_EQ(rowTitle(1, 0), "News");
    EXPECT_EQ(rowTitle(2, 1), QString::fromUtf8("Fréquences"));
    EXPECT_EQ(rowTitle(3, 7), QString::fromUtf8("Mentions légales"));
    EXPECT_EQ(menu().numberOfRowsInSection(menu().tableCont, 4), 0);
    const char *const titles[] = {"Ecouter ", "A la Une ", "Ma Radio ", "Plus "};
    for (int section = 0; section < 4; ++section) {
        const auto header = menu().viewForHeaderInSection(menu().tableCont, section);
        EXPECT_EQ(std::static_pointer_cast<MenuHeader>(header)->title.text(), titles[section]);
    }
}

TEST_F(MenuControllerTest, PagesOpenOutsideAndWhatNoProgramOpensIsTold)
{
    const StationConfiguration &station = StationConfiguration::current();
    for (int row = 2; row <= 6; ++row)
        menu().tableCont.selectRow(3, row);
    EXPECT_EQ(system->opened, QStringList({station.siteUrl, station.facebookPage, station.twitterPage,
                                           station.googlePage, station.instagramPage}));
    EXPECT_EQ(alert(), nullptr);
    system->refused = QStringList{"http"};
    menu().tableCont.selectRow(3, 2);
    EXPECT_TRUE(alertTold().contains(station.siteUrl));
}

TEST_F(MenuControllerTest, EachRowOpensItsScreenAsTheTableSays)
{
    const struct
    {
        IndexPath row;
        QString layoutName;
        QVariant strTitle{};
        QVariant strType{};
        QVariant url{};
    } cases[] = {
        {{0, 0}, "RadioViewController", "Radios"},
        {{0, 1}, "RadioFav", "Favoris"},
        {{0, 2}, "TitrusController"},
        {{0, 3}, "RadioTopTen", "Top 10"},
        {{1, 0}, "NewsController", "News", "news"},
        {{1, 1}, "NewsController", "Sons", "son"},
        {{1, 2}, "NewsController", QString::fromUtf8("Vidéos"), "video"},
        {{1, 3}, "NewsController", "Concours", "concours"},
        {{1, 4}, "AgendaController", "Agenda", "agenda"},
        {{2, 0}, "EmissionsController"},
        {{2, 1}, "FrequenceController", "Frequences"},
        {{3, 0}, "MonoCompteController"},
        {{3, 1}, "NewsLetterController"},
        {{3, 7}, "webCont", {}, {}, "qrc:/assets/pages/leagals.html"},
    };
    clock.turn(1);
    app->isLogin = true; // the account row is the login form all the same
    for (const auto &test : cases) {
        SCOPED_TRACE(qPrintable(test.layoutName));
        app->revealSideViewController()->open(false);
        menu().tableCont.selectRow(test.row.section, test.row.row);
        EXPECT_EQ(lastAsked(), test.layoutName);
        const bool isModal = test.row.section == 3; // over the menu, which stays open
        const ViewController *const presented = app->window()->presentedViewController();
        EXPECT_EQ(presented != nullptr, isModal);
        EXPECT_EQ(app->revealSideViewController()->isOpen(), isModal);
        EXPECT_EQ(app->revealSideViewController()->isAnimated(), !isModal);
        const ViewController &screen = presented ? *presented : center();
        EXPECT_EQ(screen.property("strTitle"), test.strTitle);
        EXPECT_EQ(screen.property("strType"), test.strType);
        EXPECT_EQ(screen.property("url"), test.url);
        menu().dismissViewController(false);
    }
}

TEST_F(MenuControllerTest, ASearchOpensTheHomeScreenAndEmptiesTheBar)
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

#include "MenuControllerTest.moc"
