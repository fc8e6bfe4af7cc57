#include "StreamClient.h"
#include "demo/DemoStation.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace orvel;
using test::StreamClient;
using End = StreamClient::End;

namespace {

class StreamTest : public ::testing::Test
{
protected:
    QString url(const char *query = "", const char *id = "101") const
    {
        return m_station->streamUrl(id) + QLatin1String(query);
    }

    std::unique_ptr<DemoStation> m_station = DemoStation::start({});
};

const QByteArray askForTitles = "icy-metadata: 1\r\n";
constexpr qsizetype burst = 196608;

} // namespace

TEST_F(StreamTest, GivesTheBurstAtOnceAndTheRestInRealTime)
{
    StreamClient client(url());
    client.readBody(burst);
    EXPECT_FALSE(client.head().contains("icy-metaint")) << "it was not asked for titles";
    EXPECT_GE(client.body().size(), burst);
    QElapsedTimer timer;
    timer.start();
    client.readBody(client.body().size() + 24000);
    EXPECT_GT(timer.elapsed(), 800); // 24,000 bytes are 1.5 s of sound
}

TEST_F(StreamTest, ChangesTitlesWithTheSongs)
{
    StreamClient client(url("?paced=0&seconds=75"), askForTitles);
    client.readBody(10'000'000);
    EXPECT_EQ(client.end(), End::Closed);
    EXPECT_NEAR(double(client.body().size()), 75 * 16000, 2000);
    EXPECT_EQ(client.body().count("StreamTitle='"), 4);
    EXPECT_EQ(client.body().indexOf("StreamTitle='Les Hirondelles - Partir demain';"), 16001);
}

TEST_F(StreamTest, EncodesOnceForAllListeners)
{
    EXPECT_EQ(m_station->encodersStarted(), 0);
    StreamClient first(url());
    first.readBody(burst + 13000);
    StreamClient second(url());
    second.readBody(burst);
    EXPECT_EQ(m_station->encodersStarted(), 1);
    // The second one's burst is what the first one has heard.
    EXPECT_TRUE(first.body().contains(second.body().first(100000)));
    StreamClient other(url("", "108"));
    other.readBody(1000);
    EXPECT_EQ(m_station->encodersStarted(), 2);
}

TEST_F(StreamTest, AnswersAsAskedToAndOffline)
{
    const std::pair<QString, QByteArray> cases[] = {
        {url("?status=500"), "HTTP/1.0 500 "},
        {url("", "110"), "HTTP/1.0 503 "},
        {url("?status=200", "110"), "HTTP/1.0 200 "},
        {url().replace("la-radio", "inconnue"), "HTTP/1.0 404 "},
        {url("?fault=html"), "HTTP/1.0 200 OK\r\nContent-Type: text/html"},
        {url("?icy=1&piece=4"), "ICY 200 OK"},
    };
    for (const auto &[asked, answer] : cases) {
        StreamClient client(asked);
        client.readBody(1);
        EXPECT_TRUE(client.head().startsWith(answer)) << client.head().constData();
    }
    StreamClient half(url("?fault=header"));
    half.readBody(1, 500);
    EXPECT_TRUE(half.head().isEmpty());
}

TEST_F(StreamTest, BreaksWhereAskedTo)
{
    const std::tuple<const char *, qsizetype, End> cases[] = {
        {"?paced=0&fault=cut&after=50001", 50001, End::Closed},
        {"?fault=reset&after=50001", 50001, End::Reset},
        {"?fault=stall&after=50001", 50001, End::Open},
        {"?fault=cut&after=0", 0, End::Closed},
        {"?fault=slow", 1024, End::Open},
    };
    for (const auto &[query, bytes, end] : cases) {
        StreamClient client(url(query));
        client.readBody(bytes);
        client.readBody(bytes + 1, end == End::Open ? 300 : 20000);
        EXPECT_EQ(client.body().size(), bytes) << query;
        EXPECT_EQ(client.end(), end) << query;
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
    m_station.reset();
    EXPECT_LT(timer.elapsed(), 1000);
    for (const auto &client : clients) {
        client->readBody(100'000'000);
        EXPECT_NE(client->end(), End::Open);
    }
}
