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
     "flux_aac":"http://127.0.0.1:1/rock"}]})";

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
    void expectButtons(bool playing) { expectButtons(screen, playing); }
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
    EXPECT_EQ(screen.numberOfRowsInSection(screen.tableCont, 0), 2);
    EXPECT_EQ(cell(0)->lblTitle.text(), QString::fromUtf8("Orvel Été"));
    EXPECT_EQ(cell(0)->lblDesc.text(), "");
    EXPECT_EQ(cell(0)->btnFav.backgroundImage(), "list_fav_icon_full.png");
    EXPECT_EQ(cell(1)->btnFav.backgroundImage(), "list_fav_icon.png");
    EXPECT_EQ(cell(1)->btnFav.tag(), 1);
    EXPECT_TRUE(cell(1)->img.loading());
    EXPECT_FALSE(app->radio()); // nothing plays by itself
    receive(twoRadios);
    EXPECT_EQ(screen.numberOfRowsInSection(screen.tableCont, 0), 4);
}

TEST_F(RadioViewControllerTest, AnswersOfTheWrongShapeGiveNoRows)
{
    for (const char *answer : {"{}", "[]", R"({"content":null})", R"({"content":"x","media_url":[]})",
                               R"({"content":{"message":"x"}})", R"({"content":[7,null,[]]})"})
        receive(answer);
    EXPECT_EQ(screen.numberOfRowsInSection(screen.tableCont, 0), 0);
    receive(R"({"content":[{}]})");
    screen.didSelectRowAtIndexPath(screen.tableCont, {0, 0});
    EXPECT_FALSE(app->radio());
}

TEST_F(RadioViewControllerTest, ATapPlaysTheRowsRadio)
{
    receive(twoRadios);
    expectButtons(false);
    screen.tableCont.selectRow(0, 1);
    ASSERT_TRUE(app->radio());
    EXPECT_EQ(header(screen), QStringList({"Orvel Rock", "Des guitares", "", ""}));
    EXPECT_EQ(QStringList({app->gl1, app->gl2}), QStringList({"Orvel Rock", "Des guitares"}));
    EXPECT_EQ(app->url, "http://127.0.0.1:1/rock");
    EXPECT_EQ(app->gurl1, "http://127.0.0.1:1/media/rock-logo.png");
    EXPECT_EQ(app->gurl2, "http://127.0.0.1:1/media/rock.jpg");
    EXPECT_EQ(app->intPlay, 1);
    expectButtons(true);
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
    expectButtons(false);
    screen.tableCont.selectRow(0, 0);
    const auto player = app->radio();
    screen.viewHideShow.bplay.touchUpInside();
    EXPECT_TRUE(player->isPaused());
    expectButtons(false);
    EXPECT_EQ(app->intPlay, -1);
    screen.viewHeader.hbtnPlay.touchUpInside();
    EXPECT_TRUE(player->isPlaying());
    EXPECT_EQ(app->radio(), player);
    expectButtons(true);
    EXPECT_EQ(app->intPlay, -1);
}

TEST_F(RadioViewControllerTest, ShowsTheLiveTitleAsTheListAllows)
{
    postTitle("Trop tôt&&&Zoé");
    EXPECT_EQ(screen.viewHeader.hl3.text(), "");
    app->gl3 = "old";
    postTitle("x&&&y");
    EXPECT_EQ(app->gl3, ""); // overwritten from the labels all the same
    receive(twoRadios);
    postTitle(" L'été&&&Zoé \n");
    EXPECT_EQ(screen.viewHeader.hl3.text(), QString::fromUtf8("L'été"));
    EXPECT_EQ(screen.viewHideShow.bl1.text(), QString::fromUtf8("L'été"));
    EXPECT_EQ(screen.viewHeader.hl4.text(), QString::fromUtf8("Zoé"));
    EXPECT_EQ(app->gl4, QString::fromUtf8("Zoé"));
    postTitle("sans artiste");
    EXPECT_EQ(screen.viewHeader.hl3.text(), "sans artiste");
    EXPECT_EQ(screen.viewHeader.hl4.text(), QString::fromUtf8("Zoé"));
    EXPECT_EQ(app->gl3, QString::fromUtf8("L'été"));
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
    EXPECT_EQ(fresh.viewHideShow.bl1.text(), "Titre");
    EXPECT_FALSE(fresh.viewNowPlaying.hidden());
    expectButtons(fresh, true);
    postTitle("Suite&&&Autre");
    EXPECT_EQ(fresh.viewHeader.hl3.text(), "Suite");
}

TEST_F(RadioViewControllerTest, APausedRadioCanBeResumedFromAFreshScreen)
{
    receive(twoRadios);
    screen.tableCont.selectRow(0, 1);
    screen.viewHeader.hbtnPlay.touchUpInside();
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
    screen.viewHeader.setFrame({0, 0, 375, 352});
    EXPECT_TRUE(screen.viewHideShow.hidden());
    const std::pair<double, bool> offsets[] = {
        {352, true}, {353, false}, {900, false}, {352, true}, {-20, true}};
    for (const auto &[offset, hidden] : offsets) {
        screen.tableCont.setContentOffset(offset);
        EXPECT_EQ(screen.viewHideShow.hidden(), hidden) << offset;
    }
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

    screen.viewHeader.himgsinger.setImage(QImage(2, 1, QImage::Format_RGB32));
    screen.acctionTwitter();
    EXPECT_EQ(presented(), "");
    clock.turn(0.1);
    sheet = &presentedAs<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "Orvel Rock");
    EXPECT_EQ(sheet->imageView.image().size(), QSize(2, 1));
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
}
