#include "screens/radio/FrequenceController.h"
#include "api/json/JsonText.h"
#include "app/AppFixture.h"
#include "app/GLOB.h"
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
        open(screen);
        letEventsRun();
    }
    void receive(const char *answer)
    {
        screen->PostSuccess(JSONValue(QString::fromUtf8(answer)));
        letEventsRun();
    }
    QString texts(int row)
    {
        const auto city = cell<cellCustomFrequence>(screen->tableCont, row);
        return city->lblTitle.text() + '|' + city->lblDesc.text() + '|' + city->lblFrequency.text();
    }
};

} // namespace

TEST_F(FrequenceControllerTest, ShowsWhatTheServerSends)
{
    EXPECT_TRUE(ProgressHud::shared().isVisible());
    EXPECT_EQ(screen->rowSelected, -1);
    for (const char *answer : {R"({"content":[]})", "{}", R"({"content":{"ville":"x"}})"})
        receive(answer);
    EXPECT_EQ(screen->tableCont.contentHeight(), 0);
    receive(R"({"content":[
        {"ville":"Sète","region_nom":"Occitanie","frequence":"105.6 FM"},
        {"ville":"Agen","region_nom":null,"frequence":101.7}]})");
    receive(R"({"content":[{"ville":"Sète","region_nom":"Occitanie","frequence":"105.6 FM"}, {}, 7]})");
    EXPECT_FALSE(ProgressHud::shared().isVisible());
    EXPECT_EQ(screen->tableCont.contentHeight(), 5 * 60); // appended
    for (const int row : {0, 2})
        EXPECT_EQ(texts(row), QString::fromUtf8("Sète|Occitanie|105.6 FM"));
    EXPECT_EQ(texts(1), "Agen|<null>|101.7");
    for (const int row : {3, 4})
        EXPECT_EQ(texts(row), "(null)|(null)|(null)");
    EXPECT_EQ(screen->lblTitle.text(), ""); // the title is not copied
    GLOB::glob_ShowHud();
    screen->PostFail("Pas de réseau");
    letEventsRun();
    EXPECT_EQ(alertTold(), QString::fromUtf8("Alert: Pas de réseau"));
    EXPECT_FALSE(ProgressHud::shared().isVisible());
    screen->MenuController();
    EXPECT_TRUE(app->revealSideViewController()->isOpen());
}
