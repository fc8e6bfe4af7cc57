#include "api/ContentList.h"

#include "platform/foundation/Log.h"

#include <algorithm>

namespace orvel {

std::vector<JsonValue> contentList(const JsonValue &answer)
{
    // A station has dozens; millions of empty ones fit into an answer and would fill a phone's memory.
    constexpr qsizetype maxEntries = 10'000;
    const JsonValue content = answer["content"];
    if (!content.isArray())
        return {};
    if (content.size() > maxEntries)
        qCWarning(logApi) << "A list of" << content.size() << "entries is cut off after" << maxEntries;
    const auto first = content.values().begin();
    return {first, first + std::min(content.size(), maxEntries)};
}

} // namespace orvel
