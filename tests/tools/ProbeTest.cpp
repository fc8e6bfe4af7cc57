#include "support/ScriptedServer.h"
#include "tools/Tool.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

TEST(ProbeTest, TellsFormatAndStation)
{
    const struct
    {
        QString url;
        QString contentType;
        QString extension;
        QString answer;
    } cases[] = {{stationStream("la-radio.mp3"), "audio/mpeg", "mp3", "HTTP 200"},
                 {stationStream("nuit.aac"), "audio/aacp", "aac", "HTTP 200"},
                 {stationStream("ete.mp3"), "audio/mpeg", "mp3", "ICY 200"}};
    for (const auto &it : cases) {
        SCOPED_TRACE(it.url.toStdString());
        Tool tool({"probe", "--json", it.url});
        EXPECT_EQ(tool.status(), 0);
        ASSERT_EQ(tool.objects().size(), 1U);
        const JsonValue result = tool.objects()[0];
        EXPECT_EQ(result["contentType"].string(), it.contentType);
        EXPECT_EQ(result["extension"].string(), it.extension);
        EXPECT_EQ(result["answer"].string(), it.answer);
        EXPECT_FALSE(result["name"].string().isEmpty());
    }
}

TEST(ProbeTest, FollowsAPlaylistAndTellsTheFirstTitle)
{
    const QByteArray title = QByteArray("StreamTitle='Les Fluos - Minuit';").leftJustified(48, '\0');
    const ScriptedServer server({{Send{httpHead() + "{server}/live"}},
                                 {Send{httpHead("Content-Type: audio/mpeg\r\nicy-metaint: 100\r\n")},
                                  Send{QByteArray(100, 'x') + char(3) + title}, WaitForRelease{}}});
    Tool tool({"probe", server.url("/list.m3u")});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_TRUE(tool.out().contains(server.url("/live").toUtf8() + '\n')) << tool.out().toStdString();
    EXPECT_TRUE(tool.out().contains("title:         Les Fluos - Minuit\n")) << tool.out().toStdString();
}

TEST(ProbeTest, TellsAtTheDeadlineWhatItKnows)
{
    const ScriptedServer server(
        Script{Send{httpHead("Content-Type: audio/aac\r\nicy-metaint: 8000\r\n")}, WaitForRelease{}});
    Tool tool({"probe", server.url(), "--deadline", "3"});
    EXPECT_EQ(tool.status(), 9);
    EXPECT_TRUE(tool.out().contains("audio/aac"));
}
