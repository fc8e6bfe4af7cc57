#include "faults/Fault.h"
#include "faults/PlayerUnderTest.h"

#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr qint64 mostMemory = 32 << 20;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool memoryIsOurs = false; // a sanitizer keeps what was freed
#else
constexpr bool memoryIsOurs = true;
#endif

// Bytes of the process that no file backs.
qint64 memoryInUse()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("RssAnon:"))
            return line.sliced(8).chopped(2).trimmed().toLongLong() * 1024;
    return 0;
}

// One run of the player against one faulty server.
struct Encounter
{
    explicit Encounter(const Fault &it) : fault(it), server(it.answers) {}
    void passTurns();
    void judge();
    void settle();
    void pass(double seconds, bool trickles);

    const Fault &fault;
    TakenClock clock;
    ScriptedServer server;
    PlayerUnderTest player{server.url(QLatin1String(fault.path))};
    const qint64 memoryBefore = memoryInUse();
};

// Runs the event loop until neither side has moved for a while; an endless stream has the second it takes.
void Encounter::settle()
{
    QElapsedTimer quiet;
    quiet.start();
    qint64 sent = -1;
    waitUntil(
        [&] {
            if (std::exchange(sent, server.bytesSent()) != server.bytesSent())
                quiet.restart();
            return quiet.elapsed() > 40;
        },
        0.5);
}

void Encounter::pass(double seconds, bool trickles)
{
    for (; trickles && seconds > 1; --seconds) {
        const qint64 sent = server.bytesSent();
        ASSERT_TRUE(waitUntil([&] { return server.bytesSent() > sent + 1; }));
        clock.turn(1);
    }
    clock.turn(seconds);
}

void Encounter::passTurns()
{
    constexpr double before = 0.5;
    constexpr double after = 0.2;
    double over = 0; // of the turn before
    for (const Turn &turn : fault.turns) {
        ASSERT_TRUE(player.reaches(turn.in, fault.sounds));
        if (!turn.trickles)
            settle();
        if (turn.networkLeaves)
            player.setNetwork(Reachability::Status::NotReachable);
        pass(turn.seconds - before - std::exchange(over, after), turn.trickles);
        ASSERT_EQ(player->radioState(), turn.in);
        pass(before + after, turn.trickles);
    }
}

void Encounter::judge()
{
    qint64 memory = memoryInUse();
    EXPECT_TRUE(waitUntil([&] {
        memory = std::max(memory, memoryInUse());
        return player->radioState() == fault.state && player.hasSounded() == fault.sounds &&
               server.requestCount() >= fault.requests && server.bytesSent() >= fault.atLeastSent &&
               player.titles().size() >= fault.titles.size();
    }));
    settle();
    memory = std::max(memory, memoryInUse());
    EXPECT_TRUE(player.reaches(fault.state)) << int(player->radioState());
    EXPECT_EQ(player->radioError(), fault.error);
    EXPECT_EQ(player.hasSounded(), fault.sounds);
    EXPECT_EQ(player.titles(), fault.titles);
    EXPECT_EQ(player->radioName(), fault.station);
    EXPECT_EQ(server.requestCount(), fault.requests);
    EXPECT_GE(server.bytesSent(), fault.atLeastSent);
    EXPECT_LE(server.bytesSent(), fault.atMostSent);
    if (memoryIsOurs) {
        EXPECT_LT(memory - memoryBefore, mostMemory);
    }
    EXPECT_TRUE(player.letGo());
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
}

struct Table
{
    const char *name;
    std::vector<Fault> (*faults)();
};

void PrintTo(const Table &table, std::ostream *out) { *out << table.name; }

class FaultsTest : public testing::TestWithParam<Table>
{
};

} // namespace

// ORVEL_FAULT runs the one of that name alone; with ORVEL_FAULTS_TABLE each tells how it ended and how long
// it took.
TEST_P(FaultsTest, EndAsTheyShould)
{
    const QByteArray only = qgetenv("ORVEL_FAULT");
    for (const Fault &fault : GetParam().faults()) {
        if (!only.isEmpty() && only != fault.name)
            continue;
        SCOPED_TRACE(fault.name);
        QElapsedTimer timer;
        timer.start();
        Encounter encounter(fault);
        encounter.player->play();
        encounter.passTurns();
        encounter.judge();
        if (qEnvironmentVariableIsSet("ORVEL_FAULTS_TABLE"))
            printf("%s %d %d %lld ms\n", fault.name, int(fault.state), int(fault.error), timer.elapsed());
    }
}

INSTANTIATE_TEST_SUITE_P(Each, FaultsTest,
                         testing::Values(Table{"Connections", connectionFaults},
                                         Table{"Answers", answerFaults}, Table{"Metadata", metadataFaults},
                                         Table{"Playlists", playlistFaults}),
                         [](const auto &it) { return std::string(it.param.name); });
