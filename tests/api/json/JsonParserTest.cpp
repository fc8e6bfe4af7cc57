#include "api/json/JsonParser.h"
#include "api/json/JsonWriter.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

// "9 Trailing comma disallowed in array; 3 Expected value while parsing array".
QString errorsOf(const JsonBase &base)
{
    QStringList errors;
    for (const auto &error : base.errorTrace())
        errors << QString::number(error->code) + ' ' + error->localizedDescription;
    return errors.join("; ");
}

QString errorsOf(QByteArrayView text)
{
    JsonParser parser;
    EXPECT_TRUE(parser.fragmentWithString(text).isAbsent()) << text.toByteArray().constData();
    return errorsOf(parser);
}

QString written(const JsonInput &text)
{
    JsonParser parser;
    JsonWriter writer;
    return writer.stringWithFragment(parser.fragmentWithString(text));
}

QByteArray nested(int depth) { return QByteArray(depth, '[') + QByteArray(depth, ']'); }

} // namespace

TEST(JsonParserTest, ReadsEveryKindAndWritesItBack)
{
    const std::pair<const char *, const char *> cases[] = {
        {" {\"b\" : [ true,false , null ] ,\"a\":{} , \"\":\"\"} ",
         R"({"b":[true,false,null],"a":{},"":""})"},
        {"\t\n\v\f\r []\v", "[]"},
        {R"("\"\\\/\b\f\n\r\t\u00e9\u00E9é")", R"("\"\\/\b\f\n\r\tééé")"},
        {R"("a\u0001b\u0000\u001F\u007f")", "\"a\\u0001b\\u0000\\u001f\x7f\""},
        {"\"\xEF\xBB\xBF a long run of plain text, with an accent: \xC3\xA9t\xC3\xA9\"",
         "\"\xEF\xBB\xBF a long run of plain text, with an accent: \xC3\xA9t\xC3\xA9\""},
        {R"({"k":1,"x":2,"k":{"k":3,"k":4}})", R"({"k":{"k":4},"x":2})"},
        {R"([{"k":1,"\u006b":2},{"k":1,"l":2},{"k":3,"l":4},{"l":5,"k":6},{"k":7}])",
         R"([{"k":2},{"k":1,"l":2},{"k":3,"l":4},{"l":5,"k":6},{"k":7}])"},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(written(text).toStdString(), expected);
}

TEST(JsonParserTest, KeepsDecimalsExactly)
{
    const QString cases =
        "0.1=0.1 1.0=1 1e2=100 1e+2=100 0.10=0.1 -0=0 -0.0e5=0 12.5E-3=0.0125 -1200e-1=-120 "
        "100.250=100.25 0e999999999999999999999=0 18446744073709551616=18446744073709551616 "
        "9999999999999999999=9999999999999999999 "
        "123456789012345678901.5e1=1234567890123456789015";
    for (const QString &it : cases.split(' '))
        EXPECT_EQ(written(it.section('=', 0, 0)), it.section('=', 1));
    const QByteArray manyDigits = "0." + QByteArray(40, '7') + '1';
    EXPECT_EQ(written(manyDigits), manyDigits);
    EXPECT_EQ(written("1e1023"), '1' + QByteArray(1023, '0'));
    EXPECT_EQ(written("1." + QByteArray(2000, '0')), "1");
}

TEST(JsonParserTest, NamesEachErrorAndWhatItMadeMissing)
{
    const QByteArray cases = R"(
+1 -> 2 Leading + disallowed in number
01 -> 2 Leading 0 disallowed in number
- -> 2 No digits after initial minus
1. -> 2 No digits after decimal point
1e+ -> 2 No digits after exponent
1e1024 -> 2 Failed creating decimal instance
-1e-1024 -> 2 Failed creating decimal instance
1e99999999999999999999 -> 2 Failed creating decimal instance
.5 -> 3 Unrecognised leading character
tru -> 3 Expected 'true'
fals -> 3 Expected 'false'
nul -> 3 Expected 'null'
[,1] -> 3 Unrecognised leading character; 3 Expected value while parsing array
[1 2] -> 3 Expected value while parsing array
{1:2} -> 3 Object key string expected
{"a":1 "b":2} -> 3 Object key string expected
{"a" 1} -> 3 Expected ':' separating key and value
{"a":} -> 3 Unrecognised leading character; 3 Object value expected for key: a
{"o":[[1,]]} -> 9 Trailing comma disallowed in array; 3 Expected value while parsing array; 3 Object value expected for key: o
"\u12" -> 6 Missing hex digit in quad; 6 Missing hex quad; 6 Broken unicode character
"\ud83d" -> 6 Missing low character in surrogate pair; 6 Broken unicode character
"\ud83d\udfff" -> 6 Invalid low surrogate char; 6 Broken unicode character
"\ud83d\u0041" -> 6 Invalid low surrogate char; 6 Broken unicode character
"\ude00" -> 6 Invalid high character in surrogate pair; 6 Broken unicode character
"\x" -> 8 Illegal escape sequence '0x78'
[1,] -> 9 Trailing comma disallowed in array
{"a":1 , } -> 9 Trailing comma disallowed in object
[] x -> 10 Garbage after JSON
[1 -> 11 End of input while parsing array
[1, -> 11 End of input while parsing array
{ -> 11 End of input while parsing object
{"a": -> 11 Unexpected end of string; 3 Object value expected for key: a
"ab -> 11 Unexpected EOF while parsing string
"ab\ -> 11 Unexpected EOF while parsing string
{"ab -> 11 Unexpected EOF while parsing string; 3 Object key string expected
)";
    for (const QByteArray &line : cases.trimmed().split('\n')) {
        const qsizetype arrow = line.indexOf(" -> ");
        EXPECT_EQ(errorsOf(line.first(arrow)), line.sliced(arrow + 4)) << line.constData();
    }
    const std::pair<QByteArrayView, const char *> bytes[] = {
        {"\xA0[]", "3 Unrecognised leading character"},
        {"\"\x1f\"", "5 Unescaped control character '0x1f'"},
        {"\"caf\xE9!\"", "6 Broken unicode character"},
        {"\"\\n\xE2\x82\"", "6 Broken unicode character"},
        {"", "11 Unexpected end of string"},
        {QByteArrayView("[1\0]", 4), "11 End of input while parsing array"},
        {QByteArrayView(), "12 Input was 'nil'"},
    };
    for (const auto &[text, errors] : bytes)
        EXPECT_EQ(errorsOf(text), errors);
}

TEST(JsonParserTest, KeepsOnlyTheLowUnitOfASurrogatePair)
{
    JsonParser parser;
    EXPECT_EQ(parser.fragmentWithString(R"("\uD83D\uDE00")").string(), QString(QChar(0xF600)));
    // The bytes themselves keep the whole character.
    EXPECT_EQ(parser.fragmentWithString("\"\xF0\x9F\x98\x80\"").string().size(), 2);
}

TEST(JsonParserTest, LimitsTheDepthUnlessItIsZero)
{
    JsonParser parser;
    EXPECT_TRUE(parser.objectWithString(nested(512)).isArray());
    EXPECT_TRUE(parser.objectWithString(nested(513)).isAbsent());
    EXPECT_TRUE(errorsOf(parser).startsWith("7 Nested too deep; "));

    parser.setMaxDepth(0);
    JsonWriter writer;
    writer.setMaxDepth(0);
    const JsonValue deep = parser.objectWithString(nested(1000000));
    EXPECT_TRUE(deep == parser.objectWithString(nested(1000000)));
    EXPECT_FALSE(deep == parser.objectWithString(nested(999999)));
    EXPECT_EQ(writer.stringWithObject(deep), nested(1000000));
    EXPECT_TRUE(parser.objectWithString(QByteArray(300000, '[')).isAbsent());
    const JsonError last = *parser.errorTrace().back(); // with as long a chain
    parser.clearErrorTrace();
    EXPECT_EQ(last.code, 3);
}

TEST(JsonParserTest, TellsObserversOfErrors)
{
    JsonParser parser;
    int changes = 0;
    parser.observeErrorTrace([&changes] { ++changes; });
    parser.objectWithString("[[1,]]");
    EXPECT_EQ(changes, 2);
    parser.objectWithString("[]");
    EXPECT_EQ(changes, 3);
}
