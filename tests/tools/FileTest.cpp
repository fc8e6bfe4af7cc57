#include "demo/DemoStation.h"
#include "tools/Tool.h"

#include <csignal>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

QString sound(const QString &name) { return station().siteUrl() + "/sons/" + name; }

} // namespace

TEST(FileTest, TellsStatesSeekAndProgress)
{
    Tool tool({"file", "--json", "--seek", "26", sound("la-radio.m4a")});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_EQ(tool.errors(), QByteArray());
    QStringList order;
    for (const JsonValue &object : tool.objects())
        order << (object["event"].string() == u"state" ? object["state"] : object["event"]).string();
    EXPECT_EQ(order.first(), "starting");
    EXPECT_LT(order.indexOf("playing"), order.indexOf("seek"));
    EXPECT_EQ(order.mid(order.size() - 2), QStringList({"idle", "end"}));
    JsonValue progress;
    for (const JsonValue &object : tool.objects())
        progress = object["event"].string() == u"progress" ? object : progress;
    EXPECT_NEAR(progress["duration"].text().toDouble(), 30, 1);
    EXPECT_GE(progress["progress"].text().toDouble(), 26);
    EXPECT_LT(tool.event("end")["time"].text().toDouble(), 20);
}

TEST(FileTest, EndsAfterItsTimeOrBySignal)
{
    Tool timed({"file", "--json", "--seconds", "1.2", sound("la-radio.wav")});
    EXPECT_EQ(timed.status(), timed.says("playing") ? 0 : 9);
    EXPECT_GE(timed.event("end")["time"].text().toDouble(), 1.2);
    Tool tool({"file", sound("la-radio.mp3")});
    ASSERT_TRUE(tool.says("playing"));
    tool.signal(SIGINT);
    EXPECT_EQ(tool.status(), 130);
}

TEST(FileTest, ExplainsAnError)
{
    Tool tool({"file", "--json", sound("nulle.mp3")});
    EXPECT_EQ(tool.status(), 6);
    EXPECT_EQ(tool.event("error")["error"].integerValue(), 7);
    EXPECT_TRUE(tool.errors().contains("orvel-stream: No audio data found.\n"));
    EXPECT_EQ(Tool({"file", "--seek", "-1", sound("la-radio.mp3")}).status(), 2);
}
