#pragma once

#include "api/json/JsonBase.h"
#include "api/json/JsonInput.h"
#include "api/json/JsonValue.h"

namespace orvel {

// Reads JSON strictly. A failure returns an absent value and fills the error trace: first what was wrong,
// then what each array or object around it misses therefore.
class JsonParser : public JsonBase
{
public:
    // An object or an array.
    JsonValue objectWithString(const JsonInput &text);
    // Any value.
    JsonValue fragmentWithString(const JsonInput &text);
};

} // namespace orvel
