#include "FuzzSupport.h"
#include "api/json/JsonParser.h"
#include "api/json/JsonWriter.h"

#include <algorithm>

using namespace orvel;
using fuzz::require;

namespace {

// A pair of surrogate escapes is kept as one unit, which may be half a pair: such a text can't be written.
bool isWritable(const JsonValue &value)
{
    return (!value.isString() || value.string().isValidUtf16()) &&
           std::all_of(value.keys().begin(), value.keys().end(),
                       [](const QString &key) { return key.isValidUtf16(); }) &&
           std::all_of(value.values().begin(), value.values().end(), isWritable);
}

void requireSameWhenWritten(const JsonValue &value, bool humanReadable, bool sortKeys)
{
    JsonWriter writer;
    writer.setHumanReadable(humanReadable);
    writer.setSortKeys(sortKeys);
    const QString text = writer.stringWithFragment(value);
    require(!text.isNull() && writer.errorTrace().empty(), "what was read can be written");
    JsonParser parser;
    require(parser.fragmentWithString(text) == value, "what was written reads as the same value");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView input = fuzz::viewOf(data, size);
    JsonParser parser;
    const JsonValue value = parser.fragmentWithString(input);
    require(value.isAbsent() != parser.errorTrace().empty(), "a value or errors");
    const JsonValue container = parser.objectWithString(input);
    require(container.isAbsent() || container == value,
            "an object or array is the same when scalars are let in");
    if (value.isAbsent())
        return 0;

    require(value == JsonValue(value), "a copy is equal");
    value.integerValue();
    value.text();
    if (isWritable(value)) {
        requireSameWhenWritten(value, false, false);
        requireSameWhenWritten(value, true, true);
    }
    return 0;
}
