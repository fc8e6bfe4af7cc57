#include "api/json/JsonText.h"
#include "app/AppFixture.h"
#include "screens/radio/cellCustomRadio.h"
#include "support/ScriptedServer.h"

using namespace orvel;
using namespace orvel::test;

namespace {

const QByteArray head = httpHead("Content-Type: audio/mpeg\r\nicy-metaint: 4\r\n");

// A stream that says its title and goes on.
Script titled(const QByteArray &title)
{
    QByteArray block = "StreamTitle='" + title + "';";
    const auto units = (block.size() + 15) / 16;
    block.resize(units * 16, '\0');
    return {Send{head + "mp3!" + char(units) + block}, Stall{}};
}

JsonValue answer(const QStringList &streams)
{
    QStringList entries;
    for (const QString &stream : streams)
        entries << QString(R"({"id":"1","title":"x","file":"x.jpg","flux_aac":"%1"})").arg(stream);
    return JSONValue(QString(R"({"media_url":"http://127.0.0.1:1","content":[%1]})").arg(entries.join(',')));
}

// A screen by itself: whatever keeps it alive is its own chain of probes.
struct TitleProbesTest : AppFixture
{
    std::shared_ptr<RadioViewController> screen = newScreen();

    static std::shared_ptr<RadioViewController> newScreen()
    {
        const auto made = std::make_shared<RadioViewController>();
        made->loadViewIfNeeded();
        made->tableCont.setFrame({0, 0, 375, 900}); // the header and ten rows
        return made;
    }
    // As the rows in view show them.
    QStringList titles() const
    {
        QStringList result;
        while (const auto shown = cell<cellCustomRadio>(screen->tableCont, int(result.size())))
            result << shown->lblDesc.text();
        return result;
    }
};

} // namespace

TEST_F(TitleProbesTest, EveryRowButTheLastGetsItsTitleInOrder)
{
    const QByteArray apostrophe = "Léa d'Été - L'heure bleue"; // ends the title too early
    ScriptedServer server({titled("Zoé - Un été"),
                           titled(apostrophe),
                           titled("Les Tongs - Sable"),
                           {Reset{}},
                           titled("Inès - Sieste"),
                           titled("Nino - Retour")});
    screen->PostSuccess(answer({server.url("/0"), server.url("/1"), server.url("/2"), server.url("/3")}));
    letEventsRun();
    const std::weak_ptr<TableViewCell> last = screen->tableCont.cellForRowAtIndexPath({0, 3});
    ASSERT_TRUE(waitUntil([&] { return titles()[2] != ""; }));
    EXPECT_EQ(titles(), QStringList({QString::fromUtf8("Zoé - Un été"), "", "Les Tongs - Sable", ""}));
    clock.turn(119);
    letEventsRun();
    EXPECT_EQ(server.requestCount(), 3u);
    clock.turn(2);
    ASSERT_TRUE(waitUntil([&] { return titles()[2] == "Nino - Retour"; }));
    EXPECT_EQ(titles(), QStringList({"", QString::fromUtf8("Inès - Sieste"), "Nino - Retour", ""}));
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_TRUE(server.requests()[i].startsWith("GET /" + QByteArray::number(qlonglong(i % 3)))) << i;
    EXPECT_FALSE(last.expired()); // a probe changes the one row it asked for
}

TEST_F(TitleProbesTest, TwoChainsGiveEachTitleToItsRow)
{
    ScriptedServer slow({{WaitForRelease{}, titled("Radio lente 1")[0], Stall{}}, titled("Radio lente")});
    ScriptedServer fast(titled("Radio rapide"));
    const JsonValue list = answer({fast.url(), slow.url(), fast.url()});
    screen->PostSuccess(list);
    ASSERT_TRUE(waitUntil([&] { return slow.requestCount() == 1; }));
    screen->PostSuccess(list); // its chain goes on while the first one's probe is under way
    ASSERT_TRUE(waitUntil([&] { return titles()[4] != ""; }));
    slow.release();
    ASSERT_TRUE(waitUntil([&] { return slow.requestCount() == 4 && slow.openConnections() == 0; }));
    letEventsRun();
    EXPECT_EQ(titles(), QStringList({"Radio rapide", "Radio lente 1", "Radio rapide", "Radio rapide",
                                     "Radio lente", ""}));
}

TEST_F(TitleProbesTest, KeepTheirScreenUntilTheyCanGoOnNoMore)
{
    ScriptedServer server(Script{Send{head}, WaitForRelease{}, Close{}});
    screen->PostSuccess(answer({server.url(), server.url()}));
    RunLoop::main().cancelAll(); // its own request
    const std::weak_ptr<ViewController> left = std::exchange(screen, newScreen());
    ASSERT_TRUE(waitUntil([&] { return server.bytesSent() == head.size(); }));
    letEventsRun();
    EXPECT_FALSE(left.expired());
    server.release(); // an end without a title: the probe is never completed
    EXPECT_TRUE(waitUntil([&] { return left.expired(); }));

    screen->PostSuccess(answer({"(null)", "(null)"}));
    RunLoop::main().cancelAll();
    const std::weak_ptr<ViewController> waiting = std::exchange(screen, nullptr);
    for (int round = 0; round < 3; ++round) {
        letEventsRun();
        clock.turn(120);
        EXPECT_FALSE(waiting.expired());
    }
    RunLoop::main().cancelAll();
    letEventsRun();
    EXPECT_TRUE(waiting.expired());
}
