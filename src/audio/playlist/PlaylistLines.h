#pragma once

#include <QByteArrayView>
#include <optional>

namespace orvel {

// Returns how many bytes of a newline `bytes` begin with, 0 for none: U+000A to U+000D, U+0085, U+2028 and
// U+2029, in UTF-8.
inline qsizetype newlineLength(QByteArrayView bytes)
{
    if (!bytes.isEmpty() && bytes.front() >= '\n' && bytes.front() <= '\r')
        return 1;
    if (bytes.startsWith("\xC2\x85"))
        return 2;
    return bytes.startsWith("\xE2\x80\xA8") || bytes.startsWith("\xE2\x80\xA9") ? 3 : 0;
}

// Returns the first line for which `matches` holds, byte for byte. Each newline ends a line of its own.
template<typename Predicate>
std::optional<QByteArrayView> findLine(QByteArrayView text, Predicate matches)
{
    for (qsizetype start = 0;;) {
        qsizetype end = start;
        while (end < text.size() && newlineLength(text.sliced(end)) == 0)
            ++end;
        const QByteArrayView line = text.sliced(start, end - start);
        if (matches(line))
            return line;
        if (end == text.size())
            return std::nullopt;
        start = end + newlineLength(text.sliced(end));
    }
}

} // namespace orvel
