#include "platform/foundation/ByteText.h"
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
        "\xC3",     "abc\xE2\x82", "\xC0\x80",     "\xED\xA0\x80",     "\xF4\x90\x80\x80",
        "caf\xE9!", "\x80",        "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF8\x88\x80\x80\x80",
        "\xFF"};
    for (const char *bytes : malformed)
        EXPECT_FALSE(decodeUtf8(bytes)) << bytes;
    // The first and the last of each length, at every place of a run.
    for (const char32_t point : {0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF}) {
        const QString character = QString::fromUcs4(&point, 1);
        for (int place = 0; place < 20; ++place) {
            const QString text = QString(place, u'a') + character + QString(20 - place, u'b') + character;
            EXPECT_EQ(decodeUtf8(text.toUtf8()), text) << place;
        }
    }
}

TEST(ByteTextTest, IntegerValueReadsTheLeadingNumberAndSaturates)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    const std::pair<const char *, qint64> cases[] = {{"8192;x", 8192},
                                                     {"  42 ", 42},
                                                     {"-7a", -7},
                                                     {"+5", 5},
                                                     {"", 0},
                                                     {"x1", 0},
                                                     {"- 1", 0},
                                                     {"9223372036854775807", most},
                                                     {"9223372036854775808", most},
                                                     {"-9223372036854775808", least},
                                                     {"-99999999999999999999", least}};
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
    // A signed address loses its signature when it is written differently.
    for (const char *sent : {"http://A.example/%7E/%7e/%2f~/a/../b?q[]=%5B+'(),;", "http:a/b"})
        EXPECT_EQ(Url::fromText(sent)->encoded(), sent);
    EXPECT_EQ(Url::fromText("http://u:p@été.fr:80/é?q=♪#é")->encoded(),
              "http://u:p@xn--t-9fab.fr:80/%C3%A9?q=%E2%99%AA");
    for (const char *text :
         {"", "(null)", "http://a b/", "search/deux mots", "/api/x", "http://a/%zz", "http://a/\n"})
        EXPECT_FALSE(Url::fromText(text)) << text;
}
