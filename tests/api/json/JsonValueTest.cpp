#include "api/json/JsonValue.h"
#include "api/json/JsonObjectProxy.h"
#include "api/json/JsonText.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(JsonValueTest, LookingUpWhatIsNotThereGivesAbsent)
{
    const JsonValue value = JSONValue(R"({"a":{"b":[10,20]},"s":"text"})");
    const JsonValue list = value["a"]["b"];
    EXPECT_EQ(list[1].integerValue(), 20);
    for (const JsonValue &absent : {value["x"]["y"][3], value["s"]["a"], list[2], list[-1], list["a"]})
        EXPECT_TRUE(absent.isAbsent());
}

TEST(JsonValueTest, TextsAndIntegers)
{
    const JsonValue values = JSONValue(R"(["8192;x", -12.9, true, false, null, [1], 1e30])");
    const std::pair<QString, qint64> cases[] = {{"8192;x", 8192},
                                                {"-12.9", -12},
                                                {"1", 1},
                                                {"0", 0},
                                                {"<null>", 0},
                                                {"[\n  1\n]", 0},
                                                {'1' + QString(30, '0'), INT64_MAX},
                                                {"(null)", 0}};
    for (int i = 0; i < int(std::size(cases)); ++i) {
        EXPECT_EQ(values[i].text(), cases[i].first);
        EXPECT_EQ(values[i].integerValue(), cases[i].second);
    }
    EXPECT_TRUE(JsonValue(QString()).isAbsent());
    EXPECT_TRUE(JsonValue("").isString());
    EXPECT_EQ(JsonValue(std::numeric_limits<qint64>::min()).text(), "-9223372036854775808");
}

TEST(JsonValueTest, ChangingACopyLeavesTheOriginal)
{
    const JsonValue list = JSONValue(R"([{"id":1,"name":"a"},{"id":2,"name":"b"}])");
    JsonValue changed = list;
    JsonValue entry = changed[0];
    entry.set("playing", true);
    entry.set("name", "c");
    entry.set("id", JsonValue());
    changed.replace(0, entry);
    changed.append(changed);
    changed.removeAt(1);
    EXPECT_EQ(JSONRepresentation(changed),
              R"([{"name":"c","playing":true},[{"name":"c","playing":true},{"id":2,"name":"b"}]])");
    EXPECT_EQ(JSONRepresentation(list), R"([{"id":1,"name":"a"},{"id":2,"name":"b"}])");
}

TEST(JsonValueTest, ComparesNumbersByValueAndObjectsWithoutOrder)
{
    EXPECT_TRUE(JSONValue(R"({"a":1.0,"b":["x",null]})") == JSONValue(R"({"b":["x",null],"a":1})"));
    EXPECT_FALSE(JSONValue("[1]") == JSONValue("[true]"));
    EXPECT_FALSE(JSONValue("{\"a\":1}") == JSONValue("{\"b\":1}"));
    EXPECT_FALSE(JSONValue("[]") == JSONValue("{}"));
    EXPECT_FALSE(JsonValue() == JsonValue::null());
}

TEST(JsonValueTest, FindsKeysOfLargeObjects)
{
    constexpr int count = 100000;
    QByteArray text = "{";
    for (int i = 0; i < count; ++i)
        text += "\"key" + QByteArray::number(i) + "\":" + QByteArray::number(i) + ',';
    JsonValue value = JSONValue(text + "\"key7\":-7}");
    ASSERT_EQ(value.size(), count);
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(value[QStringLiteral("key%1").arg(i)].integerValue(), i == 7 ? -7 : i);
    const JsonValue before = value;
    value.remove(u"key0");
    value.set("new", 1);
    EXPECT_TRUE(!value.contains(u"key0") && before.contains(u"key0") && !before.contains(u"new"));
    EXPECT_EQ(value["key99999"].integerValue(), 99999);
    EXPECT_EQ(value.keys().back(), "new");
}

TEST(JsonValueTest, TheTextOfAHostileAnswerStaysSmall)
{
    const QByteArray deep = QByteArray("[").repeated(511) + QByteArray("1,").repeated(200000) + "1" +
                            QByteArray("]").repeated(511);
    EXPECT_LT(JSONValue(deep).text().size(), 100000);
    const QByteArray wide = "[" + QByteArray("1e1023,").repeated(50000) + "1]";
    EXPECT_LT(JSONValue(wide).text().size(), 100000);
}
