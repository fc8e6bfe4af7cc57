#include "audio/probe/StreamRecorder.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace orvel;
using namespace orvel::test;

namespace {

class StreamRecorderTest : public ::testing::Test
{
protected:
    void start(const QString &stream, const QString &name)
    {
        m_recorder->startRecordingFromUrl(
            Url::fromText(stream).value(), m_folder.filePath(name),
            [this](const NetError &error) { m_errors << error.localizedDescription; });
    }
    // "path: error" of the file written.
    QString stop()
    {
        std::optional<QString> written;
        m_recorder->stopRecording([&](const QString &path, const QString &error) {
            written = path.mid(m_folder.path().size() + 1) + ": " + error;
        });
        EXPECT_FALSE(m_recorder->isRecording());
        EXPECT_TRUE(waitUntil([&] { return written.has_value(); }));
        return written.value_or(QString());
    }
    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }
    // A file that has no name yet.
    bool isWriting() const
    {
        const QFileInfoList open = QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System);
        return std::ranges::any_of(
            open, [&](const QFileInfo &file) { return file.symLinkTarget().startsWith(m_folder.path()); });
    }
    QByteArray content(const QString &name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
    std::shared_ptr<StreamRecorder> m_recorder = std::make_shared<StreamRecorder>();
    QStringList m_errors;
};

QByteArray noise(qsizetype size)
{
    QByteArray bytes;
    for (quint32 x = 1; bytes.size() < size; x = x * 1664525U + 1013904223U)
        bytes += char(x >> 24);
    return bytes;
}

const QByteArray head = httpHead("Content-Type: audio/aacp\r\n");

} // namespace

TEST_F(StreamRecorderTest, NamesTheFileAfterItsContentType)
{
    const QByteArray sound = noise(20'000);
    const QByteArray icy = "ICY 200 OK\r\ncontent-type:audio/mpeg\r\n\r\n";
    const struct
    {
        QString type;
        QByteArray body;
        QString name;
        QString written;
    } cases[] = {
        {"audio/aacp", sound, "take.one.x", "take.one.aac"},
        {"audio/aacp", {}, "take", "take.aac"},
        {"text/html", sound, "take.x", "take.x"},
        {"", sound, "take.x", "take.x"},
        {"", icy + sound, ".take", ".take.mp3"},
        {"", icy, "take.x", "take.x"}, // too short to be told
    };
    for (const auto &test : cases) {
        StreamRecording recording(m_folder.filePath(test.name));
        UrlResponse response;
        response.headers.set("content-type", test.type);
        recording.readResponse(response);
        for (qsizetype at = 0; at < test.body.size(); at += 30)
            recording.readData(test.body.mid(at, 30));
        EXPECT_EQ(files(), QStringList());
        EXPECT_EQ(recording.finish(), m_folder.filePath(test.written));
        EXPECT_TRUE(content(test.written) == test.body) << test.written.toStdString();
        QFile::remove(m_folder.filePath(test.written));
    }
}

TEST_F(StreamRecorderTest, PutsEveryByteInPlaceAtTheStop)
{
    const QByteArray sound = noise(2'000'000);
    QFile old(m_folder.filePath("take.aac"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    // Bytes that claim to be packed are kept as they come.
    ScriptedServer server(
        {Send{httpHead("Content-Type: audio/aacp\r\nContent-Encoding: deflate\r\n")}, Send{sound}});
    start(server.url(), "take");
    start(server.url(), "other"); // one at a time
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() > 0 && server.openConnections() == 0; }));
    letEventsRun();
    EXPECT_TRUE(m_recorder->isRecording()); // until the stop, though the stream has ended
    EXPECT_EQ(content("take.aac"), "old");
    EXPECT_EQ(stop(), "take.aac: ");
    EXPECT_EQ(files(), QStringList("take.aac"));
    EXPECT_TRUE(content("take.aac") == sound);
    EXPECT_EQ(server.requestCount(), 1U);
    EXPECT_TRUE(server.requests()[0].contains("\r\nIcy-MetaData: 0\r\n"));
    EXPECT_EQ(m_errors, QStringList());
}

TEST_F(StreamRecorderTest, WritesNothingWhenNothingHasCome)
{
    const ScriptedServer server({Stall{}});
    start(server.url(), "take");
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 1; }));
    EXPECT_EQ(stop(), ": ");
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(StreamRecorderTest, EndsWithTheConnectionsError)
{
    const ScriptedServer server({Send{head}, Send{noise(100'000)}, Pause{0.1}, Reset{}});
    start(server.url(), "take");
    ASSERT_TRUE(waitUntil([&] { return !m_errors.isEmpty(); }));
    EXPECT_EQ(m_errors, QStringList("La connexion au serveur a été perdue."));
    EXPECT_FALSE(m_recorder->isRecording());
    EXPECT_TRUE(waitUntil([&] { return !isWriting(); }));
    EXPECT_EQ(files(), QStringList());
    EXPECT_EQ(stop(), ": ");
}

TEST_F(StreamRecorderTest, EndsWhenItCannotWrite)
{
    ScriptedServer server({Send{head}, SendForever{noise(10'000), 0.001}});
    // A disk that has room for so many bytes.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{100'000, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    start(server.url(), "take");
    EXPECT_TRUE(waitUntil([&] { return m_errors.size() == 1; }));
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_TRUE(m_errors.value(0).contains("take.aac can't be written: "));
    EXPECT_FALSE(m_recorder->isRecording());
    EXPECT_TRUE(waitUntil([&] { return !isWriting() && server.openConnections() == 0; }));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(StreamRecorderTest, LeavesNothingBehindWhenLetGoOf)
{
    const ScriptedServer server({Send{head}, SendForever{noise(10'000)}});
    const auto recordMuch = [&] {
        m_recorder = std::make_shared<StreamRecorder>();
        start(server.url(), "take");
        const qint64 before = server.bytesSent(); // more follows than the network's buffers hold
        ASSERT_TRUE(waitUntil([&] { return server.bytesSent() > before + (16 << 20); }));
    };
    recordMuch();
    EXPECT_TRUE(isWriting());
    m_recorder.reset();
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0 && !isWriting(); }));
    EXPECT_EQ(files(), QStringList());
    // A file on its way into place gets there.
    recordMuch();
    m_recorder->stopRecording();
    m_recorder.reset();
    EXPECT_TRUE(waitUntil([&] { return files() == QStringList("take.aac"); }));
    EXPECT_EQ(m_errors, QStringList());
}
