#pragma once

#include "api/json/JsonValue.h"

#include <vector>

namespace orvel {

// The entries under "content" of an answer, in their order: none when that is no array, and at most 10,000.
std::vector<JsonValue> contentList(const JsonValue &answer);

} // namespace orvel
