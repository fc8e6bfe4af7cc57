#include "platform/net/UrlConnection.h"

#include "platform/foundation/RunLoop.h"
#include "platform/net/RecordingDelegate.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <QEventLoop>
#include <gtest/gtest.h>
#include <thread>

using namespace orvel;
using namespace orvel::test;
using Code = NetError::Code;

namespace {

std::shared_ptr<UrlConnection> start(const QString &url, const std::shared_ptr<RecordingDelegate> &delegate,
                                     double idleTimeout = 60)
{
    return UrlConnection::start({.url = Url::fromText(url).value(), .idleTimeout = idleTimeout}, delegate);
}

// "Bonjour" as gzip -n makes it.
const QByteArray gzipped = QByteArray::fromHex("1f8b080000000000000373cacfcbca2f2d020054c90b6a07000000");
const QByteArray icy = "ICY 200 OK\r\nicy-name: Orvel\r\n\r\nsound";
const QByteArray toOther = httpHead("Location: /other\r\nX-Of: redirect\r\n", "HTTP/1.1 302 Found");

struct Case
{
    const char *name;
    std::vector<Script> scripts;
    QString events;
    int status = 200;
    QByteArray body{};
    std::optional<Code> error{};
};

void PrintTo(const Case &it, std::ostream *out) { *out << it.name; }

std::vector<Case> cases()
{
    return {
        {"Plain",
         {{Send{httpHead()}, Pause{0.02}, Send{"twenty bytes of text"}}},
         "response,data,end",
         200,
         "twenty bytes of text"},
        {"ShortBody", {{Send{httpHead()}, Send{"short"}}}, "response,data,end", 200, "short"},
        {"NoBody", {{Send{httpHead("Content-Length: 0\r\n")}}}, "response,end"},
        {"HttpError", {{Send{httpHead({}, "HTTP/1.0 503 Unavailable")}}}, "response,end", 503},
        {"Interim",
         {{Send{httpHead("A: b\r\n", "HTTP/1.1 100 Continue")}, Send{httpHead()}, Send{"b"}}},
         "response,data,end",
         200,
         "b"},
        {"Redirect", {{Send{toOther}}, {Send{httpHead()}, Send{"b"}}}, "response,data,end", 200, "b"},
        {"RedirectToIcy", {{Send{toOther}}, {Send{icy}}}, "response,data,end", 0, icy},
        {"RedirectLoop", {{Send{toOther}}}, "failure", 0, {}, Code::TooManyRedirects},
        {"RedirectToFile",
         {{Send{httpHead("Location: file:///etc/hostname\r\n", "HTTP/1.1 302 Found")}}},
         "failure",
         0,
         {},
         Code::UnsupportedUrl},
        {"Icy", {{Send{icy}}}, "response,data,end", 0, icy},
        {"IcyInPieces",
         {{Send{icy.left(2)}, Pause{0.03}, Send{icy.mid(2, 10)}, Pause{0.03}, Send{icy.mid(12)}}},
         "response,data,end",
         0,
         icy},
        {"Gzip",
         {{Send{httpHead("Content-Encoding: gzip\r\n")}, Send{gzipped}}},
         "response,data,end",
         200,
         "Bonjour"},
        {"BadGzip",
         {{Send{httpHead("Content-Encoding: gzip\r\n")}, Send{"no gzip at all"}}},
         "response,failure",
         200,
         {},
         Code::Other},
        {"Cut",
         {{Send{httpHead("Content-Length: 99\r\n")}, Send{"part"}}},
         "response,data,failure",
         200,
         "part",
         Code::ConnectionLost},
        {"Reset",
         {{Send{httpHead()}, Send{"part"}, Pause{0.05}, Reset{}}},
         "response,data,failure",
         200,
         "part",
         Code::ConnectionLost},
        {"NothingAtAll", {{Close{}}}, "failure", 0, {}, Code::ConnectionLost},
        {"EndlessHead",
         {{Send{"HTTP/1.1 200 OK\r\n"}, SendForever{QByteArray("A: b\r\n").repeated(500)}}},
         "failure",
         0,
         {},
         Code::Other},
        {"EndlessLine",
         {{Send{"HTTP/1.1 200 OK\r\nA: "}, SendForever{QByteArray(4000, 'b')}}},
         "failure",
         0,
         {},
         Code::Other},
        {"EndlessInterim",
         {{SendForever{httpHead({}, "HTTP/1.1 100 Continue").repeated(100)}}},
         "failure",
         0,
         {},
         Code::Other},
    };
}

class UrlConnectionAnswers : public testing::TestWithParam<Case>
{
};

TEST_P(UrlConnectionAnswers, AreDelivered)
{
    const Case &it = GetParam();
    const ScriptedServer server(it.scripts);
    const auto delegate = std::make_shared<RecordingDelegate>();
    const std::weak_ptr connection = start(server.url(), delegate); // keeps itself
    EXPECT_EQ(delegate->events.size(), 1) << "delivered inside start()";
    ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
    letEventsRun();
    EXPECT_EQ(delegate->events.mid(1).join(u','), it.events);
    EXPECT_EQ(delegate->response.statusCode, it.status);
    EXPECT_EQ(delegate->body, it.body);
    EXPECT_GE(delegate->firstChunk, std::min<qsizetype>(16, it.body.size()));
    EXPECT_FALSE(delegate->response.headers.value("X-Of"));
    EXPECT_EQ(delegate->error ? std::optional(delegate->error->code) : std::nullopt, it.error);
    EXPECT_TRUE(connection.expired());
    EXPECT_EQ(delegate.use_count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Each, UrlConnectionAnswers, testing::ValuesIn(cases()),
                         [](const auto &it) { return std::string(it.param.name); });

TEST(UrlConnectionTest, TellsWhyNoServerWasReached)
{
    const std::pair<QString, Code> addresses[] = {
        {"http://127.0.0.1:1/", Code::CannotConnect},
        {"http://" + QString("aa.").repeated(130) + "invalid/", Code::CannotFindHost}, // too long for any
        {"file:///etc/hostname", Code::UnsupportedUrl},
    };
    for (const auto &[url, code] : addresses) {
        const auto delegate = std::make_shared<RecordingDelegate>();
        start(url, delegate);
        ASSERT_TRUE(waitUntil([&] { return delegate->isOver; })) << qPrintable(url);
        EXPECT_EQ(delegate->events.mid(1), QStringList{"failure"});
        EXPECT_EQ(delegate->error->code, code) << qPrintable(url);
        EXPECT_FALSE(delegate->error->localizedDescription.isEmpty());
    }
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

TEST(UrlConnectionTest, TimesOutAfterIdlenessOnly)
{
    TakenClock clock;
    ScriptedServer server(Script{Send{httpHead()}, Send{QByteArray(20, 'a')}, WaitForRelease{},
                                 Send{QByteArray(20, 'b')}, WaitForRelease{}});
    const auto delegate = std::make_shared<RecordingDelegate>();
    const auto connection = start(server.url(), delegate, 30);
    ASSERT_TRUE(waitUntil([&] { return delegate->body.size() == 20; }));
    clock.turn(29);
    server.release();
    ASSERT_TRUE(waitUntil([&] { return delegate->body.size() == 40; }));
    clock.turn(29);
    EXPECT_FALSE(delegate->isOver);
    connection->suspend();
    clock.turn(1000);
    connection->resume();
    clock.turn(29);
    EXPECT_FALSE(delegate->isOver);
    clock.turn(1);
    ASSERT_TRUE(delegate->isOver);
    EXPECT_EQ(delegate->error->code, Code::TimedOut);
    server.release();
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
    constexpr qsizetype whole = 32 * 1024 * 1024;
    QByteArray bytes(whole, Qt::Uninitialized);
    for (qsizetype i = 0; i < whole; ++i)
        bytes[i] = static_cast<char>(i * 31 / 7);
    const ScriptedServer server(Script{Send{httpHead()}, Send{bytes}});
    const auto delegate = std::make_shared<RecordingDelegate>();
    const auto connection = start(server.url(), delegate);
    delegate->also = [](UrlConnection &it, const QString &event) {
        if (event == "data")
            it.suspend();
    };
    ASSERT_TRUE(waitUntil([&] { return !delegate->body.isEmpty(); }));
    const qsizetype received = delegate->body.size();
    waitUntil([] { return false; }, 0.3);
    EXPECT_EQ(delegate->body.size(), received);
    EXPECT_LT(server.bytesSent(), whole / 2);
    connection->resume();
    EXPECT_EQ(delegate->body.size(), received) << "delivered inside resume()";
    ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
    EXPECT_TRUE(delegate->body == bytes);
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
    waitUntil([] { return false; }, 0.5); // curl looks by itself while its timers of the connecting run out
    server.release();
    ASSERT_TRUE(sent(2));
    waitUntil([] { return false; }, 0.1);
    EXPECT_EQ(delegate->body.size(), piece.size());
    clock.turn(5);
    EXPECT_TRUE(waitUntil([&] { return delegate->body.size() == 2 * piece.size(); }));

    server.release();
    ASSERT_TRUE(sent(3));
    waitUntil([] { return false; }, 0.1);
    EXPECT_EQ(delegate->body.size(), 2 * piece.size());
    connection->readAtMostEvery(0);
    EXPECT_TRUE(waitUntil([&] { return delegate->isOver; })) << "the rest did not end at once";
}

TEST(UrlConnectionTest, RestsBetweenReadsWhereThatIsEnough)
{
    restsBetweenReads(5, 60);
    restsBetweenReads(60, 10);
}

// A small body that unpacks to a great one must come whole and in order through the pauses for its size.
TEST(UrlConnectionTest, UnpacksFarMoreThanItReceived)
{
    const QByteArray zeros(24 * 1024 * 1024, '\0');
    const QByteArray zlib = qCompress(zeros, 9).mid(4);
    const ScriptedServer server(Script{Send{httpHead("Content-Encoding: deflate\r\n") + zlib}});
    const auto delegate = std::make_shared<RecordingDelegate>();
    start(server.url(), delegate);
    ASSERT_TRUE(waitUntil([&] { return delegate->isOver; }));
    EXPECT_FALSE(delegate->error);
    EXPECT_TRUE(delegate->body == zeros);
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

TEST(UrlConnectionTest, WorksOnAnotherThreadsEventLoop)
{
    const ScriptedServer server(Script{Send{httpHead()}, Send{"from a thread"}});
    const auto delegate = std::make_shared<RecordingDelegate>();
    std::thread([&] {
        QEventLoop loop;
        delegate->also = [&](UrlConnection &, const QString &event) {
            if (event == "end")
                loop.quit();
        };
        start(server.url(), delegate);
        loop.exec();
        closeConnections();
    }).join();
    EXPECT_EQ(delegate->body, "from a thread");
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
    waitUntil([] { return false; }, 0.1); // a rest's end is still scheduled
    EXPECT_FALSE(first->isOver);
}

} // namespace
