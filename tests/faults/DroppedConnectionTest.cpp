#include "faults/Fault.h"
#include "faults/PlayerUnderTest.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr qsizetype mostBytes = 4096;

struct Answer
{
    const char *name;
    QByteArray head;
    qsizetype leastAnswer; // bytes; what ends before is none
};

void PrintTo(const Answer &answer, std::ostream *out) { *out << answer.name; }

struct DroppedConnectionTest : testing::TestWithParam<Answer>
{
    TakenClock clock;
    const QByteArray head = GetParam().head;
    const QByteArray answer = (head + sound()).first(mostBytes);

    // Every byte of the head, and some of the sound's; with ORVEL_FAULTS_ALL every byte.
    void dropAtEach(const Step &end, const std::function<void(qsizetype, const Streamer &)> &judge)
    {
        const qsizetype step = qEnvironmentVariableIsSet("ORVEL_FAULTS_ALL") ? 1 : 37;
        for (qsizetype n = 0; n <= answer.size() && !HasFailure(); n += n < head.size() ? 1 : step) {
            SCOPED_TRACE(n);
            const ScriptedServer server({Send{answer.first(n)}, end});
            PlayerUnderTest player(server.url("/live"));
            player->play();
            EXPECT_TRUE(waitUntil([&] {
                return player->radioState() == RadioStateStopped || player->radioState() == RadioStateError;
            }));
            judge(n, *player);
            EXPECT_TRUE(player.letGo());
            EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
        }
    }
};

} // namespace

TEST_P(DroppedConnectionTest, AnEndStops)
{
    dropAtEach(Close{}, [&](qsizetype n, const Streamer &player) {
        const bool isAnswer = n >= GetParam().leastAnswer;
        EXPECT_EQ(player.radioState(), isAnswer ? RadioStateStopped : RadioStateError);
        EXPECT_EQ(player.radioError(), isAnswer ? RadioErrorNone : RadioErrorNetworkError);
    });
}

TEST_P(DroppedConnectionTest, AResetIsAnError)
{
    dropAtEach(Reset{}, [](qsizetype, const Streamer &player) {
        EXPECT_EQ(player.radioState(), RadioStateError);
        EXPECT_EQ(player.radioError(), RadioErrorNetworkError);
    });
}

INSTANTIATE_TEST_SUITE_P(
    Each, DroppedConnectionTest,
    testing::Values(Answer{"Http", soundHead("icy-name: Nord\r\nicy-metaint: 1000\r\n"), 17},
                    Answer{"Bare", "ICY 200 OK\r\nicy-name: Nue\r\ncontent-type: audio/mpeg\r\n\r\n", 1}),
    [](const auto &it) { return std::string(it.param.name); });
