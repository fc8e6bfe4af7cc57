#include "screens/radio/FrequenceController.h"
#include "api/json/JsonText.h"
#include "app/AppFixture.h"
#include "screens/radio/cellCustomFrequence.h"

using namespace orvel;
using namespace orvel::test;

namespace {

struct FrequenceControllerTest : AppFixture
{
    std::shared_ptr<FrequenceController> screen = std::make_shared<FrequenceController>();

    FrequenceControllerTest()
    {
        screen->strTitle = "Frequences";
        app->revealSideViewController()->popViewControllerWithNewCenterController(screen, false);
        letEventsRun();
    }
    void receive(const char *answer)
    {
        screen->PostSuccess(JSONValue(QString::fromUtf8(answer)));
        letEventsRun();
    }
    int rows()
    {
        screen->tableCont.setFrame({0, 0, 375, 600});
        return int(screen->tableCont.contentHeight() / 60);
    }
    QStringList texts(int row)
    {
        const auto cell = std::static_pointer_cast<cellCustomFrequence>(
            screen->cellForRowAtIndexPath(screen->tableCont, {0, row}));
        return {cell->lblTitle.text(), cell->lblDesc.text(), cell->lblFrequency.text()};
    }
};

} // namespace

TEST_F(FrequenceControllerTest, ShowsWhatTheServerSendsInItsOrder)
{
    EXPECT_TRUE(ProgressHud::shared().isVisible());
    EXPECT_EQ(screen->rowSelected, -1);
    receive(R"({"content":[
        {"ville":"Sète","region_nom":"Occitanie","frequence":"105.6 FM"},
        {"ville":"Agen","region_nom":null,"frequence":101.7},
        {"ville":"Sète","region_nom":"Occitanie","frequence":"105.6 FM"}, {}, 7]})");
    EXPECT_FALSE(ProgressHud::shared().isVisible());
    ASSERT_EQ(rows(), 5);
    const QStringList sete{QString::fromUtf8("Sète"), "Occitanie", "105.6 FM"};
    EXPECT_EQ(texts(0), sete);
    EXPECT_EQ(texts(1), (QStringList{"Agen", "<null>", "101.7"}));
    EXPECT_EQ(texts(2), sete);
    for (const int row : {3, 4})
        EXPECT_EQ(texts(row), (QStringList{"(null)", "(null)", "(null)"}));
    EXPECT_EQ(screen->lblTitle.text(), ""); // the title is not copied
    receive(R"({"content":[{}]})");
    EXPECT_EQ(rows(), 6); // appended
    receive(qPrintable(QStringLiteral("{\"content\":[") + QStringLiteral("{},").repeated(20'000) + "0]}"));
    EXPECT_EQ(rows(), 10'006);
}

TEST_F(FrequenceControllerTest, WithoutAListItStaysEmptyAndUsable)
{
    for (const char *answer :
         {R"({"content":[]})", "{}", R"({"content":{"ville":"x"}})", R"({"content":"x"})"})
        receive(answer);
    EXPECT_EQ(rows(), 0);
    screen->PostFail("Pas de réseau");
    letEventsRun();
    EXPECT_EQ(alertTold(), QString::fromUtf8("Alert: Pas de réseau"));
    EXPECT_FALSE(ProgressHud::shared().isVisible());
    screen->MenuController();
    EXPECT_TRUE(app->revealSideViewController()->isOpen());
}
