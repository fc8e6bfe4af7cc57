#include "StreamClient.h"
#include "demo/DemoStation.h"

#include <QElapsedTimer>
#include <QSet>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace orvel;
using test::isFrames;
using test::StreamClient;
using End = StreamClient::End;

namespace {

class StreamTest : public ::testing::Test
{
protected:
    QString url(const char *query = "", const char *id = "101") const
    {
        return station_->streamUrl(id) + QLatin1String(query);
    }

    std::unique_ptr<DemoStation> station_ = DemoStation::start({});
};

const QByteArray askForTitles = "icy-metadata: 1\r\n";
constexpr qsizetype interval = 16000;

} // namespace

TEST_F(StreamTest, AnswersEveryRadioWithWholeFramesAndTitles)
{
    const struct
    {
        const char *id;
        QByteArray status;
        QByteArray type;
    } cases[] = {
        {"101", "HTTP/1.0 200 OK\r\n", "\r\nContent-Type: audio/mpeg\r\n"},
        {"102", "HTTP/1.0 200 OK\r\n", "\r\nContent-Type: audio/aac\r\n"},
        {"106", "ICY 200 OK\r\n", "\r\ncontent-type:audio/mpeg\r\n"},
    };
    for (const auto &test : cases) {
        StreamClient client(url("", test.id), askForTitles);
        client.readBody(196608);
        const QByteArray head = client.head() + "\r\n";
        EXPECT_TRUE(head.startsWith(test.status)) << head.constData();
        EXPECT_TRUE(head.contains(test.type)) << head.constData();
        for (const char *field : {"icy-name:", "icy-genre:", "icy-url:", "icy-br:", "icy-metaint:"})
            EXPECT_TRUE(head.contains(field)) << field;
        QByteArrayList blocks;
        EXPECT_TRUE(isFrames(client.audio(interval, &blocks))) << test.id;
        ASSERT_GE(blocks.size(), 11);
        EXPECT_TRUE(blocks[0].startsWith("StreamTitle='")) << blocks[0].constData();
        EXPECT_TRUE(blocks[1].isEmpty());
    }
}

TEST_F(StreamTest, SendsNoMetadataToWhoDoesNotAsk)
{
    StreamClient client(url());
    client.readBody(196608);
    EXPECT_FALSE(client.head().contains("icy-metaint"));
    EXPECT_TRUE(isFrames(client.body()));
}

TEST_F(StreamTest, GivesTheBurstAtOnceAndTheRestInRealTime)
{
    StreamClient client(url());
    client.readBody(196608);
    EXPECT_GE(client.body().size(), 196608);
    const qsizetype burst = client.body().size();
    QElapsedTimer timer;
    timer.start();
    client.readBody(burst + 24000);
    EXPECT_GT(timer.elapsed(), 800); // 24,000 bytes are 1.5 s of sound
}

TEST_F(StreamTest, ChangesTitlesWithTheSongs)
{
    StreamClient client(url("?paced=0&seconds=75"), askForTitles);
    client.readBody(10'000'000);
    EXPECT_EQ(client.end(), End::Closed);
    QByteArrayList blocks;
    const QByteArray audio = client.audio(interval, &blocks);
    EXPECT_NEAR(double(audio.size()), 75 * 16000, 1000);
    blocks.removeAll(QByteArray());
    EXPECT_EQ(QSet<QByteArray>(blocks.begin(), blocks.end()).size(), 4);
    EXPECT_TRUE(blocks[0].startsWith("StreamTitle='Les Hirondelles - Partir demain';"));
}

TEST_F(StreamTest, EncodesOnceForAllListenersAndOnlyWhileThereAreAny)
{
    EXPECT_EQ(station_->encodersStarted(), 0);
    {
        StreamClient first(url());
        first.readBody(210000);
        StreamClient second(url());
        second.readBody(190000);
        EXPECT_EQ(station_->encodersStarted(), 1);
        // The second one's burst is what the first one has heard.
        EXPECT_TRUE(first.body().contains(second.body().first(100000)));
        StreamClient other(url("", "108"));
        other.readBody(1000);
        EXPECT_EQ(station_->encodersStarted(), 2);
    }
    QElapsedTimer timer;
    timer.start();
    while (station_->encodersStarted() < 3 && timer.elapsed() < 20000) {
        // The station notices at its next send that the others left.
        StreamClient later(url());
        later.readBody(1000);
    }
    EXPECT_EQ(station_->encodersStarted(), 3);
}

TEST_F(StreamTest, AnswersWithTheStatusAskedForAndOffline)
{
    const struct
    {
        QString url;
        QByteArray status;
    } cases[] = {
        {url("?status=404"), "HTTP/1.0 404 "},
        {url("?status=500"), "HTTP/1.0 500 "},
        {url("", "110"), "HTTP/1.0 503 "},
        {url("?status=200", "110"), "HTTP/1.0 200 "},
        {url().replace("la-radio", "inconnue"), "HTTP/1.0 404 "},
        {url("?fault=html"), "HTTP/1.0 200 OK\r\nContent-Type: text/html"},
        {url("?type=text/plain"), "HTTP/1.0 200 OK\r\nConnection: close\r\nCache-Control: no-cache\r\n"
                                  "Content-Type: text/plain"},
        {url("?icy=1&piece=4"), "ICY 200 OK"},
    };
    for (const auto &test : cases) {
        StreamClient client(test.url);
        client.readBody(1);
        EXPECT_TRUE(client.head().startsWith(test.status)) << client.head().constData();
    }
}

TEST_F(StreamTest, BreaksWhereAskedTo)
{
    const struct
    {
        const char *query;
        qsizetype bytes;
        End end;
    } cases[] = {
        {"?paced=0&fault=cut&after=50001", 50001, End::Closed},
        {"?fault=reset&after=50001", 50001, End::Reset},
        {"?fault=stall&after=50001", 50001, End::Open},
        {"?fault=cut&after=0", 0, End::Closed},
        {"?fault=slow", 1024, End::Open},
    };
    for (const auto &test : cases) {
        StreamClient client(url(test.query));
        client.readBody(test.bytes);
        client.readBody(test.bytes + 1, test.end == End::Open ? 300 : 20000);
        EXPECT_EQ(client.body().size(), test.bytes) << test.query;
        EXPECT_EQ(client.end(), test.end) << test.query;
    }
    StreamClient half(url("?fault=header"));
    half.readBody(1, 500);
    EXPECT_TRUE(half.head().isEmpty());
    StreamClient garbage(url("?fault=garbage"));
    garbage.readBody(20000);
    EXPECT_FALSE(isFrames(garbage.body()));
}

TEST_F(StreamTest, TakesAnyMetadataInterval)
{
    const struct
    {
        const char *text;
        qsizetype firstBlock; // 0: none
    } cases[] = {{"8192;x", 8192}, {"1", 1}, {"0", 0}, {"-5", 0}, {"abc", 0}, {"99999999999999999999", 0}};
    for (const auto &test : cases) {
        StreamClient client(url((QByteArray("?metaint=") + test.text).constData()), askForTitles);
        client.readBody(20000);
        EXPECT_TRUE((client.head() + "\r\n").contains(QByteArray("icy-metaint: ") + test.text + "\r\n"));
        const qsizetype title = client.body().indexOf("StreamTitle='");
        EXPECT_EQ(title, test.firstBlock == 0 ? -1 : test.firstBlock + 1) << test.text;
    }
}

TEST_F(StreamTest, StopsAtOnceWithOpenStreams)
{
    std::vector<std::unique_ptr<StreamClient>> clients;
    for (const char *query : {"", "?fault=stall&after=1000", "?fault=slow", "?fault=header", "?paced=0"})
        clients.push_back(std::make_unique<StreamClient>(url(query)));
    for (const auto &client : clients)
        client->readBody(1000, 500);
    QElapsedTimer timer;
    timer.start();
    station_.reset();
    EXPECT_LT(timer.elapsed(), 1000);
    for (const auto &client : clients) {
        client->readBody(100'000'000);
        EXPECT_NE(client->end(), End::Open);
    }
}
