#include "faults/Fault.h"
#include "faults/PlayerUnderTest.h"
#include "support/Footprint.h"
#include "support/TestLoop.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

// One run of the player against one faulty server.
struct Encounter
{
    explicit Encounter(const Fault &it) : fault(it), server(it.answers) { player->play(); }

    const Fault &fault;
    TakenClock clock;
    ScriptedServer server;
    PlayerUnderTest player{server.url(QLatin1String(fault.path))};
    const qint64 memoryBefore = anonymousMemory();
    qint64 memory = memoryBefore;

    // Waits until neither side has moved for a while; an endless stream has the second it takes.
    void settle()
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
    void pass(double seconds, bool trickles)
    {
        for (; trickles && seconds > 1; --seconds) {
            const qint64 sent = server.bytesSent();
            ASSERT_TRUE(waitUntil([&] { return server.bytesSent() > sent + 1; }));
            clock.turn(1);
        }
        clock.turn(seconds);
    }
    void pass(const Turn &turn)
    {
        constexpr double before = 0.5; // the end of the turn
        ASSERT_TRUE(waitUntil(
            [&] { return player->radioState() == turn.in && (player.hasSounded() || !fault.sounds); }));
        if (!turn.trickles)
            settle();
        if (turn.networkLeaves)
            player.loseNetwork();
        pass(turn.seconds - before, turn.trickles);
        ASSERT_EQ(player->radioState(), turn.in);
        pass(before, turn.trickles);
    }
    bool isAsItShould()
    {
        memory = std::max(memory, anonymousMemory());
        return player->radioState() == fault.state && player.hasSounded() == fault.sounds &&
               server.requestCount() >= fault.requests && server.bytesSent() >= fault.atLeastSent &&
               player.titles().size() >= fault.titles.size();
    }
    void judge()
    {
        EXPECT_TRUE(waitUntil([&] { return isAsItShould(); })) << int(player->radioState());
        settle();
        EXPECT_TRUE(waitUntil([&] { return isAsItShould(); })) << int(player->radioState());
        EXPECT_EQ(player->radioError(), fault.error);
        EXPECT_EQ(player.titles(), fault.titles);
        EXPECT_EQ(player->radioName(), fault.station);
        EXPECT_EQ(server.requestCount(), fault.requests);
        EXPECT_LE(server.bytesSent(), fault.atMostSent);
        if (!isSanitized) {
            EXPECT_LT(memory - memoryBefore, 32 << 20);
        }
        EXPECT_TRUE(player.letGo());
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
};

// ORVEL_FAULT runs the one of that name alone.
void expectToEndAsTheyShould(const std::vector<Fault> &faults)
{
    const QByteArray only = qgetenv("ORVEL_FAULT");
    for (const Fault &fault : faults) {
        if (!only.isEmpty() && only != fault.name)
            continue;
        SCOPED_TRACE(fault.name);
        Encounter encounter(fault);
        for (const Turn &turn : fault.turns)
            encounter.pass(turn);
        encounter.judge();
    }
}

} // namespace

TEST(FaultsTest, OfConnections) { expectToEndAsTheyShould(connectionFaults()); }

TEST(FaultsTest, OfAnswers) { expectToEndAsTheyShould(answerFaults()); }

TEST(FaultsTest, OfMetadata) { expectToEndAsTheyShould(metadataFaults()); }

TEST(FaultsTest, OfPlaylists) { expectToEndAsTheyShould(playlistFaults()); }
