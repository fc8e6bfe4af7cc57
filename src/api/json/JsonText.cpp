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
