#include "platform/foundation/ByteText.h"
#include "platform/foundation/FormatText.h"
#include "platform/foundation/Url.h"

#include <gtest/gtest.h>
#include <limits>

using namespace orvel;

TEST(ByteTextTest, Utf8FailsOnEveryMalformedSequence)
{
    EXPECT_EQ(decodeUtf8("Été \xF0\x9F\x8E\xB5"), QString::fromUtf8("Été \xF0\x9F\x8E\xB5"));
    ASSERT_TRUE(decodeUtf8(""));
    EXPECT_FALSE(decodeUtf8("")->isNull());
    const char *const malformed[] = {
        "\xC3", "abc\xE2\x82", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "caf\xE9!", "\x80"};
    for (const char *bytes : malformed)
        EXPECT_FALSE(decodeUtf8(bytes)) << bytes;
}

TEST(ByteTextTest, IntegerValueReadsTheLeadingNumberAndSaturates)
{
    const std::pair<const char *, qint64> cases[] = {
        {"8192;x", 8192},
        {"  42 ", 42},
        {"-7a", -7},
        {"+5", 5},
        {"", 0},
        {"x1", 0},
        {"- 1", 0},
        {"9223372036854775807", std::numeric_limits<qint64>::max()},
        {"9223372036854775808", std::numeric_limits<qint64>::max()},
        {"-9223372036854775808", std::numeric_limits<qint64>::min()},
        {"-99999999999999999999", std::numeric_limits<qint64>::min()}};
    for (const auto &[text, value] : cases)
        EXPECT_EQ(integerValue(QString(text)), value) << text;
    EXPECT_EQ(intValue(u"99999999999"), std::numeric_limits<qint32>::max());
    EXPECT_EQ(intValue(u"-99999999999"), std::numeric_limits<qint32>::min());
}

TEST(UrlTest, KeepsTheSchemeAsTypedAndRefusesWhatMakesNoUrl)
{
    EXPECT_EQ(Url::fromText("HTTP://a.example/Radio.M3U?x=y.pls")->scheme(), "HTTP");
    EXPECT_EQ(Url::fromText("HTTP://a.example/Radio.M3U?x=y.pls")->pathExtension(), "M3U");
    EXPECT_EQ(Url::fromText("http://a.example/live")->pathExtension(), "");
    for (const char *text :
         {"", "(null)", "http://a b/", "search/deux mots", "/api/x", "http://a/%zz", "http://a/\n"})
        EXPECT_FALSE(Url::fromText(text)) << text;
}

TEST(FormatTextTest, WritesMarkersForWhatIsAbsent)
{
    EXPECT_EQ(formatText(QString()), "(null)");
    EXPECT_EQ(formatText(""), "");
    EXPECT_EQ(formatPath("http://m", QString()), "http://m/(null)");
}
