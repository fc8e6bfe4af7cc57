#include "support/ScriptedServer.h"
#include "tools/Tool.h"

#include <QDir>
#include <QTemporaryDir>
#include <QThread>
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
    // Nothing but the recording.
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
};

} // namespace

TEST_F(RecordTest, KeepsAStreamToItsEnd)
{
    const QByteArray sound(100000, 'x');
    const ScriptedServer server(Script{Send{head}, Send{sound}});
    Tool tool({"record", server.url(), file});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_EQ(tool.out(), written.toUtf8() + '\n');
    EXPECT_EQ(content(), sound);
    EXPECT_EQ(files(), QStringList("kept.mp3"));
}

TEST_F(RecordTest, EndsAfterItsTime)
{
    Tool tool({"record", "--json", "--seconds", "1", stationStream("la-radio.mp3"), file});
    EXPECT_EQ(tool.status(), 0);
    EXPECT_EQ(tool.objects().at(0)["file"].string(), written);
    EXPECT_GT(content().size(), 100000);
}

TEST_F(RecordTest, SignalsLeaveACompleteFile)
{
    for (const int number : {SIGINT, SIGTERM}) {
        const QByteArray sound(30000, char(number));
        const ScriptedServer server(Script{Send{head}, Send{sound}, WaitForRelease{}});
        Tool tool({"record", server.url(), file});
        while (server.bytesSent() < head.size() + sound.size())
            QThread::msleep(20);
        QThread::msleep(500); // what was sent has been read
        tool.signal(number);
        EXPECT_EQ(tool.status(), 128 + number);
        EXPECT_EQ(tool.out(), written.toUtf8() + '\n');
        EXPECT_EQ(content(), sound);
        EXPECT_EQ(files(), QStringList("kept.mp3"));
    }
}

TEST_F(RecordTest, DropsWhatTheNetworkBreaks)
{
    const ScriptedServer server(Script{Send{head}, Send{QByteArray(30000, 'x')}, Pause{0.3}, Reset{}});
    Tool tool({"record", server.url(), file});
    EXPECT_EQ(tool.status(), 3);
    EXPECT_EQ(tool.out(), QByteArray());
    EXPECT_EQ(files(), QStringList());
}
