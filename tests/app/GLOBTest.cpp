#include "app/GLOB.h"

#include "platform/modal/InputGate.h"
#include "platform/ui/containers/ProgressHud.h"
#include "support/TestLoop.h"

#include <QLocale>
#include <gtest/gtest.h>
#include <thread>

using namespace orvel;

TEST(GLOBTest, ChecksAddressesAsAWhole)
{
    for (const char *address : {"a@b.fr", "first.last+x%y-z_1@sub-domain.example.info"})
        EXPECT_TRUE(GLOB::glob_validateEmailWithString(address)) << address;
    for (const char *address : {"", "a@b.f", "a@b.infos", "a b@c.fr", "a@b.fr\n", "@b.fr", "a@b", "é@b.fr"})
        EXPECT_FALSE(GLOB::glob_validateEmailWithString(address)) << address;
}

TEST(GLOBTest, ListsTodayAndThirtyDaysInFrench)
{
    const test::TakenClock clock; // 13 May 2014
    QLocale::setDefault(QLocale(QLocale::Arabic));
    const QStringList days = GLOB::glob_getNext30Days();
    QLocale::setDefault(QLocale::c());
    ASSERT_EQ(days.size(), 31);
    EXPECT_EQ(days.first(4), (QStringList{"Aujourd'hui", "mer. 14", "jeu. 15", "ven. 16"}));
    EXPECT_EQ(days.sliced(18, 2), (QStringList{"sam. 31", "dim. 01"}));
    EXPECT_EQ(days[30], "jeu. 12");
}

TEST(GLOBTest, TurnsNothingIntoAnEmptyText)
{
    EXPECT_EQ(GLOB::glob_isNULL(JsonValue::null()).text(), "");
    EXPECT_EQ(GLOB::glob_isNULL({}).text(), "");
    EXPECT_EQ(GLOB::glob_isNULL("x").text(), "x");
    EXPECT_EQ(GLOB::glob_GetCout(JsonValue::array({1, 2})), "2");
}

// What is touched on the way to the overlay is not chosen either.
TEST(GLOBTest, TheOverlaySwallowsInputFromTheCallToItsEndAndObeysAllThreadsInTheirOrder)
{
    const auto holdsInput = [] { return InputGate::shared().isHeld(); };
    std::vector<bool> shown;
    QObject watcher;
    QObject::connect(&ProgressHud::shared(), &ProgressHud::changed, &watcher,
                     [&] { shown.push_back(ProgressHud::shared().isVisible()); });
    GLOB::glob_ShowHud();
    EXPECT_TRUE(holdsInput() && shown.empty());
    test::letEventsRun();
    EXPECT_TRUE(holdsInput());
    GLOB::glob_HideHud();
    test::letEventsRun();
    EXPECT_FALSE(holdsInput());
    std::thread([] {
        GLOB::glob_HideHud();
        GLOB::glob_ShowHud();
        GLOB::glob_ShowHud();
        GLOB::glob_HideHud();
        GLOB::glob_ShowHud();
    }).join();
    EXPECT_FALSE(holdsInput());
    test::letEventsRun();
    EXPECT_EQ(shown, (std::vector<bool>{true, false, true, true, false, true}));
    EXPECT_TRUE(holdsInput());
    GLOB::glob_HideHud();
    test::letEventsRun();
    EXPECT_FALSE(holdsInput());
}
