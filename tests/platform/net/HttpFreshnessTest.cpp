#include "platform/net/HttpFreshness.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(HttpFreshnessTest, FollowsTheAnswersFields)
{
    constexpr double now = 784111777; // Sun, 06 Nov 1994 08:49:37 GMT
    const QString date = "Sun, 06 Nov 1994 08:49:37 GMT";
    struct Case
    {
        std::vector<HeaderFields::Field> fields;
        bool mayBeStored;
        double seconds;
    };
    const Case cases[] = {
        {{}, true, 0},
        {{{"cache-control", "public, Max-Age=60"}}, true, 60},
        {{{"Cache-Control", "max-age=60"}, {"Age", "45"}, {"Expires", "0"}}, true, 15},
        {{{"Cache-Control", "max-age=60"}, {"Age", "61"}}, true, 0},
        {{{"Cache-Control", "max-age=-5"}}, true, 0},
        {{{"Cache-Control", "max-age=99999999999999999999"}}, true, 365 * 86400.0},
        {{{"Cache-Control", "max-age=60, no-cache"}}, true, 0},
        {{{"Cache-Control", "max-age=60,no-store"}}, false, 0},
        {{{"Cache-Control", "max-age=60"}, {"Vary", "*"}}, false, 0},
        {{{"Expires", "Sun, 06 Nov 1994 08:50:37 GMT"}}, true, 60},
        {{{"Expires", "Sun, 06 Nov 1994 08:50:37 GMT"}, {"Date", "Sun, 06 Nov 1994 08:50:07 GMT"}}, true, 30},
        {{{"Expires", "soon"}, {"Last-Modified", "Sat, 05 Nov 1994 08:49:37 GMT"}}, true, 0},
        {{{"Date", date}, {"Last-Modified", "Sun, 06 Nov 1994 08:48:37 GMT"}}, true, 6},
        {{{"Date", date}, {"Last-Modified", "Mon, 07 Nov 1994 08:48:37 GMT"}}, true, 0},
    };
    for (const Case &c : cases) {
        HeaderFields fields;
        for (const HeaderFields::Field &field : c.fields)
            fields.set(field.name, field.value);
        const HttpFreshness freshness = httpFreshness(fields, now);
        const std::string what = c.fields.empty() ? "none" : c.fields.back().value.toStdString();
        EXPECT_EQ(freshness.mayBeStored, c.mayBeStored) << what;
        EXPECT_EQ(freshness.seconds, c.seconds) << what;
    }
}
