#include "api/PostData.h"

#include "api/StationConfiguration.h"
#include "platform/foundation/RunLoop.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

struct Screen : PostDataDelegate
{
    void PostSuccess(const JsonValue &answer) override { response = answer; }
    void PostFail(const QString &text) override { message = text; }

    JsonValue response;
    QString message;
};

struct PostDataTest : testing::Test
{
    ~PostDataTest() override { StationConfiguration::use(StationConfiguration::compiledIn()); }

    // Both services are the one server, each under a path of its own.
    static void useServer(const ScriptedServer &server)
    {
        StationConfiguration station = StationConfiguration::compiledIn();
        station.siteUrl = server.url("/station");
        station.networkWebradioUrl = server.url("/network/api/webradio");
        StationConfiguration::use(station);
    }

    // As a screen does it: from a delayed perform, dropping its own reference. The clock stands at
    // 1400000000.
    std::shared_ptr<Screen> run(const std::function<void(PostData &)> &operation)
    {
        auto screen = std::make_shared<Screen>();
        RunLoop::main().after(0.1, [screen, &operation] {
            auto request = std::make_shared<PostData>();
            request->setDelegate(screen);
            operation(*request);
            EXPECT_NE(screen->response.isAbsent(), screen->message.isNull()) << "answered before it returns";
        });
        m_clock.turn(0.1);
        EXPECT_EQ(screen.use_count(), 1);
        return screen;
    }

    TakenClock m_clock;
};

} // namespace

TEST_F(PostDataTest, SendsTheSignedHeadersInOrderAndNoBody)
{
    const StationConfiguration keys = StationConfiguration::compiledIn();
    const struct
    {
        std::function<void(PostData &)> operation;
        QByteArray target;
        QString publicKey;
        QByteArray hash; // by openssl
    } cases[] = {
        {[](PostData &post) { post.postGetSecondSection("playlist"); }, "/station/api/playlist",
         keys.stationPublicKey, "CFd1QEePPlhGRGaiNQRAYJQmHgM="},
        {[](PostData &post) { post.postGetTarvaneRadio(); }, "/network/api/webradio", keys.networkPublicKey,
         "GspszLB9VxVfnslH/tQTZ+zEpBE="},
        {[](PostData &post) { post.postCommints("ignored"); }, "/station/api/", keys.stationPublicKey,
         "PX8ETklOdKjqJqSdyLVhY+hq8CQ="},
    };
    const ScriptedServer server(answer(R"({"content":[]})"));
    useServer(server);
    for (const auto &expected : cases) {
        EXPECT_TRUE(run(expected.operation)->response["content"].isArray());
        const QByteArray request = server.requests().back();
        EXPECT_TRUE(request.startsWith("POST " + expected.target + " HTTP/1.1\r\n")) << request.constData();
        EXPECT_TRUE(request.contains("\r\nX-Public-Key: " + expected.publicKey.toLatin1() +
                                     "\r\nX-Request-Hash: " + expected.hash +
                                     "\r\nX-Request-Timestamp: 1400000000"
                                     "\r\nContent-Type: application/json; charset=utf-8\r\n"))
            << request.constData();
        EXPECT_TRUE(request.contains("\r\nContent-Length: 0\r\n")) << request.constData();
        EXPECT_EQ(request.indexOf("\r\n\r\n"), request.size() - 4);
    }
    EXPECT_EQ(server.requestCount(), std::size(cases));
}

TEST_F(PostDataTest, JudgesAnAnswerByItsBodyAlone)
{
    const QString noData = QStringLiteral("Error in data finding");
    const std::pair<Script, QString> cases[] = {
        {answer(R"({"error":{"message":"Non"}})", "HTTP/1.1 500 Internal Server Error"), {}},
        {answer("<html></html>"), noData},
        {answer("\"lone\""), noData},
        {answer(""), noData},
        {answer("{\"a\":\"\xE9\"}"), noData},
    };
    for (const auto &[script, message] : cases) {
        const ScriptedServer server(script);
        useServer(server);
        const auto screen = run([](PostData &post) { post.postGetSecondSection("show"); });
        EXPECT_EQ(screen->message, message);
        EXPECT_EQ(screen->response["error"]["message"].text(), message.isNull() ? "Non" : "(null)");
    }
}

TEST_F(PostDataTest, TellsWhyARequestFailed)
{
    useServer(ScriptedServer(Script{})); // gone again: nobody listens there
    const auto ask = [this](const char *path) {
        return run([path](PostData &post) { post.postGetSecondSection(path); })->message;
    };
    EXPECT_EQ(ask("show"), "Le serveur ne répond pas.");
    EXPECT_EQ(ask("search/deux mots"), "L'adresse demandée n'est pas valable.");
}
