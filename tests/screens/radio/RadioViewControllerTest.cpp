#include "api/json/JsonText.h"
#include "app/AppFixture.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/ui/composers/ComposeViewController.h"
#include "screens/radio/cellCustomRadio.h"

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr const char *twoRadios = R"({"media_url":"http://127.0.0.1:1/media","content":[
    {"id":"12","title":"Orvel Été","subtitle":null,"file":"ete.jpg","thumb_smartphone":"ete-logo.png",
     "flux_aac":"http://127.0.0.1:1/ete"},
    {"id":7,"title":"Orvel Rock","subtitle":"Des guitares","file":"rock.jpg","thumb_smartphone":"rock-logo.png",
     "flux_aac":"http://127.0.0.1:1/rock","songtitle":"x"}]})";

struct RadioViewControllerTest : AppFixture
{
    RadioViewController &screen = radios();
    void receive(const char *answer) { screen.PostSuccess(JSONValue(QString::fromUtf8(answer))); }
    void postTitle(const QString &object)
    {
        NotificationCentre::defaultCentre().postNotification(AppDelegate::songTitleNotification, object);
    }
    static QStringList header(const RadioViewController &of)
    {
        const NowPlayingHeader &header = of.viewHeader;
        return {header.hl1.text(), header.hl2.text(), header.hl3.text(), header.hl4.text()};
    }
    // Tag and images of both play buttons.
    static QString buttons(const RadioViewController &of)
    {
        QString result;
        for (const Button *button : {&of.viewHeader.hbtnPlay, &of.viewHideShow.bplay})
            result += QString::number(button->tag()) + button->normalImage() + button->highlightedImage();
        return result;
    }
};

const QString playing = "1pstop.pngpstop.png1mstop.pngmstop.png";
const QString paused = "0pplayer.pngpplayer.png0mplay.pngmplay.png";

} // namespace

TEST_F(RadioViewControllerTest, ShowsARowForEachRadio)
{
    screen.setDataRadioFirstObject(); // there is none yet
    defaults.setObject(QByteArray(R"([{"id":"12;"}])"), "arrayFav");
    receive(twoRadios);
    screen.tableCont.setFrame({0, 0, 375, 600});
    EXPECT_EQ(screen.tableCont.contentHeight(), 352 + 2 * 60);
    const auto first = cell<cellCustomRadio>(screen.tableCont, 0);
    const auto second = cell<cellCustomRadio>(screen.tableCont, 1);
    EXPECT_EQ(first->lblTitle.text(), QString::fromUtf8("Orvel Été"));
    EXPECT_EQ(first->btnFav.backgroundImage(), "list_fav_icon_full.png");
    EXPECT_EQ(second->btnFav.backgroundImage(), "list_fav_icon.png");
    EXPECT_EQ(second->lblDesc.text(), ""); // nothing but a probe's own title
    EXPECT_TRUE(screen.viewNowPlaying.hidden());
    EXPECT_FALSE(app->radio()); // nothing plays by itself
    EXPECT_EQ(screen.lblTitle.text(), "");
    receive(R"({"content":[7,null,{},[]]})");
    EXPECT_EQ(screen.tableCont.contentHeight(), 352 + 3 * 60);
    screen.tableCont.selectRow(0, 2); // without an address
    EXPECT_FALSE(app->radio());
    clock.turn(1);
    menu().tableCont.selectRow(0, 0);
    EXPECT_EQ(radios().lblTitle.text(), "Radios");
    radios().acctionMenu();
    EXPECT_TRUE(app->revealSideViewController()->isOpen());
}

TEST_F(RadioViewControllerTest, ATapPlaysTheRowsRadio)
{
    receive(twoRadios);
    EXPECT_EQ(buttons(screen), paused);
    screen.viewHeader.himg.setFrame({0, 0, 10, 10});
    screen.viewHeader.himgsinger.setFrame({0, 0, 20, 20});
    screen.tableCont.selectRow(0, 1);
    ASSERT_TRUE(app->radio());
    EXPECT_EQ(header(screen), QStringList({"Orvel Rock", "Des guitares", "", ""}));
    EXPECT_EQ(QStringList({app->gl1, app->gl2}), QStringList({"Orvel Rock", "Des guitares"}));
    EXPECT_EQ(app->url, "http://127.0.0.1:1/rock");
    EXPECT_EQ(app->gurl1, "http://127.0.0.1:1/media/rock-logo.png");
    EXPECT_EQ(app->gurl2, "http://127.0.0.1:1/media/rock.jpg");
    EXPECT_EQ(screen.viewHideShow.bimg.indicatorCenter(), QPointF(5, 5)); // the header's
    EXPECT_EQ(screen.viewHideShow.bimgsinger.indicatorCenter(), QPointF(10, 10));
    EXPECT_EQ(app->intPlay, 1);
    EXPECT_FALSE(screen.viewNowPlaying.hidden());
    EXPECT_EQ(buttons(screen), playing);
    screen.setDataRadioFirstObject();
    EXPECT_EQ(app->url, "http://127.0.0.1:1/ete");
    EXPECT_EQ(screen.viewHeader.hl2.text(), "");
    screen.tableCont.selectRow(0, 2); // out of range
    EXPECT_EQ(app->url, "http://127.0.0.1:1/ete");
}

TEST_F(RadioViewControllerTest, BothButtonsPauseAndResumeTheOnePlayer)
{
    receive(twoRadios);
    screen.viewHideShow.bplay.touchUpInside(); // no player yet
    EXPECT_EQ(buttons(screen), paused);
    screen.tableCont.selectRow(0, 0);
    const auto player = app->radio();
    screen.viewHideShow.bplay.touchUpInside();
    EXPECT_TRUE(player->isPaused());
    EXPECT_EQ(buttons(screen), paused);
    EXPECT_EQ(app->intPlay, -1);
    screen.viewHeader.hbtnPlay.touchUpInside();
    EXPECT_TRUE(player->isPlaying());
    EXPECT_EQ(app->radio(), player);
    EXPECT_EQ(buttons(screen), playing);
    EXPECT_EQ(app->intPlay, -1);
}

TEST_F(RadioViewControllerTest, ShowsTheLiveTitleAsTheListAllowsUntilTheFirstScreenAbove)
{
    app->gl3 = "old";
    postTitle("x&&&y");
    EXPECT_EQ(screen.viewHeader.hl3.text(), "");
    EXPECT_EQ(app->gl3, ""); // overwritten from the labels all the same
    receive(R"({"content":[{}]})");
    postTitle(" Seul&&&Zoé \n");
    EXPECT_EQ(header(screen), QStringList({"", "", "Seul", ""}));
    EXPECT_EQ(QStringList({app->gl3, app->gl4}), QStringList({"Seul", ""}));
    receive(twoRadios);
    postTitle("Seul&&&Zoé \n");
    const QStringList shown{"", "", "Seul", QString::fromUtf8("Zoé")};
    EXPECT_EQ(header(screen), shown);
    EXPECT_EQ(app->gl4, shown[3]);
    postTitle("sans artiste");
    EXPECT_EQ(app->gl3, "Seul");

    screen.presentViewController(std::make_shared<MonoCompteController>(), false);
    screen.dismissViewController(false);
    EXPECT_TRUE(screen.isVisible());
    postTitle("Titre&&&Artiste");
    EXPECT_EQ(header(screen), QStringList({"", "", "sans artiste", shown[3]}));
    EXPECT_EQ(app->gl3, "Seul");
}

TEST_F(RadioViewControllerTest, AFreshScreenShowsWhatPlaysOrIsPaused)
{
    receive(twoRadios);
    screen.tableCont.selectRow(0, 1);
    postTitle("Titre&&&Artiste");
    const auto player = app->radio();
    for (const QString state : {"plays", "paused", "paused without a list"}) {
        SCOPED_TRACE(qPrintable(state));
        menu().tableCont.selectRow(0, 0);
        RadioViewController &fresh = radios();
        EXPECT_TRUE(fresh.viewNowPlaying.hidden());
        if (state == "paused without a list")
            fresh.PostFail("");
        else
            fresh.PostSuccess(JSONValue(QString::fromUtf8(twoRadios)));
        EXPECT_FALSE(fresh.viewNowPlaying.hidden());
        EXPECT_EQ(header(fresh), QStringList({"Orvel Rock", "Des guitares", "Titre", "Artiste"}));
        EXPECT_EQ(fresh.viewHideShow.bl1.text() + fresh.viewHideShow.bl2.text(), "TitreArtiste");
        EXPECT_EQ(buttons(fresh), state == "plays" ? playing : paused);
        fresh.viewHideShow.bplay.touchUpInside();
        EXPECT_EQ(player->isPlaying(), state != "plays");
        player->pause();
    }
}

TEST_F(RadioViewControllerTest, TheCompactBarFollowsTheHeaderOverItsEdge)
{
    const auto scroll = [](RadioViewController &of, double offset) {
        of.viewHeader.setFrame({0, 0, 375, 352});
        of.tableCont.setContentOffset(offset);
        return !of.viewHideShow.hidden();
    };
    const std::pair<double, bool> offsets[] = {{352, false}, {353, true},  {900, true},
                                               {352, false}, {-20, false}, {900, true}};
    for (const auto &[offset, isShown] : offsets)
        EXPECT_EQ(scroll(screen, offset), isShown) << offset;
    menu().tableCont.selectRow(0, 0);
    EXPECT_FALSE(scroll(radios(), 400)); // the other list's offset was below the header already
    EXPECT_FALSE(scroll(radios(), 0));
    EXPECT_TRUE(scroll(radios(), 400));
    scroll(radios(), 0);
}

TEST_F(RadioViewControllerTest, SharesTheRadioThatPlaysAndWritesToTheStation)
{
    receive(twoRadios);
    screen.tableCont.selectRow(0, 1);
    screen.acctionFacebook();
    auto *sheet = &presentedAs<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "Orvel Rock");
    EXPECT_EQ(sheet->urlLabel.text(), "http://127.0.0.1:1/media/rock.jpg");
    sheet->cancelButton.touchUpInside();
    screen.viewHeader.himgsinger.setImage(QImage(2, 1, QImage::Format_RGB32));
    EXPECT_EQ(overlaysOf([&] {
                  screen.acctionTwitter();
                  letEventsRun();
                  EXPECT_EQ(presented(), "");
                  clock.turn(0.1);
              }),
              1);
    sheet = &presentedAs<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "Orvel Rock");
    EXPECT_EQ(sheet->imageView.image().size(), QSize(2, 1));
    sheet->cancelButton.touchUpInside();

    screen.acctionEmail(); // numbered one later
    app->window()->actionSheet()->click(0);
    EXPECT_EQ(presented(), "");
    screen.ShowMessage();
    app->window()->actionSheet()->click(0);
    EXPECT_EQ(presented(), "MessageComposeViewController");
}
