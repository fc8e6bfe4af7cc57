#pragma once

#include "api/json/JsonValue.h"

#include <vector>

namespace orvel {

// Returns the entries under "content" of an answer, in their order: at most 10,000, and an empty list when it
// is not an array.
std::vector<JsonValue> contentList(const JsonValue &answer);

} // namespace orvel
