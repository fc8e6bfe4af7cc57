#include "support/ScriptedServer.h"
#include "tools/Tool.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

TEST(ProbeTest, FollowsAPlaylistAndTellsFormatStationAndFirstTitle)
{
    const QByteArray title = QByteArray("StreamTitle='Les Fluos - Minuit';").leftJustified(48, '\0');
    const ScriptedServer server(
        {{Send{httpHead() + "{server}/live"}},
         {Send{httpHead("Content-Type: audio/mpeg\r\nicy-name: Nuit\r\nICY-METAINT: 100\r\n")},
          Send{QByteArray(100, 'x') + char(3) + title}, WaitForRelease{}}});
    Tool tool({"probe", "--json", server.url("/list.m3u")});
    EXPECT_EQ(tool.status(), 0);
    ASSERT_EQ(tool.objects().size(), 1U);
    const std::pair<const char *, QString> fields[] = {{"url", server.url("/live")},
                                                       {"contentType", "audio/mpeg"},
                                                       {"extension", "mp3"},
                                                       {"title", "Les Fluos - Minuit"},
                                                       {"name", "Nuit"},
                                                       {"answer", "HTTP 200"}};
    for (const auto &[key, value] : fields)
        EXPECT_EQ(tool.objects()[0][key].string(), value);
}

TEST(ProbeTest, TellsAtTheDeadlineWhatItKnows)
{
    const ScriptedServer server(
        Script{Send{httpHead("Content-Type: audio/aac\r\nicy-metaint: 8000\r\n")}, WaitForRelease{}});
    Tool tool({"probe", server.url(), "--deadline", "3"});
    EXPECT_EQ(tool.status(), 9);
    EXPECT_TRUE(tool.out().contains("audio/aac"));
}
