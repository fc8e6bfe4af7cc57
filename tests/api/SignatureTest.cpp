#include "api/Signature.h"

#include "api/StationConfiguration.h"
#include "platform/foundation/RunLoop.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(SignatureTest, IsTheHmacUnderTheKey)
{
    // RFC 2202, test case 2.
    EXPECT_EQ(glob_hmacsha1("what do ya want for nothing?", "Jefe"), "7/zfauXrL6LSdBbV8YTfnCWafHk=");
    // echo -n playlist1400000000 | openssl dgst -sha1 -hmac 6ca1... -binary | base64
    EXPECT_EQ(glob_hmacsha1("playlist1400000000", StationConfiguration::compiledIn().stationSigningKey),
              "CFd1QEePPlhGRGaiNQRAYJQmHgM=");
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
