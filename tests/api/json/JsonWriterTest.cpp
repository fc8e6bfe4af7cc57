#include "api/json/JsonWriter.h"
#include "api/json/JsonObjectProxy.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Thing : JsonObjectProxy
{
    explicit Thing(const JsonValue &it) : offer(it) {}
    QString className() const override { return "Thing"; }
    JsonValue proxyForJson() const override { return offer; }
    const JsonValue offer;
};

struct Endless : JsonObjectProxy
{
    QString className() const override { return "Endless"; }
    JsonValue proxyForJson() const override { return JsonValue::foreign(std::make_shared<Endless>()); }
};

JsonValue thing(const JsonValue &offer = {}) { return JsonValue::foreign(std::make_shared<Thing>(offer)); }

QStringList descriptions(const JsonBase &base)
{
    QStringList texts;
    for (const auto &error : base.errorTrace())
        texts.append(error->localizedDescription);
    return texts;
}

} // namespace

TEST(JsonWriterTest, ReplacesForeignObjectsByWhatTheyOffer)
{
    JsonWriter writer;
    JsonValue object = JsonValue::emptyObject();
    object.set("thing", thing(thing(7)));
    EXPECT_EQ(writer.stringWithObject(object), R"({"thing":7})");
    EXPECT_EQ(writer.stringWithObject(thing(object)), R"({"thing":7})");
}

TEST(JsonWriterTest, NamesWhatItCannotWrite)
{
    JsonWriter writer;
    JsonValue inner = JsonValue::emptyObject();
    inner.set("k", JsonValue::array({1, thing()}));
    JsonValue outer = JsonValue::emptyObject();
    outer.set("o", inner);
    EXPECT_TRUE(writer.stringWithObject(outer).isNull());
    EXPECT_EQ(descriptions(writer), (QStringList{"JSON serialisation not supported for Thing",
                                                 "Unsupported value for key k in object",
                                                 "Unsupported value for key o in object"}));

    for (const JsonValue &value : {JsonValue("text"), JsonValue(), thing(), thing(1)}) {
        EXPECT_TRUE(writer.stringWithObject(value).isNull());
        EXPECT_EQ(descriptions(writer), QStringList{"Not valid type for JSON"});
    }
    EXPECT_TRUE(writer.stringWithFragment(JsonValue()).isNull());
    EXPECT_EQ(descriptions(writer), QStringList{"JSON serialisation not supported for (null)"});
    EXPECT_TRUE(writer.stringWithFragment(Endless().proxyForJson()).isNull());
}
