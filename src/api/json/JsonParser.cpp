#include "api/json/JsonParser.h"

#include "api/json/JsonTreeReader.h"

namespace orvel {

JsonValue JsonParser::fragmentWithString(const JsonInput &text)
{
    clearErrorTrace();
    if (text.isNil()) {
        addErrorWithCode(JsonError::NoInput, QStringLiteral("Input was 'nil'"));
        return {};
    }
    return JsonTreeReader(text.bytes(), *this).read();
}

JsonValue JsonParser::objectWithString(const JsonInput &text)
{
    JsonValue value = fragmentWithString(text);
    if (value.isAbsent() || value.isContainer())
        return value;
    addErrorWithCode(JsonError::NoContainer, QStringLiteral("Valid fragment, but not JSON"));
    return {};
}

} // namespace orvel
