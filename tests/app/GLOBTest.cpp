#include "app/GLOB.h"

#include "platform/modal/InputGate.h"
#include "platform/ui/containers/ProgressHud.h"
#include "support/TestLoop.h"

#include <QDate>
#include <QLocale>
#include <gtest/gtest.h>

using namespace orvel;

TEST(GLOBTest, ChecksAddressesAsAWhole)
{
    for (const char *address : {"a@b.fr", "first.last+x%y-z_1@sub-domain.example.info"})
        EXPECT_TRUE(GLOB::glob_validateEmailWithString(address)) << address;
    for (const char *address : {"", "a@b.f", "a@b.museum", "a b@c.fr", "a@b.fr\n", "@b.fr", "a@b", "é@b.fr"})
        EXPECT_FALSE(GLOB::glob_validateEmailWithString(address)) << address;
}

TEST(GLOBTest, ListsTodayAndThirtyDays)
{
    const test::TakenClock clock; // 13 May 2014
    const QStringList days = GLOB::glob_getNext30Days();
    ASSERT_EQ(days.size(), 31);
    EXPECT_EQ(days[0], "Aujourd'hui");
    EXPECT_EQ(days[30], QLocale::system().toString(QDate(2014, 6, 12), "ddd'.' dd"));
}

TEST(GLOBTest, TurnsNothingIntoAnEmptyText)
{
    EXPECT_EQ(GLOB::glob_isNULL(JsonValue::null()).text(), "");
    EXPECT_EQ(GLOB::glob_isNULL({}).text(), "");
    EXPECT_EQ(GLOB::glob_isNULL("x").text(), "x");
    EXPECT_EQ(GLOB::glob_GetCout(JsonValue::array({1, 2})), "2");
}

// What is touched on the way to the overlay is not chosen either.
TEST(GLOBTest, SwallowsInputFromTheCallToTheOverlaysEnd)
{
    GLOB::glob_ShowHud();
    EXPECT_TRUE(InputGate::shared().isHeld());
    test::letEventsRun();
    EXPECT_TRUE(ProgressHud::shared().isVisible() && InputGate::shared().isHeld());
    GLOB::glob_HideHud();
    test::letEventsRun();
    EXPECT_FALSE(ProgressHud::shared().isVisible() || InputGate::shared().isHeld());
}
