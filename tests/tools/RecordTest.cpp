#include "support/ScriptedServer.h"
#include "tools/Tool.h"

#include <QDir>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const QByteArray head = httpHead("Content-Type: audio/mpeg\r\n");

struct RecordTest : testing::Test
{
    QTemporaryDir folder;
    QString file = folder.filePath(QStringLiteral("kept.raw"));
    QString written = folder.filePath(QStringLiteral("kept.mp3"));

    QByteArray content() const
    {
        QFile it(written);
        return it.open(QIODevice::ReadOnly) ? it.readAll() : QByteArray();
    }
};

} // namespace

TEST_F(RecordTest, KeepsEverythingToTheStreamsEndOrASignal)
{
    for (const int number : {0, SIGINT, SIGTERM}) {
        const QByteArray sound(30000, char(number));
        const ScriptedServer server(
            Script{Send{head}, Send{sound}, number == 0 ? Step(Close{}) : WaitForRelease{}});
        Tool tool({"record", server.url(), file});
        if (number != 0) {
            ASSERT_TRUE(tool.writes(sound.size()));
            tool.signal(number);
        }
        EXPECT_EQ(tool.status(), number == 0 ? 0 : 128 + number);
        EXPECT_EQ(tool.out(), written.toUtf8() + '\n');
        EXPECT_EQ(content(), sound);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("kept.mp3"));
    }
}

TEST_F(RecordTest, EndsAfterItsTime)
{
    const ScriptedServer server(Script{Send{head}, SendForever{"sound", 0.01}});
    Tool tool({"record", "--json", "--seconds", "2", server.url(), file});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_EQ(tool.objects().at(0)["file"].string(), written);
    EXPECT_TRUE(content().startsWith("soundsound"));
}
