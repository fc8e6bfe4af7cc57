#include "audio/file/FakeFile.h"

using namespace orvel;
using namespace orvel::test;

namespace {

const QByteArray file = numbered(100'000);

Script rangeFrom(qint64 first)
{
    return answer(file.sliced(first), "HTTP/1.1 206 Partial Content",
                  "Content-Range: bytes " + QByteArray::number(first) + "-99999/100000\r\n");
}

// A file of 100 seconds at 8,000 bits a second, and what is asked for after a seek.
struct AudioStreamerSeekTest : testing::Test
{
    void begin(const FakeFormat &format, qint64 first)
    {
        server.emplace(std::vector<Script>{answer(file), rangeFrom(first)});
        player.emplace(server->url(), format);
        ASSERT_TRUE(player->plays());
        ASSERT_DOUBLE_EQ((*player)->duration(), 100 - double(format.dataOffset.value_or(0)) / 1000);
    }
    bool asksAgain()
    {
        return waitUntil([&] { return server->requestCount() == 2; });
    }
    QByteArray range() const
    {
        const QByteArray request = server->requests().at(1);
        const qsizetype at = request.indexOf("Range: ");
        return at < 0 ? QByteArray() : request.mid(at, request.indexOf('\r', at) - at);
    }

    std::optional<ScriptedServer> server;
    std::optional<StreamerUnderTest> player;
};

} // namespace

TEST_F(AudioStreamerSeekTest, GoesOnAtTheTimeAskedFor)
{
    begin({}, 40'000);
    letEventsRun();
    player->changes = 0;
    const qsizetype before = player->queue().played().size();
    player->queue().time = 500.0;
    (*player)->seekToTime(40);
    ASSERT_TRUE(asksAgain());
    ASSERT_TRUE(player->begins());
    EXPECT_DOUBLE_EQ((*player)->progress(), 40.5);
    EXPECT_TRUE(player->changesReach(5)); // 7, 8, 2, 4, 5
    EXPECT_EQ(range(), "Range: bytes=40000-100000");
    player->queue().automatic = true;
    player->queue().playAll();
    ASSERT_TRUE(player->reaches(AudioStreamerStateInitialized));
    EXPECT_EQ(player->queue().played().sliced(before), file.sliced(40'000));
    EXPECT_EQ(player->jumps, std::vector<qint64>{40'000});
    EXPECT_EQ((*player)->errorCode(), 0);
}

TEST_F(AudioStreamerSeekTest, BoundsWhereItGoes)
{
    const struct
    {
        double target;
        qint64 first;
        qint64 dataOffset;
    } cases[] = {
        {1e300, 95'904, 0}, // two buffers before the end
        {-5, 1000, 1000},
        {49.5, 50'500, 1000},
        {1e300, 97'000, 97'000},
    };
    for (const auto &it : cases) {
        begin({.dataOffset = it.dataOffset}, it.first);
        (*player)->seekToTime(it.target);
        ASSERT_TRUE(asksAgain());
        EXPECT_EQ(range(), "Range: bytes=" + QByteArray::number(it.first) + "-100000");
    }
    begin({}, 0);
    for (const double target :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        (*player)->seekToTime(target);
    EXPECT_FALSE(waitUntil([&] { return !(*player)->isPlaying(); }, 0.4));
    (*player)->seekToTime(0); // the first byte is asked for without a range
    ASSERT_TRUE(asksAgain());
    EXPECT_EQ(range(), "");
}

TEST_F(AudioStreamerSeekTest, TakesTheParsersExactPlace)
{
    begin({.dataOffset = 1000,
           .trim = AudioTrim{.primingFrames = 50, .validFrames = 90'000},
           .seek = AudioFileStreamSeek{.byteOffset = 48'900, .isEstimated = false}},
          49'900);
    (*player)->seekToTime(49.5); // 49,500 bytes behind the first packet
    ASSERT_TRUE(asksAgain());
    EXPECT_EQ(range(), "Range: bytes=49900-100000");
    ASSERT_TRUE(player->begins());
    EXPECT_DOUBLE_EQ((*player)->progress(), 49.5 - 0.6);
    // Packet 495 has frame 49,500 first.
    EXPECT_TRUE(player->queue().calls().contains("trim 0 40550"));
}

TEST_F(AudioStreamerSeekTest, LeavesAnEstimateToTheBitRate)
{
    begin({.trim = AudioTrim{.primingFrames = 50, .validFrames = 90'000},
           .seek = AudioFileStreamSeek{.byteOffset = 48'900, .isEstimated = true}},
          49'500);
    (*player)->seekToTime(49.5);
    ASSERT_TRUE(asksAgain());
    EXPECT_EQ(range(), "Range: bytes=49500-100000");
    EXPECT_EQ(player->queue().calls().count("trim 50 90000"), 1);
}

TEST_F(AudioStreamerSeekTest, WaitsForTheEndOfAPause)
{
    begin({}, 40'000);
    (*player)->pause();
    (*player)->seekToTime(40);
    EXPECT_FALSE(waitUntil([&] { return server->requestCount() > 1; }, 0.6));
    EXPECT_TRUE((*player)->isPaused());
    (*player)->pause();
    EXPECT_TRUE(asksAgain());
}

TEST(AudioStreamerSeekWithoutBytesTest, WaitsForTheEndOfAPauseAndDropsWhatWasGathered)
{
    const ScriptedServer server(
        {Script{Send{httpHead("Content-Length: 100000\r\n") + file.first(31'000)}, WaitForRelease{}},
         rangeFrom(40'000)});
    StreamerUnderTest player(server.url());
    ASSERT_TRUE(player.plays());
    player->pause();
    player->seekToTime(40);
    EXPECT_FALSE(waitUntil([&] { return server.requestCount() > 1; }, 0.6));
    player->pause();
    ASSERT_TRUE(player.begins());
    player.queue().automatic = true;
    player.queue().playAll();
    ASSERT_TRUE(player.reaches(AudioStreamerStateInitialized));
    EXPECT_EQ(player.queue().played(), file.first(30'000) + file.sliced(40'000));
}

TEST_F(AudioStreamerSeekTest, ComesBackFromTheTail)
{
    begin({}, 40'000);
    player->queue().tellsStops = false; // so that it plays out without end
    player->queue().automatic = true;
    player->queue().playAll();
    ASSERT_TRUE(player->reaches(AudioStreamerStateStopping));
    player->queue().tellsStops = true;
    (*player)->seekToTime(40);
    ASSERT_TRUE(asksAgain());
    EXPECT_TRUE(player->reaches(AudioStreamerStateInitialized));
    EXPECT_EQ(player->queue().played().last(60'000), file.sliced(40'000));
    EXPECT_EQ(player->queue().played().size(), 160'000);
}

TEST_F(AudioStreamerSeekTest, DoesNotWaitForAQueueThatSaysNothing)
{
    begin({}, 40'000);
    player->queue().tellsStops = false;
    (*player)->seekToTime(40);
    EXPECT_TRUE(waitUntil([&] { return server->requestCount() == 2; }, 1));
}

TEST(AudioStreamerSeekWithoutLengthTest, HasNoEffect)
{
    const ScriptedServer server(Script{Send{httpHead() + file}, Close{}});
    StreamerUnderTest player(server.url());
    ASSERT_TRUE(player.plays());
    player->seekToTime(40);
    player.queue().automatic = true;
    player.queue().playAll();
    ASSERT_TRUE(player.reaches(AudioStreamerStateInitialized));
    EXPECT_EQ(player.queue().played(), file);
    EXPECT_EQ(server.requestCount(), 1u);
}
