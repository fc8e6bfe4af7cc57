#include "demo/DemoStation.h"
#include "support/ScriptedServer.h"
#include "tools/Tool.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

TEST(ProbeTest, TellsTitleFormatAndStation)
{
    struct Case
    {
        QString name;
        const char *contentType;
        const char *extension;
        const char *answer;
    };
    for (const Case &it : {Case{"la-radio.mp3", "audio/mpeg", "mp3", "HTTP 200"},
                           Case{"nuit.aac", "audio/aacp", "aac", "HTTP 200"},
                           Case{"ete.mp3", "audio/mpeg", "mp3", "ICY 200"}}) {
        SCOPED_TRACE(it.name.toStdString());
        Tool tool({"probe", "--json", stationStream(it.name)});
        EXPECT_EQ(tool.status(), 0);
        ASSERT_EQ(tool.objects().size(), 1U);
        const JsonValue result = tool.objects()[0];
        EXPECT_EQ(result["contentType"].string(), it.contentType);
        EXPECT_EQ(result["extension"].string(), it.extension);
        EXPECT_EQ(result["answer"].string(), it.answer);
        EXPECT_FALSE(result["name"].string().isEmpty());
    }
}

TEST(ProbeTest, TellsTheFirstTitle)
{
    const QByteArray title = QByteArray("StreamTitle='Les Fluos - Minuit';").leftJustified(48, '\0');
    const ScriptedServer server(Script{Send{httpHead("Content-Type: audio/mpeg\r\nicy-metaint: 100\r\n")},
                                       Send{QByteArray(100, 'x') + char(3) + title}, WaitForRelease{}});
    Tool tool({"probe", server.url()});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_TRUE(tool.out().contains("title:         Les Fluos - Minuit\n")) << tool.out().toStdString();
}

TEST(ProbeTest, FollowsAPlaylist)
{
    Tool tool({"probe", station().listenUrl("103")});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_TRUE(tool.out().contains(station().streamUrl("103").toUtf8() + '\n'));
}

TEST(ProbeTest, TellsAtTheDeadlineWhatItKnows)
{
    const ScriptedServer server(
        Script{Send{httpHead("Content-Type: audio/aac\r\nicy-metaint: 8000\r\n")}, WaitForRelease{}});
    Tool tool({"probe", server.url(), "--deadline", "1"});
    EXPECT_EQ(tool.status(), 9);
    EXPECT_TRUE(tool.out().contains("audio/aac"));
}
