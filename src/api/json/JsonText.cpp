#include "api/json/JsonObjectProxy.h"
#include "api/json/JsonValue.h"
#include "api/json/JsonWriter.h"
#include "platform/foundation/FormatText.h"

namespace orvel {

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
    const QString written = writer.stringWithFragment(*this);
    if (!written.isNull())
        return written;
    const auto object = foreignObject();
    return object ? object->className() : writer.errorTrace().back()->localizedDescription;
}

} // namespace orvel
