#include "platform/net/UrlConnection.h"

#include "platform/foundation/RunLoop.h"
#include "platform/net/CurlHandles.h"
#include "platform/net/CurlOptions.h"
#include "platform/net/OwnNetwork.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <QStringList>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

using namespace orvel;
using namespace orvel::test;
using Code = NetError::Code;

namespace {

// Notes what a connection delivers; `also` runs inside each callback.
struct RecordingDelegate : UrlConnectionDelegate
{
    void didReceiveResponse(UrlConnection &connection, const UrlResponse &it) override
    {
        response = it;
        note(connection, "response");
    }
    void didReceiveData(UrlConnection &connection, QByteArrayView bytes) override
    {
        if (body.isEmpty())
            firstChunk = bytes.size();
        body.append(bytes);
        if (events.last() != "data") // the first of a row
            note(connection, "data");
    }
    void didFailWithError(UrlConnection &connection, const NetError &it) override
    {
        error = it;
        isOver = true;
        note(connection, "failure");
    }
    void connectionDidFinishLoading(UrlConnection &connection) override
    {
        isOver = true;
        note(connection, "end");
    }

    QStringList events{""};
    UrlResponse response;
    QByteArray body;
    qsizetype firstChunk = 0;
    std::optional<NetError> error;
    bool isOver = false;
    std::function<void(UrlConnection &, const QString &event)> also = [](UrlConnection &, const QString &) {};
    void note(UrlConnection &connection, const char *event)
    {
        events += QString::fromLatin1(event);
        also(connection, events.last());
    }
};

std::shared_ptr<UrlConnection> start(const QString &url, const std::shared_ptr<RecordingDelegate> &delegate,
                                     double idleTimeout = 60, bool acceptsBareAnswer = false)
{
    return UrlConnection::start({.url = Url::fromText(url).value(),
                                 .idleTimeout = idleTimeout,
                                 .acceptsBareAnswer = acceptsBareAnswer},
                                delegate);
}

void restFor(double seconds)
{
    waitUntil([] { return false; }, seconds);
}

// "Bonjour" as gzip -n makes it.
const QByteArray gzipped = QByteArray::fromHex("1f8b080000000000000373cacfcbca2f2d020054c90b6a07000000");
const QByteArray large(24 * 1024 * 1024, '\0'); // comes through the pauses for its size
const QByteArray icy = "ICY 200 OK\r\nicy-name: Orvel\r\n\r\nsound";
const QByteArray packedHead = httpHead("Content-Encoding: gzip\r\n");
const Send toOther{httpHead("Location: /other\r\nX-Of: redirect\r\n", "HTTP/1.1 302 Found")};

} // namespace

TEST(UrlConnectionTest, DeliversAnAnswerByItsHeadItsBodyAndItsEnd)
{
    const struct
    {
        const char *name;
        std::vector<Script> answers;
        QByteArray body{};
        int status = 200;
        std::optional<Code> error{};
        bool acceptsBareAnswer = true;
    } cases[] = {
        {"short", {{Send{httpHead()}, Send{"short"}}}, "short"},
        {"in pieces",
         {{Send{httpHead()}, Pause{0.02}, Send{"twenty bytes"}, Send{" of text"}}},
         "twenty bytes of text"},
        {"no body", {{Send{httpHead("Content-Length: 0\r\n")}}}},
        {"HTTP error", {{Send{httpHead({}, "HTTP/1.0 503 Unavailable")}}}, {}, 503},
        {"interim", {{Send{httpHead("A: b\r\n", "HTTP/1.1 100 Continue")}, Send{httpHead() + "b"}}}, "b"},
        {"redirect", {{toOther}, {Send{httpHead() + "b"}}}, "b"},
        {"redirect to a bare answer", {{toOther}, {Send{icy}}}, icy, 0},
        {"redirect to itself", {{toOther}}, {}, 0, Code::TooManyRedirects},
        {"bare",
         {{Send{icy.left(2)}, Pause{0.03}, Send{icy.mid(2, 10)}, Pause{0.03}, Send{icy.mid(12)}}},
         icy,
         0},
        {"bare, but not from a stream", {{toOther}, {Send{icy}}}, {}, 0, Code::Other, false},
        {"redirect to no web address",
         {{Send{httpHead("Location: ftp://{server}/\r\n", "HTTP/1.1 302 Found")}}},
         {},
         0,
         Code::UnsupportedUrl},
        {"packed", {{Send{packedHead + gzipped}}}, "Bonjour"},
        {"unpacked to far more than came",
         {{Send{httpHead("Content-Encoding: deflate\r\n") + qCompress(large, 9).mid(4)}}},
         large},
        {"badly packed", {{Send{packedHead + "no gzip at all"}}}, {}, 200, Code::Other},
        {"cut", {{Send{httpHead("Content-Length: 99\r\n") + "part"}}}, "part", 200, Code::ConnectionLost},
        {"reset",
         {{Send{httpHead() + "the part that came"}, WaitForRelease{}, Reset{}}},
         "the part that came",
         200,
         Code::ConnectionLost},
        {"nothing at all", {{Close{}}}, {}, 0, Code::ConnectionLost},
    };
    for (const auto &it : cases) {
        SCOPED_TRACE(it.name);
        ScriptedServer server(it.answers);
        const auto delegate = std::make_shared<RecordingDelegate>();
        delegate->also = [&](UrlConnection &, const QString &event) {
            if (event == "data")
                server.release();
        };
        const std::weak_ptr connection =
            start(server.url(), delegate, 60, it.acceptsBareAnswer); // keeps itself
        EXPECT_EQ(delegate->events.size(), 1) << "delivered inside start()";
        ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
        letEventsRun();
        QStringList events{"", "response", "data", it.error ? "failure" : "end"};
        if (it.body.isEmpty())
            events.removeAll("data");
        if (it.error && it.status == 0)
            events.removeAll("response");
        EXPECT_EQ(delegate->events, events);
        EXPECT_EQ(delegate->response.statusCode, it.status);
        EXPECT_EQ(delegate->body, it.body);
        EXPECT_GE(delegate->firstChunk, std::min<qsizetype>(16, it.body.size()));
        EXPECT_FALSE(delegate->response.headers.value("X-Of"));
        EXPECT_EQ(delegate->error ? std::optional(delegate->error->code) : std::nullopt, it.error);
        EXPECT_TRUE(connection.expired());
        EXPECT_EQ(delegate.use_count(), 1);
    }
}

TEST(UrlConnectionTest, SaysThatThereIsNoNetwork)
{
    const OwnNetwork network;
    if (!network.isUsed())
        GTEST_SKIP() << "a network of its own needs root";
    OwnNetwork::run("ip link set lo up"); // is not one
    for (const char *url : {"http://10.1.2.3/", "http://orvel.invalid/"}) {
        const auto delegate = std::make_shared<RecordingDelegate>();
        start(url, delegate);
        ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
        EXPECT_EQ(delegate->error->code, Code::NoNetwork) << url;
    }
}

TEST(UrlConnectionTest, DoesNotBeginWithoutOneOfItsOptions)
{
    const CurlEasy easy(curl_easy_init());
    CurlOptions options(easy.get());
    options.set(CURLOPT_MAXREDIRS, -2L);
    options.set(CURLOPT_NOSIGNAL, 1L);
    EXPECT_EQ(options.result(), CURLE_BAD_FUNCTION_ARGUMENT);

    const auto delegate = std::make_shared<RecordingDelegate>();
    start("http://127.0.0.1/" + QString(8'000'000, u'x'), delegate); // curl takes no longer one
    ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
    EXPECT_EQ(delegate->error->code, Code::Other);
}

TEST(UrlConnectionTest, SendsAndReadsHeaderFields)
{
    const ScriptedServer server(
        Script{Send{httpHead("icy-name: Caf\xe9\r\nICY-Name: Caf\xc3\xa9 \xe2\x99\xaa\r\nX-Latin: "
                             "\xe9t\xe9\r\nX-Long: a\r\n b\r\nX-None:\r\n")}});
    const auto delegate = std::make_shared<RecordingDelegate>();
    UrlRequest request{.url = Url::fromText(server.url("/a/../été?q=é")).value()};
    request.headers.set("Icy-Metadata", "1");
    request.headers.set("User-Agent", "Orvel\r\nX-Smuggled: 1");
    request.headers.set("icy-metadata", "2");
    UrlConnection::start(request, delegate);
    ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
    const HeaderFields &headers = delegate->response.headers;
    EXPECT_EQ(headers.value("icy-NAME"), QString("Café ♪"));
    EXPECT_EQ(headers.value("x-latin"), QString("été"));
    EXPECT_EQ(headers.value("x-long"), QString("a b"));
    EXPECT_EQ(headers.value("x-none"), QString(""));
    EXPECT_FALSE(headers.value("x-other"));
    const QByteArray sent = server.requests().at(0);
    EXPECT_TRUE(sent.startsWith("GET /a/../%C3%A9t%C3%A9?q=%C3%A9 HTTP/1.1\r\n")) << sent.constData();
    EXPECT_TRUE(sent.contains("\r\nicy-metadata: 2\r\nUser-Agent: OrvelX-Smuggled: 1\r\n"))
        << sent.constData();
}

TEST(UrlConnectionTest, IsNotIdleWhileSuspended)
{
    TakenClock clock;
    const ScriptedServer server(Script{Send{httpHead() + QByteArray(20, 'a')}, Stall{}});
    const auto delegate = std::make_shared<RecordingDelegate>();
    const auto connection = start(server.url(), delegate, 30);
    ASSERT_TRUE(waitUntil([&] { return !delegate->body.isEmpty(); }));
    clock.turn(29);
    connection->suspend();
    clock.turn(1000);
    connection->resume();
    clock.turn(29);
    EXPECT_FALSE(delegate->isOver);
    clock.turn(1);
    ASSERT_TRUE(delegate->error);
    EXPECT_EQ(delegate->error->code, Code::TimedOut);
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
}

TEST(UrlConnectionTest, IsSilentOnceCancelledInACallback)
{
    for (const QString event : {"response", "data", "failure", "end"}) {
        const QByteArray head = event == "failure" ? httpHead("Content-Length: 99\r\n") : httpHead();
        const ScriptedServer server(Script{Send{head + "some bytes, more than sixteen"}});
        auto delegate = std::make_shared<RecordingDelegate>();
        const std::weak_ptr watched = delegate;
        QStringList events;
        delegate->also = [&](UrlConnection &connection, const QString &now) {
            events += now;
            if (now != event)
                return;
            connection.cancel();
            connection.cancel();
            EXPECT_FALSE(watched.expired());
        };
        start(server.url(), delegate);
        delegate.reset();
        ASSERT_TRUE(waitUntil([&] { return watched.expired(); })) << qPrintable(event);
        EXPECT_EQ(events.last(), event);
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
}

TEST(UrlConnectionTest, HoldsTheServerBackWhileSuspended)
{
    const QByteArray piece = QByteArray("Each piece in its place. ").repeated(2'600);
    Script script{Send{httpHead()}};
    script.insert(script.end(), 500, Send{piece});
    const ScriptedServer server(script);
    const auto delegate = std::make_shared<RecordingDelegate>();
    const auto connection = start(server.url(), delegate);
    delegate->also = [](UrlConnection &it, const QString &event) {
        if (event == "data")
            it.suspend();
    };
    ASSERT_TRUE(waitUntil([&] { return !delegate->body.isEmpty(); }));
    const qsizetype received = delegate->body.size();
    for (qint64 sent = 0; sent != server.bytesSent();) {
        sent = server.bytesSent();
        restFor(0.3);
    }
    EXPECT_EQ(delegate->body.size(), received);
    EXPECT_LT(server.bytesSent(), 250 * piece.size());
    connection->resume();
    EXPECT_EQ(delegate->body.size(), received) << "delivered inside resume()";
    ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
    EXPECT_TRUE(delegate->body == piece.repeated(500));
}

// Rests for five seconds: what was asked for, or half of the time-out.
void restsBetweenReads(double interval, double idleTimeout)
{
    const QByteArray piece(20, 'x');
    ScriptedServer server(
        Script{Send{httpHead()}, Send{piece}, WaitForRelease{}, Send{piece}, WaitForRelease{}, Send{piece}});
    const auto delegate = std::make_shared<RecordingDelegate>();
    TakenClock clock;
    delegate->also = [=](UrlConnection &it, const QString &event) {
        if (event == "data")
            it.readAtMostEvery(interval);
    };
    const auto connection = start(server.url(), delegate, idleTimeout);
    const qint64 head = httpHead().size();
    const auto sent = [&](int pieces) {
        return waitUntil([&] { return server.bytesSent() == head + pieces * piece.size(); });
    };
    ASSERT_TRUE(waitUntil([&] { return !delegate->body.isEmpty(); }));
    restFor(0.5); // curl looks by itself while its timers of the connecting run out
    server.release();
    ASSERT_TRUE(sent(2));
    restFor(0.1);
    EXPECT_EQ(delegate->body.size(), piece.size());
    clock.turn(5);
    EXPECT_TRUE(waitUntil([&] { return delegate->body.size() == 2 * piece.size(); }));

    server.release();
    ASSERT_TRUE(sent(3));
    restFor(0.1);
    EXPECT_EQ(delegate->body.size(), 2 * piece.size());
    connection->readAtMostEvery(0);
    EXPECT_TRUE(waitUntil([&] { return delegate->isOver; })) << "the rest did not end at once";
}

TEST(UrlConnectionTest, RestsBetweenReadsWhereThatIsEnough)
{
    restsBetweenReads(5, 60);
    restsBetweenReads(60, 10);
}

TEST(UrlConnectionTest, OthersFlowWhileACallbackWaits)
{
    const ScriptedServer live(Script{Send{httpHead()}, SendForever{QByteArray(512, 'x'), 0.001}});
    const ScriptedServer page(Script{Send{httpHead()}, Send{"page"}});
    const auto stream = std::make_shared<RecordingDelegate>();
    const auto other = std::make_shared<RecordingDelegate>();
    stream->also = [&](UrlConnection &connection, const QString &event) {
        if (event != "data")
            return;
        const qsizetype before = stream->body.size();
        start(page.url(), other);
        EXPECT_TRUE(waitUntil([&] { return other->isOver; }));
        EXPECT_EQ(stream->body.size(), before) << "delivered into a callback of its own";
        connection.cancel();
    };
    start(live.url(), stream);
    ASSERT_TRUE(waitUntil([&] { return other->isOver; }));
    EXPECT_EQ(other->body, "page");
    EXPECT_TRUE(waitUntil([&] { return live.openConnections() == 0; }));
}

TEST(UrlConnectionTest, ClosingConnectionsCancelsThemAll)
{
    const ScriptedServer server(Script{Send{httpHead()}, SendForever{QByteArray(512, 'x'), 0.001}});
    auto first = std::make_shared<RecordingDelegate>();
    start(server.url(), first)->readAtMostEvery(0.05);
    start(server.url(), std::make_shared<RecordingDelegate>())->suspend();
    ASSERT_TRUE(waitUntil([&] { return !first->body.isEmpty() && server.requestCount() == 2; }));
    closeConnections();
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    restFor(0.1); // a rest's end is still scheduled
    EXPECT_FALSE(first->isOver);
}
