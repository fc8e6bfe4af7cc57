#include "api/json/JsonShorthands.h"

#include "api/json/JsonParser.h"
#include "api/json/JsonWriter.h"
#include "platform/foundation/Log.h"

namespace orvel {

namespace {

void logFailure(const char *operation, const JsonBase &failed)
{
    qCWarning(logApi).noquote().nospace()
        << '-' << operation << " failed. Error trace is: " << formatTrace(failed.errorTrace());
}

} // namespace

JsonValue JSONValue(const JsonInput &text)
{
    JsonParser parser;
    JsonValue value = parser.objectWithString(text);
    if (value.isAbsent())
        logFailure("JSONValue", parser);
    return value;
}

JsonValue JSONFragmentValue(const JsonInput &text)
{
    JsonParser parser;
    JsonValue value = parser.fragmentWithString(text);
    if (value.isAbsent())
        logFailure("JSONFragmentValue", parser);
    return value;
}

QString JSONRepresentation(const JsonValue &value)
{
    JsonWriter writer;
    QString text = writer.stringWithObject(value);
    if (text.isNull())
        logFailure("JSONRepresentation", writer);
    return text;
}

QString JSONFragment(const JsonValue &value)
{
    JsonWriter writer;
    QString text = writer.stringWithFragment(value);
    if (text.isNull())
        logFailure("JSONFragment", writer);
    return text;
}

} // namespace orvel
