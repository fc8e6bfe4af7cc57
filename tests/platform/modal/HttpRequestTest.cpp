#include "platform/modal/HttpRequest.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"
#include "platform/modal/InputGate.h"
#include "platform/net/NetworkInterfaces.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

struct Screen : HttpRequestDelegate
{
    void requestFinished(HttpRequest &request) override
    {
        text = request.responseString();
        status = request.response().statusCode;
        inputWasHeld = InputGate::shared().isHeld();
    }
    void requestFailed(HttpRequest &request) override { failure = request.error().localizedDescription; }
    bool isAnswered() const { return !failure.isNull() || status > 0; }

    QString text;
    int status = 0;
    QString failure;
    bool inputWasHeld = false;
};

std::shared_ptr<HttpRequest> post(const QString &url, const std::shared_ptr<Screen> &screen = {})
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

// Returns the screen of a request that ran so.
std::shared_ptr<Screen> answered(const std::shared_ptr<HttpRequest> &request)
{
    const auto screen = std::make_shared<Screen>();
    request->setDelegate(screen);
    runSoon(request);
    EXPECT_TRUE(waitUntil([&] { return screen->isAnswered(); }));
    return screen;
}

} // namespace

TEST(HttpRequestTest, PostsHeadersAndForm)
{
    const ScriptedServer server(Script{Send{httpHead({}, "HTTP/1.1 500 No") + "text"}});
    const auto request = post(server.url());
    request->addRequestHeader("X-Public-Key", "first");
    request->addRequestHeader("Content-Type", "application/json; charset=utf-8");
    request->addRequestHeader("x-public-key", "second");
    request->addPostValue("Zoé & Cie", "name");
    request->addPostValue("a+b=c@d.fr", "e mail");
    const auto screen = answered(request);
    EXPECT_EQ(screen->status, 500);
    EXPECT_EQ(screen->text, "text");
    const QByteArray sent = server.requests().at(0);
    EXPECT_TRUE(sent.startsWith("POST / HTTP/1.1\r\n")) << sent.constData();
    EXPECT_TRUE(sent.contains("\r\nx-public-key: second\r\n"
                              "Content-Type: application/x-www-form-urlencoded; charset=utf-8\r\n"))
        << sent.constData();
    EXPECT_TRUE(sent.contains("\r\nContent-Length: 51\r\n") && !sent.contains("Expect")) << sent.constData();
    EXPECT_TRUE(sent.endsWith("\r\n\r\nname=Zo%C3%A9%20%26%20Cie&e%20mail=a%2Bb%3Dc%40d.fr"));
}

TEST(HttpRequestTest, KeepsItsMethodAndBodyOverARedirect)
{
    for (const QByteArray status : {"301", "302", "307", "308", "303"}) {
        const ScriptedServer server(
            {Script{Send{httpHead("Location: {server}/moved\r\n", "HTTP/1.1 " + status + " Moved")}},
             Script{Send{httpHead() + "text"}}});
        const auto request = post(server.url());
        request->addRequestHeader("X-Public-Key", "key");
        request->addPostValue("Zoé", "name");
        const auto screen = answered(request);
        EXPECT_EQ(screen->text, "text");
        const QByteArray sent = server.requests().at(1);
        EXPECT_TRUE(sent.startsWith(status == "303" ? "GET /moved" : "POST /moved")) << sent.constData();
        EXPECT_EQ(sent.contains("\r\n\r\nname=Zo%C3%A9"), status != "303") << sent.constData();
        EXPECT_TRUE(sent.contains("\r\nX-Public-Key: key\r\n")) << sent.constData();
    }
}

TEST(HttpRequestTest, IsNeverPostedTwice)
{
    const QByteArray moved = httpHead("Location: /\r\nContent-Length: 0\r\n", "HTTP/1.1 307 Moved");
    // Each keeps its connection, and closes it at the next request without an answer.
    const ScriptedServer server({Script{Send{httpHead("Content-Length: 4\r\n") + "page"}, NextRequest{}},
                                 Script{Send{moved}, NextRequest{}}, Script{Send{httpHead() + "again"}}});
    const auto page = post(server.url());
    page->setRequestMethod("GET");
    EXPECT_EQ(answered(page)->text, "page");
    EXPECT_EQ(answered(post(server.url()))->failure, "La connexion au serveur a été perdue.");
    EXPECT_EQ(server.requestCount(), 3u);
    EXPECT_TRUE(server.requests().back().startsWith("POST"));
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
        const auto screen = answered(post(server.url()));
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
        {"http://127.0.0.1/search/two words", {}, "L'adresse demandée n'est pas valable."},
        {"file:///etc/hostname", {}, "L'adresse demandée n'est pas valable."},
        {"http://127.0.0.1:1/", {}, "Le serveur ne répond pas."},
        {"http://" + QString("aa.").repeated(130) + "invalid/", // too long for any
         {},
         hasRouteToInternet() ? "Le serveur est introuvable." : "Il n'y a pas de connexion à Internet."},
        // Keeps sending, so that it is never idle.
        {{}, {Send{httpHead()}, SendForever{"x", 0.01}}, "Le serveur met trop de temps à répondre."},
        {{},
         {Send{httpHead()}, SendForever{QByteArray(1 << 20, 'x')}},
         "La réponse du serveur est trop longue."},
    };
    for (const auto &it : cases) {
        const ScriptedServer server(it.script);
        const auto request = post(it.url.isNull() ? server.url() : it.url);
        request->setTimeOutSeconds(it.failure.contains("temps") ? 0.2 : 60);
        const auto screen = answered(request);
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
    RunLoop::Token beat = 0;
    beat = RunLoop::main().every(
        0.01,
        [&] {
            if (server.requestCount() == 0)
                return;
            RunLoop::main().cancel(std::exchange(beat, 0));
            EXPECT_TRUE(InputGate::shared().isHeld());
            EXPECT_EQ(server.requestCount(), 1u);
            MainQueue::async([&] { server.release(); });
        },
        RunLoop::Lane::Service);
    ASSERT_TRUE(waitUntil([&] { return secondReturned; }));
    EXPECT_EQ(beat, 0u);
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
