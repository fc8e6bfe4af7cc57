#include "audio/probe/StreamMetadataGetter.h"
#include "platform/foundation/MainQueue.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

Url url(const QString &text) { return Url::fromText(text).value(); }

// Asks for a stream's metadata and notes what comes.
struct Asked
{
    void ask(const QString &stream)
    {
        getter->getMetadataFromUrl(url(stream), [this](const auto &d, const auto &r, const auto &e) {
            EXPECT_TRUE(MainQueue::isMainThread());
            ++calls;
            dictionary = d;
            response = r;
            error = e;
            also();
        });
    }
    QString title() const { return dictionary.value_or(MetadataDictionary()).value("StreamTitle"); }

    std::shared_ptr<StreamMetadataGetter> getter = std::make_shared<StreamMetadataGetter>();
    int calls = 0;
    std::optional<MetadataDictionary> dictionary;
    std::optional<UrlResponse> response;
    std::optional<NetError> error;
    std::function<void()> also = [] {};
};

const QByteArray head = httpHead("Content-Type: audio/mpeg\r\nicy-metaint: 5\r\n");
const QByteArray longHead =
    httpHead("Content-Type: audio/mpeg\r\nicy-metaint: 5\r\nContent-Length: 1000\r\n");
const QByteArray title = "sound\x02StreamTitle='Orvel - Matin';" + QByteArray(4, '\0');

bool isQuiet(const ScriptedServer &server)
{
    return waitUntil([&] { return server.requestCount() > 0 && server.openConnections() == 0; });
}

} // namespace

TEST(StreamProbeTest, TellsFailuresWithWhatWasKnown)
{
    const struct
    {
        Script script;
        double turn; // once all has been sent
        bool known;
        NetError::Code code;
    } cases[] = {
        {{Send{longHead}, Send{"soun"}}, 0, true, NetError::Code::ConnectionLost}, // more was announced
        {{Send{head}, Send{"soun"}, WaitForRelease{}}, 10.5, true, NetError::Code::TimedOut},
        {{Reset{}}, 0, false, NetError::Code::ConnectionLost},
    };
    for (const auto &test : cases) {
        TakenClock clock;
        ScriptedServer server(test.script);
        Asked asked;
        asked.ask(server.url());
        ASSERT_TRUE(waitUntil([&] {
            if (server.bytesSent() == head.size() + 4) {
                letEventsRun();
                clock.turn(test.turn);
            }
            return asked.calls > 0;
        }));
        EXPECT_EQ(asked.dictionary.has_value(), test.known);
        EXPECT_EQ(asked.response.has_value(), test.known);
        EXPECT_EQ(asked.error->code, test.code);
    }
}

TEST(StreamProbeTest, IsSilentAboutAStreamThatNeverGivesItsMetadata)
{
    const Script scripts[] = {
        {Send{head}, Send{"soun"}},
        {Send{"ICY 200 OK\r\nicy-metaint:8\r\n\r\n"}},
        // Ends where the bound is.
        {Send{httpHead("Content-Type: audio/mpeg\r\nicy-metaint: 999999999999\r\n")},
         SendForever{QByteArray(65536, 's')}},
    };
    for (const Script &script : scripts) {
        ScriptedServer server(script);
        Asked asked;
        asked.ask(server.url());
        ASSERT_TRUE(isQuiet(server));
        letEventsRun();
        EXPECT_EQ(asked.calls, 0);
        EXPECT_LT(server.bytesSent(), 3 * StreamRequest::maxProbedBytes);
        // Free for the next one.
        ScriptedServer other({Send{head}, Send{title}});
        asked.ask(other.url());
        EXPECT_TRUE(waitUntil([&] { return asked.calls == 1; }));
    }
}

TEST(StreamProbeTest, ForgetsTheRequestThatAnotherReplaces)
{
    ScriptedServer first({Send{head}, SendForever{"sound", 0.001}});
    ScriptedServer second({Send{head}, SendForever{title}});
    Asked asked;
    asked.getter->getMetadataFromUrl(url(first.url()), [](const auto &...) { ADD_FAILURE(); });
    ASSERT_TRUE(waitUntil([&] { return first.bytesSent() > head.size(); }));
    asked.ask(second.url());
    ASSERT_TRUE(waitUntil([&] { return asked.calls == 1; }));
    EXPECT_EQ(asked.title(), "Orvel - Matin");
    EXPECT_TRUE(isQuiet(first));
}

TEST(StreamProbeTest, MayAskAgainOrBeLetGoOfInItsHandler)
{
    const ScriptedServer server({Send{head}, SendForever{title}});
    Asked asked;
    asked.also = [&] {
        EXPECT_EQ(asked.title(), "Orvel - Matin");
        EXPECT_EQ(asked.response->statusCode, 200);
        if (asked.calls < 5)
            asked.ask(server.url());
        else
            asked.getter.reset();
    };
    asked.ask(server.url());
    ASSERT_TRUE(waitUntil([&] { return asked.getter == nullptr; }));
    EXPECT_TRUE(isQuiet(server));
    letEventsRun();
    EXPECT_EQ(asked.calls, 5);
    EXPECT_TRUE(server.requests()[0].contains("\r\nIcy-MetaData: 1\r\n"));
}

TEST(StreamProbeTest, TouchesNothingOnceLetGoOf)
{
    ScriptedServer server({Send{head}, SendForever{"soun", 0.0005}});
    for (int turns = 0; turns < 60; ++turns) {
        auto getter = std::make_shared<StreamMetadataGetter>();
        getter->getMetadataFromUrl(url(server.url()),
                                   [held = getter.get()](const auto &...) { ADD_FAILURE() << held; });
        int left = turns; // let go of at another point of the request each time
        waitUntil([&] { return left-- == 0; });
        getter.reset();
    }
    EXPECT_TRUE(isQuiet(server));
    letEventsRun();
}
