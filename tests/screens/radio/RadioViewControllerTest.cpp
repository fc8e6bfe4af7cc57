#include "api/json/JsonText.h"
#include "app/AppFixture.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/foundation/UserDefaults.h"
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
    std::shared_ptr<cellCustomRadio> cell(int row)
    {
        return std::static_pointer_cast<cellCustomRadio>(
            screen.cellForRowAtIndexPath(screen.tableCont, {0, row}));
    }
    void postTitle(const QString &object)
    {
        NotificationCentre::defaultCentre().postNotification(AppDelegate::songTitleNotification, object);
    }
    static QStringList header(const RadioViewController &of)
    {
        return {of.viewHeader.hl1.text(), of.viewHeader.hl2.text(), of.viewHeader.hl3.text(),
                of.viewHeader.hl4.text()};
    }
    static void expectButtons(const RadioViewController &of, bool playing)
    {
        for (const Button *button : {&of.viewHeader.hbtnPlay, &of.viewHideShow.bplay}) {
            const QString image = button == &of.viewHideShow.bplay ? (playing ? "mstop.png" : "mplay.png")
                                                                   : (playing ? "pstop.png" : "pplayer.png");
            EXPECT_EQ(button->tag(), int(playing));
            EXPECT_EQ(button->normalImage(), image);
            EXPECT_EQ(button->highlightedImage(), image);
        }
    }
};

} // namespace

TEST_F(RadioViewControllerTest, ShowsARowForEachRadio)
{
    UserDefaults::standardUserDefaults().setObject(QByteArray(R"([{"id":"12;"}])"), "arrayFav");
    receive(twoRadios);
    UserDefaults::standardUserDefaults().removeObjectForKey("arrayFav");
    screen.tableCont.setFrame({0, 0, 375, 600});
    EXPECT_EQ(screen.tableCont.contentHeight(), 352 + 2 * 60);
    EXPECT_EQ(cell(0)->lblTitle.text(), QString::fromUtf8("Orvel Été"));
    EXPECT_EQ(cell(0)->btnFav.backgroundImage(), "list_fav_icon_full.png");
    EXPECT_EQ(cell(1)->btnFav.backgroundImage(), "list_fav_icon.png");
    EXPECT_EQ(cell(1)->lblDesc.text(), ""); // nothing but a probe's own title
    EXPECT_FALSE(app->radio());             // nothing plays by itself
    EXPECT_EQ(screen.lblTitle.text(), "");
    receive(twoRadios);
    EXPECT_EQ(screen.tableCont.contentHeight(), 352 + 4 * 60);
    clock.turn(1);
    menu().tableCont.selectRow(0, 0);
    EXPECT_EQ(radios().lblTitle.text(), "Radios");
    radios().acctionMenu();
    EXPECT_TRUE(app->revealSideViewController()->isOpen());
}

TEST_F(RadioViewControllerTest, AnswersOfTheWrongShapeGiveNoRows)
{
    for (const char *answer : {"{}", "[]", R"({"content":null})", R"({"content":"x","media_url":[]})",
                               R"({"content":{"message":"x"}})", R"({"content":[7,null,[]]})"})
        receive(answer);
    EXPECT_EQ(screen.numberOfRowsInSection(screen.tableCont, 0), 0);
    screen.setDataRadioFirstObject();
    receive(R"({"content":[{}]})");
    screen.didSelectRowAtIndexPath(screen.tableCont, {0, 0});
    EXPECT_FALSE(app->radio());
}

TEST_F(RadioViewControllerTest, ATapPlaysTheRowsRadio)
{
    receive(twoRadios);
    expectButtons(screen, false);
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
    expectButtons(screen, true);
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
    expectButtons(screen, false);
    screen.tableCont.selectRow(0, 0);
    const auto player = app->radio();
    screen.viewHideShow.bplay.touchUpInside();
    EXPECT_TRUE(player->isPaused());
    expectButtons(screen, false);
    EXPECT_EQ(app->intPlay, -1);
    screen.viewHeader.hbtnPlay.touchUpInside();
    EXPECT_TRUE(player->isPlaying());
    EXPECT_EQ(app->radio(), player);
    expectButtons(screen, true);
    EXPECT_EQ(app->intPlay, -1);
}

TEST_F(RadioViewControllerTest, ShowsTheLiveTitleAsTheListAllows)
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
    EXPECT_EQ(header(screen), QStringList({"", "", "sans artiste", shown[3]}));
    EXPECT_EQ(app->gl3, "Seul");
}

TEST_F(RadioViewControllerTest, TitlesAreObservedUntilTheFirstScreenAbove)
{
    receive(twoRadios);
    screen.presentViewController(std::make_shared<MonoCompteController>(), false);
    screen.dismissViewController(false);
    EXPECT_TRUE(screen.isVisible());
    postTitle("Titre&&&Artiste");
    EXPECT_EQ(header(screen).join(QString()) + app->gl3, "");
}

TEST_F(RadioViewControllerTest, AListThatArrivesWhileARadioPlaysShowsIt)
{
    receive(twoRadios);
    screen.tableCont.selectRow(0, 1);
    postTitle("Titre&&&Artiste");
    menu().tableCont.selectRow(0, 0);
    RadioViewController &fresh = radios();
    ASSERT_NE(&fresh, &screen);
    fresh.PostSuccess(JSONValue(QString::fromUtf8(twoRadios)));
    EXPECT_EQ(header(fresh), QStringList({"Orvel Rock", "Des guitares", "Titre", "Artiste"}));
    EXPECT_FALSE(fresh.viewNowPlaying.hidden());
    expectButtons(fresh, true);
    postTitle("Suite&&&Autre");
    EXPECT_EQ(header(fresh), QStringList({"Orvel Rock", "Des guitares", "Suite", "Autre"}));
}

TEST_F(RadioViewControllerTest, APausedRadioCanBeResumedFromAFreshScreen)
{
    receive(twoRadios);
    screen.tableCont.selectRow(0, 1);
    const auto player = app->radio();
    for (const bool listArrives : {true, false}) {
        player->pause();
        menu().tableCont.selectRow(0, 0);
        RadioViewController &fresh = radios();
        EXPECT_TRUE(fresh.viewNowPlaying.hidden());
        if (listArrives)
            fresh.PostSuccess(JSONValue(QString::fromUtf8(twoRadios)));
        else
            fresh.PostFail("");
        EXPECT_FALSE(fresh.viewNowPlaying.hidden());
        EXPECT_EQ(fresh.viewHeader.hl1.text(), "Orvel Rock");
        expectButtons(fresh, false);
        fresh.viewHideShow.bplay.touchUpInside();
        EXPECT_TRUE(player->isPlaying());
        expectButtons(fresh, true);
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

TEST_F(RadioViewControllerTest, SharesTheRadioThatPlays)
{
    receive(twoRadios);
    screen.tableCont.selectRow(0, 1);
    screen.acctionFacebook();
    auto *sheet = &presentedAs<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "Orvel Rock");
    EXPECT_EQ(sheet->urlLabel.text(), "http://127.0.0.1:1/media/rock.jpg");
    sheet->cancelButton.touchUpInside();
    letEventsRun();
    const int before = overlays;
    screen.viewHeader.himgsinger.setImage(QImage(2, 1, QImage::Format_RGB32));
    screen.acctionTwitter();
    letEventsRun();
    EXPECT_EQ(overlays, before + 1);
    EXPECT_EQ(presented(), "");
    clock.turn(0.1);
    sheet = &presentedAs<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "Orvel Rock");
    EXPECT_EQ(sheet->imageView.image().size(), QSize(2, 1));
}

TEST_F(RadioViewControllerTest, ItsContactButtonIsNumberedOneLater)
{
    screen.acctionEmail();
    app->window()->actionSheet()->click(0);
    EXPECT_EQ(presented(), "");
    screen.ShowMessage();
    app->window()->actionSheet()->click(0);
    EXPECT_EQ(presented(), "MessageComposeViewController");
}

TEST_F(RadioViewControllerTest, AFailedRequestIsToldAndTheOverlayGoes)
{
    letEventsRun();
    EXPECT_TRUE(ProgressHud::shared().isVisible());
    clock.turn(0.2); // the placeholder station has no address here
    ASSERT_TRUE(waitUntil([&] { return alert() != nullptr; }));
    EXPECT_TRUE(alertTold().startsWith("Alert: "));
    letEventsRun();
    EXPECT_FALSE(ProgressHud::shared().isVisible());
    EXPECT_TRUE(screen.viewNowPlaying.hidden());
}
