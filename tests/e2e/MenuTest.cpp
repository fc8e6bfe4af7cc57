#include "e2e/Listener.h"

#include "api/StationConfiguration.h"
#include "app/AppDelegate.h"
#include "platform/system/RecordingServices.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const char *const notThere = "Cette rubrique n'est pas encore disponible.";
const QString contact = "Contacter la station";

struct MenuEndToEndTest : testing::Test
{
    Listener listener;
    std::shared_ptr<RecordingServices> system = std::make_shared<RecordingServices>();

    MenuEndToEndTest() { SystemServices::use(system); }
    ~MenuEndToEndTest() override { SystemServices::use(nullptr); }
};

} // namespace

TEST_F(MenuEndToEndTest, RowsOpenTheirScreensAndPagesOrSayThatTheyAreNotThere)
{
    ASSERT_TRUE(listener.choosesInMenu("Agenda"));
    ASSERT_TRUE(listener.acknowledges(notThere));
    ASSERT_TRUE(listener.choosesInMenu("Orvel Radio sur Instagram", true));
    EXPECT_EQ(system->opened, QStringList{StationConfiguration::current().instagramPage});
    ASSERT_TRUE(listener.touches(QString::fromUtf8("Fréquences")));
    ASSERT_TRUE(listener.waitsToSee("Aix-en-Provence"));
    EXPECT_TRUE(listener.waitsToSee("101.7 FM"));
    ASSERT_TRUE(listener.touches("Menu"));
    ASSERT_TRUE(listener.touches("Rechercher"));
    listener.types("jazz");
    ASSERT_TRUE(listener.waitsToSee("jazz"));
    listener.presses(Qt::Key_Return);
    ASSERT_TRUE(listener.waitsToSee(notThere));
    EXPECT_FALSE(listener.sees("jazz"));
}

TEST_F(MenuEndToEndTest, AMessageToTheStationIsWrittenAndSent)
{
    // The web radios' screen counts its buttons one later.
    ASSERT_TRUE(listener.touches(contact));
    ASSERT_TRUE(listener.touches("Telephone"));
    ASSERT_TRUE(listener.waitsToSee("TRV votre texte"));
    ASSERT_TRUE(listener.touches("Envoyer"));
    ASSERT_TRUE(listener.waitsNotToSee("Envoyer"));
    EXPECT_EQ(system->messages.size(), 1);
}
