#include "support/ScriptedServer.h"
#include "tools/Tool.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

struct Case
{
    const char *what;
    QStringList arguments;
    int status;
};

void check(const std::vector<Case> &cases)
{
    for (const Case &it : cases) {
        SCOPED_TRACE(it.what);
        Tool tool(it.arguments);
        EXPECT_EQ(tool.status(), it.status);
        // One sentence, and none of it among the results.
        EXPECT_EQ(tool.errors().count('\n'), it.status == 0 ? 0 : 1) << tool.errors().toStdString();
        EXPECT_EQ(tool.errors().startsWith("orvel-stream: "), it.status != 0);
    }
}

} // namespace

TEST(CommandLineTest, SaysWhatIsWrongWithIt)
{
    const QString url = QStringLiteral("http://127.0.0.1:1/");
    check({
        {"help", {"--help"}, 0},
        {"command", {"sing", url}, 2},
        {"option", {"play", url, "--loud"}, 2},
        {"another command's option", {"probe", url, "--volume", "1"}, 2},
        {"no URL", {"resolve"}, 2},
        {"no file", {"record", url}, 2},
        {"too much", {"play", url, url}, 2},
        {"scheme", {"play", "ftp://127.0.0.1/"}, 2},
        {"no host", {"resolve", "http:///live.mp3"}, 2},
        {"space", {"resolve", url + " b.mp3"}, 2},
        {"one dash", {"resolve", url, "-json"}, 0},
        {"volume", {"play", url, "--volume", "1.1"}, 2},
        {"buffer", {"play", url, "--buffer", "1.5"}, 2},
        {"seconds", {"play", url, "--seconds", "0"}, 2},
        {"deadline", {"probe", url, "--deadline", "soon"}, 2},
    });
}

TEST(CommandLineTest, ExitStatusTellsTheKindOfFailure)
{
    const ScriptedServer emptyPlaylist(Script{Send{httpHead()}, Send{"#EXTM3U\n"}});
    const ScriptedServer loop({Send{httpHead("Location: /again\r\n", "HTTP/1.1 302 Found")}});
    const ScriptedServer bare({Send{httpHead("Content-Length: 0\r\n", "HTTP/1.1 404 Not Found")}});
    const ScriptedServer silent(Script{WaitForRelease{}});
    const ScriptedServer empty(Script{Send{httpHead("Content-Type: audio/mpeg\r\n")}});
    const QString reset = stationStream("la-radio.mp3", "fault=reset&after=20000");
    const QString refused = stationStream("la-radio.mp3", "status=404");
    const QString file = QDir::temp().filePath(QStringLiteral("never-written.mp3"));
    check({
        {"play unreachable", {"play", "http://127.0.0.1:1/live.mp3"}, 3},
        {"probe unreachable", {"probe", "http://127.0.0.1:1/live.mp3"}, 3},
        {"resolve unreachable", {"resolve", "http://127.0.0.1:1/live.m3u"}, 3},
        {"reset", {"play", reset}, 3},
        {"reset while recording", {"record", reset, file}, 3},
        {"play refused", {"play", refused}, 4},
        {"record refused", {"record", refused, file}, 4},
        {"probe refused", {"probe", bare.url()}, 4},
        {"redirects", {"play", loop.url()}, 4},
        {"playlist to play", {"play", emptyPlaylist.url("/a.M3U")}, 5},
        {"playlist to resolve", {"resolve", emptyPlaylist.url("/a.m3u")}, 5},
        {"a probed page", {"probe", stationStream("la-radio.mp3", "fault=html")}, 6},
        {"no folder", {"record", refused, "/nowhere/at/all.mp3"}, 8},
        {"a folder", {"record", refused, QDir::tempPath()}, 8},
        {"no name", {"record", refused, ""}, 8},
        {"a long name", {"record", refused, QDir::temp().filePath(QString(300, u'n'))}, 8},
        {"no byte", {"record", empty.url(), file}, 6},
        {"play out of time", {"play", silent.url(), "--seconds", "0.2"}, 9},
        {"record out of time", {"record", silent.url(), file, "--seconds", "0.2"}, 9},
        {"resolve out of time", {"resolve", silent.url("/a.pls"), "--deadline", "0.2"}, 9},
    });
    EXPECT_FALSE(QFile::exists(file));
}

TEST(CommandLineTest, ResolvesAsThePlayerDoes)
{
    const ScriptedServer server(Script{Send{httpHead() + "[playlist]\nFile1=http://a.example/live\n"}});
    Tool tool({"resolve", server.url("/a.pls")});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_EQ(tool.out(), "http://a.example/live\n");
    Tool json({"resolve", "--json", "http://never.asked.invalid/a%20b.mp3?q=1"});
    EXPECT_EQ(json.status(), 0);
    EXPECT_EQ(json.objects().at(0)["url"].string(), "http://never.asked.invalid/a%20b.mp3?q=1");
}
