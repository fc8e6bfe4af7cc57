#include "api/json/JsonText.h"
#include "app/AppFixture.h"
#include "platform/foundation/MainQueue.h"
#include "screens/radio/cellCustomRadio.h"
#include "support/ScriptedServer.h"

#include <QAbstractItemModel>

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
    std::shared_ptr<RadioViewController> screen = std::make_shared<RadioViewController>();

    static QStringList titles(RadioViewController &of)
    {
        QStringList result;
        for (int row = 0; row < of.numberOfRowsInSection(of.tableCont, 0); ++row) {
            const auto cell = of.cellForRowAtIndexPath(of.tableCont, {0, row});
            result << static_cast<cellCustomRadio &>(*cell).lblDesc.text();
        }
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
    ASSERT_TRUE(waitUntil([&] { return titles(*screen)[2] != ""; }));
    const QStringList first{QString::fromUtf8("Zoé - Un été"), "", "Les Tongs - Sable", ""};
    EXPECT_EQ(titles(*screen), first);
    clock.turn(119);
    letEventsRun();
    EXPECT_EQ(server.requestCount(), 3u);
    clock.turn(2);
    ASSERT_TRUE(waitUntil([&] { return titles(*screen)[2] == "Nino - Retour"; }));
    EXPECT_EQ(titles(*screen), QStringList({"", QString::fromUtf8("Inès - Sieste"), "Nino - Retour", ""}));
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_TRUE(server.requests()[i].startsWith("GET /" + QByteArray::number(qlonglong(i % 3)))) << i;
}

TEST_F(TitleProbesTest, ListsWithNothingToAskWaitForTheNextRound)
{
    ScriptedServer server(titled("Orvel - Matin"));
    for (const QStringList &streams : {QStringList(), QStringList(server.url())}) {
        const auto own = std::make_shared<RadioViewController>();
        own->PostSuccess(answer(streams));
        letEventsRun();
        clock.turn(1000);
    }
    letEventsRun();
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_F(TitleProbesTest, TwoChainsGiveEachTitleToItsRow)
{
    ScriptedServer slow({{WaitForRelease{}, titled("Radio lente 1")[0], Stall{}}, titled("Radio lente")});
    ScriptedServer fast(titled("Radio rapide"));
    const JsonValue list = answer({fast.url(), slow.url(), fast.url()});
    screen->PostSuccess(list);
    ASSERT_TRUE(waitUntil([&] { return slow.requestCount() == 1; }));
    screen->PostSuccess(list); // its chain goes on while the first one's probe is under way
    ASSERT_TRUE(waitUntil([&] { return titles(*screen)[4] != ""; }));
    slow.release();
    ASSERT_TRUE(waitUntil([&] { return slow.requestCount() == 4 && slow.openConnections() == 0; }));
    letEventsRun();
    EXPECT_EQ(titles(*screen), QStringList({"Radio rapide", "Radio lente 1", "Radio rapide", "Radio rapide",
                                            "Radio lente", ""}));
}

TEST_F(TitleProbesTest, KeepTheirScreenUntilTheyCanGoOnNoMore)
{
    ScriptedServer server(Script{Send{head}, WaitForRelease{}, Close{}});
    screen->PostSuccess(answer({server.url(), server.url()}));
    const std::weak_ptr<ViewController> left = screen->weak_from_this();
    screen.reset();
    ASSERT_TRUE(waitUntil([&] { return server.bytesSent() == head.size(); }));
    letEventsRun();
    EXPECT_FALSE(left.expired());
    server.release(); // an end without a title: the probe is never completed
    EXPECT_TRUE(waitUntil([&] { return left.expired(); }));

    screen = std::make_shared<RadioViewController>();
    screen->PostSuccess(answer({"(null)", "(null)"}));
    const std::weak_ptr<ViewController> waiting = screen->weak_from_this();
    screen.reset();
    for (int round = 0; round < 3; ++round) {
        letEventsRun();
        clock.turn(120);
        EXPECT_FALSE(waiting.expired());
    }
    RunLoop::main().cancelAll();
    letEventsRun();
    EXPECT_TRUE(waiting.expired());
}

// However long the list, a probe changes the one row it asked for, and nothing when that is out of view.
TEST_F(TitleProbesTest, AProbesWorkIsOneRow)
{
    ScriptedServer server(titled("Orvel - Matin"));
    screen->loadViewIfNeeded();
    screen->tableCont.setFrame({0, 0, 375, 600}); // the header and five rows
    QStringList streams(1000, "no address");
    for (const int row : {0, 4, 998})
        streams[row] = server.url();
    screen->PostSuccess(answer(streams));
    int changed = 0;
    bool isRebuilt = false;
    const QAbstractItemModel &rows = *screen->tableCont.elements();
    QObject::connect(&rows, &QAbstractItemModel::dataChanged, [&] { ++changed; });
    QObject::connect(&rows, &QAbstractItemModel::rowsInserted, [&] { isRebuilt = true; });
    QObject::connect(&rows, &QAbstractItemModel::modelReset, [&] { isRebuilt = true; });
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 3 && server.openConnections() == 0; }));
    letEventsRun();
    EXPECT_EQ(changed, 5);
    EXPECT_FALSE(isRebuilt);
}
