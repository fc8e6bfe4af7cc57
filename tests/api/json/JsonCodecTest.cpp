#include "api/json/JsonCodec.h"
#include "api/json/JsonText.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace orvel;

TEST(JsonCodecTest, HandsOnItsSettingsAndTheLastErrorWithItsChain)
{
    JsonCodec codec;
    JsonError error;
    EXPECT_TRUE(codec.objectWithString("\"lone\"", false, &error).isAbsent());
    EXPECT_EQ(error.localizedDescription, "Valid fragment, but not JSON");
    EXPECT_EQ(codec.objectWithString("\"lone\"", true, &error).string(), "lone");
    EXPECT_TRUE(codec.errorTrace().empty());
    EXPECT_TRUE(codec.fragmentWithString("x", nullptr).isAbsent());
    EXPECT_TRUE(codec.stringWithObject(1, &error).isNull());
    EXPECT_EQ(error.code, 4);
    EXPECT_EQ(codec.stringWithFragment(1, &error) + codec.stringWithObject(1, true, nullptr), "11");

    codec.setMaxDepth(1);
    EXPECT_TRUE(codec.objectWithString("[[]]", &error).isAbsent());
    EXPECT_EQ(error.underlying->localizedDescription, "Nested too deep");
    EXPECT_TRUE(codec.stringWithObject(JsonValue::array({JsonValue::emptyArray()}), &error).isNull());
    EXPECT_EQ(error.code, 7);
}

TEST(JsonCodecTest, WritesLinesAndSortsKeysWhenAsked)
{
    JsonCodec codec;
    const JsonValue value = codec.objectWithString(R"({"b":[1,{"y":[],"x":{}}],"a":null})");
    codec.setSortKeys(true);
    EXPECT_EQ(codec.stringWithObject(value), R"({"a":null,"b":[1,{"x":{},"y":[]}]})");
    codec.setHumanReadable(true);
    EXPECT_EQ(codec.stringWithObject(value).toStdString(), R"({
  "a" : null,
  "b" : [
    1,
    {
      "x" : {},
      "y" : []
    }
  ]
})");
}

TEST(JsonCodecTest, OneCallFormsLogWhatFailed)
{
    static QStringList logged;
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &message) { logged.append(message); });
    EXPECT_TRUE(JSONValue("1").isAbsent());
    EXPECT_TRUE(JSONFragmentValue("x").isAbsent());
    EXPECT_TRUE(JSONRepresentation(1).isNull());
    EXPECT_TRUE(JSONFragment(JsonValue()).isNull());
    qInstallMessageHandler(before);
    for (const char *form : {"JSONValue", "JSONFragmentValue", "JSONRepresentation", "JSONFragment"})
        EXPECT_TRUE(logged.takeFirst().startsWith(QString("-%1 failed. Error trace is: (").arg(form)));
}
