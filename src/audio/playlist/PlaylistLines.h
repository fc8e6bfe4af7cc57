#pragma once

#include <QString>
#include <QStringView>
#include <algorithm>
#include <optional>

namespace orvel {

// Whether a character ends a line: U+000A to U+000D, U+0085, U+2028 and U+2029.
inline bool isNewline(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

// The first line of a text for which `matches` holds. Each newline character ends a line of its own.
template<typename Predicate>
std::optional<QStringView> findLine(QStringView text, Predicate matches)
{
    const QChar *start = text.begin();
    for (;;) {
        const QChar *const end = std::find_if(start, text.end(), isNewline);
        const QStringView line(start, end);
        if (matches(line))
            return line;
        if (end == text.end())
            return std::nullopt;
        start = end + 1;
    }
}

} // namespace orvel
