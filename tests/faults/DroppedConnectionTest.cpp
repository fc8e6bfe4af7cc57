#include "faults/Fault.h"
#include "faults/PlayerUnderTest.h"
#include "support/TestLoop.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

struct Drop
{
    const char *name;
    QByteArray head;
    Step end;
    qsizetype leastToStop; // bytes; what ends before is an error
};

void PrintTo(const Drop &drop, std::ostream *out) { *out << drop.name; }

class DroppedConnectionTest : public testing::TestWithParam<Drop>
{
};

const QByteArray http = soundHead("icy-name: Nord\r\nicy-metaint: 1000\r\n");
const QByteArray bare = "ICY 200 OK\r\nicy-name: Nue\r\ncontent-type: audio/mpeg\r\n\r\n";
constexpr qsizetype mostBytes = 4096;

} // namespace

// At every byte of the head, and some of the sound's; with ORVEL_FAULTS_ALL every byte.
TEST_P(DroppedConnectionTest, StopsOrFails)
{
    const Drop &drop = GetParam();
    const QByteArray answer = (drop.head + sound()).first(mostBytes);
    const qsizetype step = qEnvironmentVariableIsSet("ORVEL_FAULTS_ALL") ? 1 : 37;
    const TakenClock clock;
    for (qsizetype n = 0; n <= answer.size() && !HasFailure(); n += n < drop.head.size() ? 1 : step) {
        SCOPED_TRACE(n);
        const bool stops = n >= drop.leastToStop;
        const ScriptedServer server({Send{answer.first(n)}, drop.end});
        PlayerUnderTest player(server.url("/live"));
        player->play();
        EXPECT_TRUE(
            waitUntil([&] { return player->radioState() == (stops ? RadioStateStopped : RadioStateError); }));
        EXPECT_EQ(player->radioError(), stops ? RadioErrorNone : RadioErrorNetworkError);
        EXPECT_TRUE(player.letGo());
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
}

INSTANTIATE_TEST_SUITE_P(Each, DroppedConnectionTest,
                         testing::Values(Drop{"HttpEnd", http, Close{}, 17},
                                         Drop{"BareEnd", bare, Close{}, 1},
                                         Drop{"HttpReset", http, Reset{}, mostBytes + 1},
                                         Drop{"BareReset", bare, Reset{}, mostBytes + 1}),
                         [](const auto &it) { return std::string(it.param.name); });
