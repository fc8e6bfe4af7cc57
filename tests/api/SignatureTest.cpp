#include "api/Signature.h"

#include "platform/foundation/RunLoop.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(SignatureTest, IsTheHmacUnderTheKey)
{
    // RFC 2202, test case 2.
    EXPECT_EQ(glob_hmacsha1("what do ya want for nothing?", "Jefe"), "7/zfauXrL6LSdBbV8YTfnCWafHk=");
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
