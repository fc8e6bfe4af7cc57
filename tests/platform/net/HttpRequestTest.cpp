#include "platform/net/HttpRequest.h"

#include "platform/foundation/InputGate.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"
#include "platform/net/UrlConnection.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <QCoreApplication>
#include <gtest/gtest.h>
#include <httplib.h>
#include <thread>

using namespace orvel;
using namespace orvel::test;

namespace {

class Screen : public HttpRequestDelegate
{
public:
    void requestFinished(HttpRequest &request) override
    {
        text = request.responseString();
        status = request.response().statusCode;
        note();
    }
    void requestFailed(HttpRequest &request) override
    {
        failure = request.error().localizedDescription;
        note();
    }
    bool isAnswered() const { return !failure.isNull() || status > 0; }

    QString text;
    int status = 0;
    QString failure;
    bool inputWasHeld = false;

private:
    void note() { inputWasHeld = InputGate::shared().isHeld(); }
};

std::shared_ptr<HttpRequest> post(const QString &url, const std::shared_ptr<Screen> &screen)
{
    const auto request = std::make_shared<HttpRequest>(url);
    request->setRequestMethod("POST");
    request->setDelegate(screen);
    return request;
}

// From a delayed perform, as a screen does.
void runSoon(
    const std::shared_ptr<HttpRequest> &request, const std::function<void()> &afterwards = [] {})
{
    RunLoop::main().after(0, [request, afterwards] {
        request->startSynchronous();
        afterwards();
    });
}

// Answers with what it was asked.
class EchoServer
{
public:
    EchoServer()
    {
        m_server.Post("/echo", [](const httplib::Request &request, httplib::Response &response) {
            std::string all;
            for (const char *name : {"X-Public-Key", "Content-Type", "Content-Length", "Expect"})
                all += std::string(name) + "=" + request.get_header_value(name) + "\n";
            response.status = 500;
            response.set_content(all + request.body, "text/plain; charset=utf-8");
        });
        m_port = m_server.bind_to_any_port("127.0.0.1");
        m_thread = std::thread([this] { m_server.listen_after_bind(); });
    }
    ~EchoServer()
    {
        m_server.stop();
        m_thread.join();
    }
    QString url() const { return QStringLiteral("http://127.0.0.1:%1/echo").arg(m_port); }

private:
    httplib::Server m_server;
    int m_port = 0;
    std::thread m_thread;
};

TEST(HttpRequestTest, PostsHeadersAndForm)
{
    const EchoServer server;
    for (const bool withForm : {false, true}) {
        const auto screen = std::make_shared<Screen>();
        const auto request = post(server.url(), screen);
        request->addRequestHeader("X-Public-Key", "first");
        request->addRequestHeader("Content-Type", "application/json; charset=utf-8");
        request->addRequestHeader("x-public-key", "second");
        if (withForm) {
            request->addPostValue("Zoé & Cie", "name");
            request->addPostValue("a+b=c@d.fr", "e mail");
        }
        runSoon(request);
        ASSERT_TRUE(waitUntil([&] { return screen->isAnswered(); }));
        EXPECT_EQ(screen->status, 500);
        EXPECT_EQ(screen->text,
                  withForm
                      ? "X-Public-Key=second\nContent-Type=application/x-www-form-urlencoded; charset=utf-8\n"
                        "Content-Length=51\nExpect=\nname=Zo%C3%A9%20%26%20Cie&e%20mail=a%2Bb%3Dc%40d.fr"
                      : "X-Public-Key=second\nContent-Type=application/json; charset=utf-8\n"
                        "Content-Length=0\nExpect=\n");
    }
    closeConnections(); // the server waits for kept ones
}

TEST(HttpRequestTest, ReadsTheBodyAsText)
{
    struct
    {
        const char *type;
        QByteArray body;
        QString text;
    } const cases[] = {
        {"application/json", "\xc3\xa9t\xc3\xa9", "été"},
        {"application/json", "\xe9t\xe9", QString()},
        {"text/html; charset=\"ISO-8859-1\"", "\xe9t\xe9", "été"},
        {"text/html; charset=x-unknown", "\xc3\xa9", "é"},
    };
    for (const auto &it : cases) {
        const ScriptedServer server(
            Script{Send{httpHead(QByteArray("Content-Type: ") + it.type + "\r\n") + it.body}});
        const auto screen = std::make_shared<Screen>();
        runSoon(post(server.url(), screen));
        ASSERT_TRUE(waitUntil([&] { return screen->isAnswered(); }));
        EXPECT_EQ(screen->text, it.text) << it.type;
        EXPECT_EQ(screen->text.isNull(), it.text.isNull());
    }
}

TEST(HttpRequestTest, FailsWithATextForPeople)
{
    struct
    {
        QString url;
        Script script;
        QString failure;
    } const cases[] = {
        {"http://127.0.0.1/search/two words", {}, "unsupported URL"},
        {"http://127.0.0.1:1/", {}, "Could not connect to the server."},
        // Keeps sending, so that it is never idle.
        {{}, {Send{httpHead()}, SendForever{"x", 0.01}}, "The request timed out."},
        {{}, {Send{httpHead()}, SendForever{QByteArray(1 << 20, 'x')}}, "The server's answer is too long."},
    };
    for (const auto &it : cases) {
        const ScriptedServer server(it.script);
        const auto screen = std::make_shared<Screen>();
        const auto request = post(it.url.isNull() ? server.url() : it.url, screen);
        request->setTimeOutSeconds(it.failure.contains("timed out") ? 0.2 : 60);
        runSoon(request);
        ASSERT_TRUE(waitUntil([&] { return screen->isAnswered(); }));
        EXPECT_EQ(screen->failure, it.failure);
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
}

TEST(HttpRequestTest, WaitsWhileTheRestGoesOn)
{
    ScriptedServer server({Script{WaitForRelease{}, Send{httpHead()}, Send{"first"}},
                           Script{Send{httpHead()}, Send{"second"}}});
    const auto first = std::make_shared<Screen>();
    const auto second = std::make_shared<Screen>();
    bool firstReturned = false;
    bool secondReturned = false;
    runSoon(post(server.url(), first), [&] { firstReturned = first->isAnswered(); });
    runSoon(post(server.url(), second), [&] { secondReturned = second->isAnswered() && firstReturned; });
    bool beat = false;
    RunLoop::main().after(
        0.02,
        [&] {
            beat = true;
            EXPECT_TRUE(InputGate::shared().isHeld());
            EXPECT_EQ(server.requestCount(), 1u);
            MainQueue::async([&] { server.release(); });
        },
        RunLoop::Lane::Service);
    ASSERT_TRUE(waitUntil([&] { return secondReturned; }));
    EXPECT_TRUE(beat);
    EXPECT_EQ(first->text + ' ' + second->text, "first second");
    EXPECT_TRUE(first->inputWasHeld);
    EXPECT_FALSE(InputGate::shared().isHeld());
}

TEST(HttpRequestTest, ReturnsSilentlyWhenTheApplicationQuits)
{
    for (const bool before : {false, true}) {
        const ScriptedServer server(Script{Send{httpHead()}, SendForever{"x", 0.01}});
        const auto screen = std::make_shared<Screen>();
        bool returned = false;
        const auto quit = [] { QCoreApplication::exit(); };
        RunLoop::main().after(0, [&] {
            if (before)
                quit();
            else
                RunLoop::main().after(0.05, quit, RunLoop::Lane::Service);
            post(server.url(), screen)->startSynchronous();
            returned = true;
        });
        QCoreApplication::exec();
        EXPECT_TRUE(returned);
        EXPECT_FALSE(screen->isAnswered());
        EXPECT_EQ(screen.use_count(), 1);
        EXPECT_FALSE(InputGate::shared().isHeld());
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
}

} // namespace
