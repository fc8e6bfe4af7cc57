#pragma once

#include "api/json/JsonInput.h"
#include "api/json/JsonValue.h"

namespace orvel {

// Reading and writing in one call, with a reader or writer of its own. A failure is logged with its error
// trace and returns an absent value or a null text. JSONValue and JSONRepresentation take objects and arrays,
// the others any value.
JsonValue JSONValue(const JsonInput &text);
JsonValue JSONFragmentValue(const JsonInput &text);
QString JSONRepresentation(const JsonValue &value);
QString JSONFragment(const JsonValue &value);

} // namespace orvel
