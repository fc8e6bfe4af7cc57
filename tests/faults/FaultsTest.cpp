#include "faults/Fault.h"
#include "support/EnvironmentValue.h"
#include "support/Footprint.h"
#include "support/PlayerUnderTest.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

// One run of the player on the silent device against one faulty server.
struct Encounter
{
    explicit Encounter(const Fault &it) : fault(it), server(it.answers)
    {
        player->setBufferInSeconds(1);
        player->play();
    }

    const Fault &fault;
    TakenClock clock;
    SilentDevice device;
    ScriptedServer server;
    PlayerUnderTest player{server.url(QLatin1String(fault.path))};
    const qint64 memoryBefore = anonymousMemory();
    qint64 memory = memoryBefore;

    // Waits until the server has sent what it has to; an endless stream has a moment.
    void settle()
    {
        const bool isEndless = std::ranges::any_of(fault.answers, [](const Script &script) {
            return !script.empty() && std::holds_alternative<SendForever>(script.back());
        });
        waitUntil([&] { return server.isAtRest(); }, isEndless ? 0.1 : 20);
        letEventsRun();
    }
    bool isAsItShould()
    {
        memory = std::max(memory, anonymousMemory());
        return player->radioState() == fault.state && player.hasSounded() == fault.sounds &&
               server.requestCount() >= fault.requests && server.bytesSent() >= fault.atLeastSent;
    }
    void judge()
    {
        EXPECT_TRUE(clock.turnUntil([&] { return player.hasSounded() || !fault.sounds; }));
        server.release();
        EXPECT_TRUE(clock.turnUntil([&] { return isAsItShould(); })) << int(player->radioState());
        settle();
        EXPECT_TRUE(clock.turnUntil([&] { return isAsItShould(); })) << int(player->radioState());
        EXPECT_EQ(player->radioError(), fault.error);
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
        encounter.judge();
    }
}

} // namespace

TEST(FaultsTest, OfAnswers) { expectToEndAsTheyShould(answerFaults()); }

TEST(FaultsTest, OfPlaylists) { expectToEndAsTheyShould(playlistFaults()); }
