#include "api/json/JsonText.h"

#include "api/json/JsonObjectProxy.h"
#include "api/json/JsonParser.h"
#include "api/json/JsonWriter.h"
#include "platform/foundation/FormatText.h"
#include "platform/foundation/Log.h"

namespace orvel {

namespace {

void logFailure(const char *operation, const JsonBase &failed)
{
    qCWarning(logApi).noquote().nospace()
        << '-' << operation << " failed. Error trace is: " << formatTrace(failed.errorTrace());
}

JsonValue read(const char *operation, const JsonInput &text,
               JsonValue (JsonParser::*readText)(const JsonInput &))
{
    JsonParser parser;
    JsonValue value = (parser.*readText)(text);
    if (value.isAbsent())
        logFailure(operation, parser);
    return value;
}

QString write(const char *operation, const JsonValue &value,
              QString (JsonWriter::*writeValue)(const JsonValue &))
{
    JsonWriter writer;
    QString text = (writer.*writeValue)(value);
    if (text.isNull())
        logFailure(operation, writer);
    return text;
}

} // namespace

JsonValue JSONValue(const JsonInput &text) { return read("JSONValue", text, &JsonParser::objectWithString); }

JsonValue JSONFragmentValue(const JsonInput &text)
{
    return read("JSONFragmentValue", text, &JsonParser::fragmentWithString);
}

QString JSONRepresentation(const JsonValue &value)
{
    return write("JSONRepresentation", value, &JsonWriter::stringWithObject);
}

QString JSONFragment(const JsonValue &value)
{
    return write("JSONFragment", value, &JsonWriter::stringWithFragment);
}

QString JsonValue::text() const
{
    if (isString())
        return string();
    if (isNumber())
        return decimal().stringValue();
    if (isBool())
        return boolValue() ? QStringLiteral("1") : QStringLiteral("0");
    if (isNull())
        return nullObjectText;
    if (isAbsent())
        return absentText;
    JsonWriter writer;
    writer.setMaxDepth(0);
    writer.setHumanReadable(true);
    // A small answer from a hostile server could write itself as gigabytes.
    writer.setMaxLength(64 * 1024);
    const QString written = writer.stringWithFragment(*this);
    if (!written.isNull())
        return written;
    const auto object = foreignObject();
    return object ? object->className() : writer.errorTrace().back()->localizedDescription;
}

} // namespace orvel
