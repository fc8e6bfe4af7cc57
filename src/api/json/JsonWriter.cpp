#include "api/json/JsonWriter.h"

namespace orvel {

QString JsonWriter::stringWithObject(const JsonValue &value)
{
    const JsonValue offered = JsonTreeWriter::offeredValue(value);
    if (offered.isContainer())
        return stringWithFragment(offered);
    clearErrorTrace();
    addErrorWithCode(JsonError::NoContainer, QStringLiteral("Not valid type for JSON"));
    return {};
}

QString JsonWriter::stringWithFragment(const JsonValue &value)
{
    clearErrorTrace();
    return JsonTreeWriter(m_style, *this).write(value);
}

} // namespace orvel
