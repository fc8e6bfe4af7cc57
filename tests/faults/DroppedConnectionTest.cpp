#include "faults/Fault.h"
#include "support/EnvironmentValue.h"
#include "support/PlayerUnderTest.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const QByteArray httpAnswer = soundHead("icy-name: Nord\r\nicy-metaint: 1000\r\n");
const QByteArray bareAnswer = "ICY 200 OK\r\nicy-name: Nue\r\ncontent-type: audio/mpeg\r\n\r\n";
constexpr qsizetype mostBytes = 4096;

// At every byte of the head, and some of the sound's; with ORVEL_FAULTS_ALL every byte. Fewer bytes than
// `leastToStop` are an error.
void dropAtEach(const QByteArray &head, const Step &end, qsizetype leastToStop = mostBytes + 1)
{
    const QByteArray answer = (head + sound()).first(mostBytes);
    const qsizetype step = qEnvironmentVariableIsSet("ORVEL_FAULTS_ALL") ? 1 : 37;
    const TakenClock clock;
    const SilentDevice device;
    for (qsizetype n = 0; n <= answer.size() && !testing::Test::HasFailure();
         n += n < head.size() ? 1 : step) {
        SCOPED_TRACE(n);
        const bool stops = n >= leastToStop;
        const ScriptedServer server({Send{answer.first(n)}, end});
        PlayerUnderTest player(server.url("/live"));
        player->play();
        EXPECT_TRUE(player.reaches(stops ? RadioStateStopped : RadioStateError));
        EXPECT_EQ(player->radioError(), stops ? RadioErrorNone : RadioErrorNetworkError);
        EXPECT_TRUE(player.letGo());
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
}

} // namespace

TEST(DroppedConnectionTest, AnEndStops) { dropAtEach(httpAnswer, Close{}, 17); }

TEST(DroppedConnectionTest, AnEndStopsABareAnswer) { dropAtEach(bareAnswer, Close{}, 1); }

TEST(DroppedConnectionTest, AResetIsAnError) { dropAtEach(httpAnswer, Reset{}); }

TEST(DroppedConnectionTest, AResetOfABareAnswerIsAnError) { dropAtEach(bareAnswer, Reset{}); }
