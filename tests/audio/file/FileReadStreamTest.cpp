#include "audio/file/FileReadStream.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const QByteArray file = [] {
    QByteArray bytes;
    for (int i = 0; i < 200'000; ++i)
        bytes += char(i * 13 + i / 255);
    return bytes;
}();

struct Reading
{
    explicit Reading(const QString &url, qint64 firstByte = 0, qint64 fileLength = 0)
        : stream(FileReadStream::open({*Url::fromText(url), firstByte, fileLength}))
    {
    }
    ~Reading()
    {
        stream->close();
        closeConnections();
    }
    // Until so many bytes are read, or no more come.
    bool read(qsizetype bytes = std::numeric_limits<qsizetype>::max())
    {
        return waitUntil([&] {
            while (stream->hasBytesAvailable() && got.size() < bytes)
                got += stream->read(std::min<qsizetype>(2048, bytes - got.size()));
            if (got.size() == bytes || stream->hasEnded() || stream->hasFailed())
                return true;
            stream->awaitBytes();
            return false;
        });
    }

    std::shared_ptr<FileReadStream> stream;
    QByteArray got;
};

Script rangeFrom(qint64 first, qint64 said)
{
    return answer(file.sliced(first), "HTTP/1.1 206 Partial Content",
                  "Content-Range: bytes " + QByteArray::number(said) + "-199999/200000\r\n");
}

const auto length = "Content-Length: 200000\r\n";

} // namespace

TEST(FileReadStreamTest, AsksForARange)
{
    // What comes may begin before it.
    for (const Script &script : {rangeFrom(5000, 5000), rangeFrom(1000, 1000), answer(file)}) {
        const ScriptedServer server(script);
        Reading reading(server.url(), 5000, 200'000);
        ASSERT_TRUE(reading.read());
        EXPECT_TRUE(reading.stream->hasEnded());
        EXPECT_EQ(reading.got, file.sliced(5000));
        // The file's length stands where its last byte's number would.
        EXPECT_TRUE(server.requests()[0].contains("Range: bytes=5000-200000\r\n"));
    }
}

TEST(FileReadStreamTest, FailsWithoutTheBytesAskedFor)
{
    const ScriptedServer loop({Send{httpHead("Location: /again\r\n", "HTTP/1.1 302 Found")}});
    for (const Script &script : {answer(file, "HTTP/1.1 416 Range Not Satisfiable"), rangeFrom(6000, 6000),
                                 Script{Send{httpHead(length)}, Reset{}}}) {
        const ScriptedServer server(script);
        Reading reading(server.url(), 5000, 200'000);
        ASSERT_TRUE(reading.read());
        EXPECT_TRUE(reading.stream->hasFailed());
        EXPECT_EQ(reading.got, QByteArray());
    }
    Reading reading(loop.url());
    ASSERT_TRUE(reading.read());
    EXPECT_TRUE(reading.stream->hasFailed());
    EXPECT_EQ(loop.requestCount(), 11u);
    EXPECT_EQ(FileReadStream::open({*Url::fromText("file:///etc/passwd")}), nullptr);
}

TEST(FileReadStreamTest, TakesUpAConnectionThatWasLostWhileItRested)
{
    ScriptedServer server(
        {Script{Send{httpHead(length) + file.first(60'000)}, WaitForRelease{}, Close{}},
         Script{Send{httpHead("Content-Length: 140000\r\nContent-Range: bytes 60000-199999/200000\r\n",
                              "HTTP/1.1 206 Partial Content") +
                     file.sliced(60'000)}}});
    Reading reading(server.url(), 0, 0);
    ASSERT_TRUE(reading.read(1000));
    server.release();
    waitUntil([] { return false; }, 0.4);
    ASSERT_TRUE(reading.read());
    EXPECT_TRUE(reading.stream->hasEnded());
    EXPECT_EQ(reading.got, file);
    EXPECT_TRUE(server.requests()[1].contains("Range: bytes=60000-\r\n"));
}

TEST(FileReadStreamTest, LosesAConnectionThatBytesWereWantedFrom)
{
    // At once, and after a rest that has been made up for.
    for (const double rest : {0.0, 0.4}) {
        ScriptedServer server(Script{Send{httpHead(length) + file.first(1000)}, WaitForRelease{}, Close{}});
        Reading reading(server.url());
        ASSERT_TRUE(reading.read(500));
        waitUntil([] { return false; }, rest);
        ASSERT_TRUE(reading.read(1000));
        reading.stream->awaitBytes();
        if (rest > 0)
            waitUntil([] { return false; }, 1.1);
        server.release();
        ASSERT_TRUE(reading.read());
        EXPECT_TRUE(reading.stream->hasFailed());
        EXPECT_EQ(server.requestCount(), 1u);
    }
}

TEST(FileReadStreamTest, ReadsNoFurtherThanItsReaderWants)
{
    const ScriptedServer server(Script{Send{httpHead("Content-Length: 64000000\r\n")}, SendForever{file}});
    Reading reading(server.url());
    ASSERT_TRUE(reading.read(1000));
    waitUntil([] { return false; }, 0.3);
    EXPECT_LT(reading.stream->read(10'000'000).size(), 300'000);
}

TEST(FileReadStreamTest, JumpsWithinWhatHasArrivedAndBeyond)
{
    const ScriptedServer server(
        {answer(file, "HTTP/1.1 200 OK", "Accept-Ranges: bytes\r\n"), rangeFrom(150'000, 150'000)});
    Reading reading(server.url());
    ASSERT_TRUE(reading.read(1000));
    EXPECT_TRUE(reading.stream->canJump());
    reading.stream->continueAt(3000);
    ASSERT_TRUE(reading.read(2000));
    EXPECT_EQ(reading.got, file.first(1000) + file.sliced(3000, 1000));
    EXPECT_EQ(server.requestCount(), 1u);
    reading.stream->continueAt(150'000);
    ASSERT_TRUE(reading.read());
    EXPECT_EQ(reading.got.sliced(2000), file.sliced(150'000));
}
