#include "api/Signature.h"

#include "platform/foundation/RunLoop.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(SignatureTest, EndsATextAtItsZero)
{
    // What goes out is compared with known hashes where requests are sent.
    EXPECT_EQ(glob_hmacsha1(QStringLiteral("a\0b"), "k"), glob_hmacsha1("a", "k"));
}

TEST(SignatureTest, TimeStampIsRoundedToWholeSeconds)
{
    for (const auto &[time, text] :
         {std::pair(1400000000.0, "1400000000"), std::pair(1400000000.6, "1400000001")}) {
        RunLoop::main().takeClock(time);
        EXPECT_EQ(glob_CurrentTime(), text);
        RunLoop::main().returnClock();
    }
}
