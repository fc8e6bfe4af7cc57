#include "audio/file/FakeFile.h"

using namespace orvel;
using namespace orvel::test;

namespace {

const AudioStreamerState playing = AudioStreamerStatePlaying;
const AudioStreamerState idle = AudioStreamerStateInitialized;

// Two buffers a thousand packets; the ring holds 32,000 bytes of packets.
const QByteArray longFile = numbered(100'000);
const QByteArray oneBufferMore = numbered(2000);

} // namespace

TEST(AudioStreamerTest, PlaysAFileFromItsBeginToItsEnd)
{
    const ScriptedServer server(answer(longFile));
    StreamerUnderTest player(server.url("/a.wav"),
                             {.cookie = "oat", .trim = AudioTrim{.primingFrames = 5, .validFrames = 90}});
    EXPECT_TRUE(player->isIdle());
    player->start();
    player->start();
    EXPECT_TRUE(player.changesReach(7)); // 1, 2, 4, 5, 7, 8, 0
    EXPECT_TRUE(player->isIdle());
    EXPECT_EQ(player.queue().played(), longFile);
    EXPECT_EQ(player.queue().packets(), 1000u);
    EXPECT_EQ(player.queue().sizes().front(), 2000u); // 2,048 hold no packet more
    EXPECT_EQ(player.queue().calls(),
              (QList<QByteArray>{"trim 5 90", "start", "flush", "play out", "dispose"}));
    EXPECT_EQ(player.cookie, "oat");
    EXPECT_EQ(player.hints, std::vector{AudioFileType::kAudioFileWAVEType});
    EXPECT_EQ(*std::ranges::max_element(player.pieces), 2048);
    EXPECT_TRUE(server.requests()[0].startsWith("GET /a.wav HTTP/1.1\r\n"));
    EXPECT_FALSE(server.requests()[0].contains("Accept-Encoding"));
    EXPECT_FALSE(server.requests()[0].contains("Range"));
    EXPECT_EQ(player->errorCode(), 0);
    EXPECT_EQ(player.alerts, QStringList());
}

TEST(AudioStreamerTest, StartsWithFifteenBuffersOrAtTheEndOfTheFile)
{
    for (const qsizetype bytes : {30'000, 30'100}) {
        const ScriptedServer server(
            Script{Send{httpHead("Content-Length: 40000\r\n") + numbered(bytes)}, WaitForRelease{}});
        StreamerUnderTest player(server.url());
        player->start();
        ASSERT_TRUE(waitUntil([&] { return player.hasQueue() && player.queue().sizes().size() >= 14; }));
        // The fifteenth buffer is enqueued when a packet comes that it can't hold.
        EXPECT_EQ(waitUntil([&] { return player.queue().calls().contains("start"); }, 0.3), bytes > 30'000);
    }
    for (const QByteArray &file : {numbered(100), numbered(2000), numbered(6100)}) {
        const ScriptedServer server(answer(file));
        StreamerUnderTest player(server.url());
        player->start();
        EXPECT_TRUE(player.changesReach(8)); // 1, 2, 3, 4, 5, 7, 8, 0
        EXPECT_EQ(player.queue().played(), file);
    }
}

TEST(AudioStreamerTest, HoldsAnEndThatComesInAPause)
{
    const ScriptedServer server(Script{Send{httpHead("Content-Length: 31000\r\n") + numbered(30'500)},
                                       WaitForRelease{}, Send{numbered(500)}});
    StreamerUnderTest player(server.url());
    ASSERT_TRUE(player.plays());
    player->pause();
    const_cast<ScriptedServer &>(server).release();
    EXPECT_FALSE(player.reachesWithin(AudioStreamerStateStopping, 0.5));
    EXPECT_EQ(player.queue().calls().last(), "pause");
    player->start();
    EXPECT_TRUE(player.reaches(idle));
    EXPECT_EQ(player.queue().played().size(), 31'000);
}

TEST(AudioStreamerTest, BuffersWhenAllHasBeenPlayed)
{
    ScriptedServer server(Script{Send{httpHead("Content-Length: 70000\r\n") + numbered(34'000)},
                                 WaitForRelease{}, Send{numbered(34'000)}, WaitForRelease{},
                                 Send{numbered(2000)}});
    StreamerUnderTest player(server.url());
    ASSERT_TRUE(player.plays());
    ASSERT_TRUE(player.runsDry());
    EXPECT_EQ(player.queue().calls().last(), "pause");
    EXPECT_TRUE(player->isWaiting());
    server.release();
    ASSERT_TRUE(player.reaches(playing));
    ASSERT_TRUE(player.runsDry());
    server.release(); // the end of the file starts what is left
    EXPECT_TRUE(player.reaches(idle));
    EXPECT_EQ(player.queue().calls().mid(player.queue().calls().size() - 4),
              (QList<QByteArray>{"start", "flush", "play out", "dispose"}));
}

TEST(AudioStreamerTest, FillsBuffersOfTheParsersBound)
{
    const struct
    {
        std::optional<quint32> bound;
        std::optional<quint32> maximum;
        quint32 size;
    } cases[] = {{500, 900, 500}, {0, 900, 900}, {{}, 300, 300}, {{}, 0, 2000}};
    for (const auto &it : cases) {
        const ScriptedServer server(answer(oneBufferMore));
        StreamerUnderTest player(server.url(), {.upperBound = it.bound, .maximum = it.maximum});
        player->start();
        ASSERT_TRUE(waitUntil([&] { return player->isIdle(); }));
        EXPECT_EQ(player.queue().sizes().front(), it.size);
    }
    // At most 512 packets go into one.
    const ScriptedServer server(answer(oneBufferMore));
    StreamerUnderTest player(server.url(), {.packetSize = 1});
    player->start();
    ASSERT_TRUE(waitUntil([&] { return player->isIdle(); }));
    EXPECT_EQ(player.queue().sizes(), (std::vector<quint32>{512, 512, 512, 464}));
}

TEST(AudioStreamerTest, EnqueuesWholePacketsOfConstantSize)
{
    const ScriptedServer server(answer(numbered(6004)));
    StreamerUnderTest player(server.url(), {.format = {.sampleRate = 44100,
                                                       .format = AudioFormat::linearPcm,
                                                       .bytesPerPacket = 6,
                                                       .framesPerPacket = 1,
                                                       .channelsPerFrame = 2,
                                                       .bitsPerChannel = 24},
                                            .packetSize = 6,
                                            .isDescribed = false});
    player->start();
    ASSERT_TRUE(waitUntil([&] { return player->isIdle(); }));
    EXPECT_EQ(player.queue().sizes(), (std::vector<quint32>{2046, 2046, 1908}));
    EXPECT_EQ(player.queue().played(), numbered(6000));
    EXPECT_NEAR(player->duration(), 6004 / 6 / 44100., 1e-3); // they count for the bit rate
}

TEST(AudioStreamerTest, PlaysTheHighEfficiencyFormatOfAList)
{
    const AudioStreamBasicDescription better{
        .sampleRate = 2000, .format = AudioFormat::mpeg4AacHe, .framesPerPacket = 200, .channelsPerFrame = 1};
    FakeFormat format;
    format.formatList = {{.sampleRate = 3000, .format = AudioFormat::mpeg4AacHeV2}, better, format.format};
    const ScriptedServer server(answer(oneBufferMore));
    StreamerUnderTest player(server.url(), format);
    player->start();
    ASSERT_TRUE(waitUntil([&] { return player->isIdle(); }));
    EXPECT_EQ(player.formats, std::vector{better});
}

TEST(AudioStreamerTest, EstimatesTheBitRateFromThe51stPacketOn)
{
    const ScriptedServer server(Script{Send{httpHead("Content-Length: 12600\r\n") + numbered(5000)},
                                       WaitForRelease{}, Send{numbered(100)}, Stall{}});
    StreamerUnderTest player(server.url(), {.dataOffset = 100});
    EXPECT_EQ(player->calculatedBitRate(), 0);
    player->start();
    ASSERT_TRUE(waitUntil([&] { return player.hasQueue() && player.queue().sizes().size() == 2; }));
    EXPECT_EQ(player->calculatedBitRate(), 4294967295.0);
    EXPECT_LT(player->duration(), 0.001);
    const_cast<ScriptedServer &>(server).release();
    ASSERT_TRUE(waitUntil([&] { return player->calculatedBitRate() == 8000; })); // 100 bytes in 0.1 s
    EXPECT_DOUBLE_EQ(player->duration(), 12.5);
    EXPECT_EQ(player->httpHeaders().value("Content-Length"), "12600");
}

TEST(AudioStreamerTest, BoundsWhatAFileSaysOfItsLength)
{
    const struct
    {
        QByteArray head;
        std::optional<qint64> dataOffset;
        std::optional<quint64> byteCount;
        double duration;
    } cases[] = {
        {"", {}, {}, 0},
        {"Content-Length: 100000\r\n", 99'999'999, {}, 0},
        {"Content-Length: 100000\r\n", 1000, 50'000, 50},
        {"", {}, 50'000, 50},
        {"", 1000, std::numeric_limits<quint64>::max(), 2147483647},
    };
    for (const auto &it : cases) {
        const ScriptedServer server(Script{Send{httpHead(it.head) + longFile.first(20'000)}, Stall{}});
        StreamerUnderTest player(server.url(), {.dataOffset = it.dataOffset, .byteCount = it.byteCount});
        player->start();
        ASSERT_TRUE(waitUntil([&] { return player->calculatedBitRate() == 8000; }));
        EXPECT_DOUBLE_EQ(player->duration(), it.duration);
    }
}

TEST(AudioStreamerTest, ReportsHowFarTheSoundIs)
{
    const ScriptedServer server(answer(longFile));
    StreamerUnderTest player(server.url());
    EXPECT_EQ(player->progress(), 0);
    ASSERT_TRUE(player.plays());
    player.queue().time = 2500.0;
    EXPECT_EQ(player->progress(), 2.5);
    player->pause();
    player.queue().time = 2600.0;
    player.queue().isStopped = true;
    EXPECT_EQ(player->progress(), 2.5);
    player.queue().isStopped = false;
    player.queue().time = -1000.0;
    EXPECT_EQ(player->progress(), 0);
    player.queue().time = 3000.0;
    EXPECT_EQ(player->progress(), 3);
    player.queue().time = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(player->progress(), 3);
    EXPECT_TRUE(player.reaches(idle));
    EXPECT_EQ(player->errorCode(), AudioStreamerErrorGetAudioTime);
    EXPECT_EQ(player->progress(), 3);
}

TEST(AudioStreamerTest, ShowsOneAlertAStart)
{
    FakeFormat noFormat, noParser, noParse, noPackets, tooLarge, hugePackets, sound;
    noFormat.hasFormat = false;
    noParser.opens = false;
    noParse.parses = false;
    noPackets.findsPackets = false;
    tooLarge.packetSize = 3000;
    hugePackets.upperBound = 1 << 30;
    const auto nothing = [](StreamerUnderTest &) {};
    const auto with = [](bool FakeFileQueue::*member) {
        return [member](StreamerUnderTest &player) {
            player.prepareQueue = [member](FakeFileQueue &queue) { queue.*member = false; };
        };
    };
    const struct
    {
        const char *name;
        FakeFormat format;
        Script script;
        std::function<void(StreamerUnderTest &)> prepare;
        int code;
    } cases[] = {
        {"property", noFormat, answer(longFile), nothing, 2},
        {"bytes", noParse, answer(longFile), nothing, 4},
        {"parser", noParser, answer(longFile), nothing, 5},
        {"no sound", noPackets, answer(oneBufferMore), nothing, 7},
        {"empty", sound, answer({}), nothing, 7},
        {"status", sound, answer(longFile, "HTTP/1.1 404 Not Found"), nothing, 7},
        {"cut off", sound, {Send{httpHead("Content-Length: 9000\r\n") + oneBufferMore}}, nothing, 7},
        {"queue", sound, answer(longFile), [](StreamerUnderTest &player) { player.makesQueues = false; }, 8},
        {"buffer", sound, answer(longFile), with(&FakeFileQueue::allocates), 9},
        {"huge buffer", hugePackets, answer(longFile), nothing, 9},
        {"enqueue", sound, answer(longFile), with(&FakeFileQueue::enqueues), 10},
        {"start", sound, answer(longFile), with(&FakeFileQueue::starts), 13},
        {"large packet", tooLarge, answer(longFile), nothing, 21},
    };
    for (const auto &it : cases) {
        SCOPED_TRACE(it.name);
        const ScriptedServer server(it.script);
        StreamerUnderTest player(server.url(), it.format);
        it.prepare(player);
        player->start();
        EXPECT_TRUE(player.reaches(idle));
        EXPECT_EQ(player->errorCode(), it.code);
        EXPECT_FALSE(player->isWaiting());
        letEventsRun();
        EXPECT_EQ(player.alerts, QStringList("Erreur de fichier|Ce son ne peut pas être lu.|OK"));
        player->start(); // a second life ends at once
        EXPECT_TRUE(player.reaches(idle));
    }
}

TEST(AudioStreamerTest, ShowsAnAlertForAnAddressThatIsNotOfTheWeb)
{
    StreamerUnderTest player("ftp://127.0.0.1/a.mp3");
    player->start();
    ASSERT_TRUE(player.reaches(idle));
    EXPECT_TRUE(player.changesReach(3)); // 1, 2, 0
    EXPECT_EQ(player.alerts.size(), 1);
    EXPECT_EQ(player->errorCode(), 0);
}

TEST(AudioStreamerTest, TakesNoEndOfItsQueueForTheBegin)
{
    const ScriptedServer server(answer(longFile));
    StreamerUnderTest player(server.url());
    player.prepareQueue = [](FakeFileQueue &queue) { queue.automatic = false; };
    player->start();
    ASSERT_TRUE(player.reaches(AudioStreamerStateWaitingForQueueStart));
    player.queue().tellRunning(false);
    EXPECT_FALSE(player.reachesWithin(playing, 0.2));
}

TEST(BufferRingTest, IgnoresAnEarlierQueue)
{
    BufferRing ring;
    OutputBuffer buffer(1), foreign(1);
    BufferRing::Buffers buffers;
    buffers.fill(&buffer);
    ring.use(buffers);
    const quint64 earlier = ring.queueNumber();
    EXPECT_FALSE(ring.giveBack(foreign, earlier));
    ring.clear();
    EXPECT_EQ(ring.take(0), 1u);
    EXPECT_TRUE(ring.giveBack(buffer, earlier));
    EXPECT_TRUE(ring.giveBack(foreign, earlier));
    EXPECT_EQ(ring.buffersUsed(), 1u);
    EXPECT_TRUE(ring.giveBack(buffer, ring.queueNumber()));
    EXPECT_EQ(ring.buffersUsed(), 0u);
}

TEST(AudioStreamerTest, StopsTheSoundAtAFailure)
{
    const ScriptedServer server(answer(longFile));
    StreamerUnderTest player(server.url());
    ASSERT_TRUE(player.plays());
    player->pause();
    player.queue().returnForeignBuffer();
    ASSERT_TRUE(player.reaches(idle));
    EXPECT_EQ(player->errorCode(), AudioStreamerErrorAudioQueueBufferMismatch);
    EXPECT_EQ(player.queue().calls().mid(player.queue().calls().size() - 3),
              (QList<QByteArray>{"pause", "stop", "dispose"}));
}

TEST(AudioStreamerTest, PausesForAnInterruption)
{
    const ScriptedServer server(answer(longFile));
    StreamerUnderTest player(server.url());
    ASSERT_TRUE(player.plays());
    const auto interrupt = [&](InterruptionState state) {
        AudioSession::interrupt(state);
        letEventsRun();
    };
    letEventsRun();
    interrupt(InterruptionState::Begin);
    EXPECT_TRUE(player->isPaused());
    interrupt(InterruptionState::End);
    EXPECT_TRUE(player->isPlaying());
    EXPECT_TRUE(AudioSession::sharedInstance().isActive());

    // The listener's own pause and resume count for more.
    interrupt(InterruptionState::Begin);
    player->pause();
    player->pause();
    EXPECT_TRUE(player->isPaused());
    interrupt(InterruptionState::End);
    EXPECT_TRUE(player->isPaused());
    interrupt(InterruptionState::Begin);
    interrupt(InterruptionState::End);
    EXPECT_TRUE(player->isPaused());
}

TEST(AudioStreamerTest, PausesWhatBeginsWhileAnInterruptionLasts)
{
    AudioSession::interrupt(InterruptionState::Begin);
    letEventsRun();
    const ScriptedServer server(answer(longFile));
    StreamerUnderTest player(server.url());
    player->start();
    ASSERT_TRUE(player.reaches(AudioStreamerStatePaused));
    AudioSession::interrupt(InterruptionState::End);
    EXPECT_TRUE(player.reaches(idle));
    EXPECT_EQ(player.queue().played(), longFile);
}

TEST(AudioStreamerTest, JumpsToAnIndexThatLiesFurtherOn)
{
    const QByteArray file = numbered(600'000); // more than is read ahead
    const Script whole = answer(file, "HTTP/1.1 200 OK", "Accept-Ranges: bytes\r\n");
    const Script index = answer(file.sliced(590'000), "HTTP/1.1 206 Partial Content",
                                "Content-Range: bytes 590000-599999/600000\r\n");
    const ScriptedServer server({whole, index});
    StreamerUnderTest player(server.url(), {.wantedAtFirst = 590'000});
    player->start();
    ASSERT_TRUE(waitUntil([&] { return player->isIdle(); }));
    EXPECT_EQ(player.jumps, std::vector<qint64>{590'000});
    EXPECT_EQ(player.queue().played().last(10'000), file.sliced(590'000));
    EXPECT_TRUE(server.requests()[1].contains("Range: bytes=590000-\r\n"));

    const ScriptedServer without(answer(longFile)); // who takes no ranges is read through
    StreamerUnderTest patient(without.url(), {.wantedAtFirst = 90'000});
    patient->start();
    ASSERT_TRUE(waitUntil([&] { return patient->isIdle(); }));
    EXPECT_EQ(patient.queue().played(), longFile);
}
