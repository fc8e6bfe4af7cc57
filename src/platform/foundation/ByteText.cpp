#include "platform/foundation/ByteText.h"

#include <QtEndian>
#include <algorithm>
#include <bit>
#include <limits>

namespace orvel {

namespace {

// Nothing read is written here: the compiler may do them all at once.
template<int count>
void widen(const char *__restrict bytes, char16_t *__restrict units)
{
    for (int i = 0; i < count; ++i)
        units[i] = uchar(bytes[i]);
}

// Widens the ASCII bytes from `at` to `end`, many at a time, and returns their number. `units` has room for
// as many units as there are bytes.
qsizetype widenAscii(const char *at, const char *end, char16_t *units)
{
    constexpr int step = 16;
    const char *const start = at;
    for (; end - at >= step; at += step, units += step) {
        widen<step>(at, units); // those beyond ASCII are written over
        for (const int half : {0, step / 2})
            if (const quint64 beyond = qFromLittleEndian<quint64>(at + half) & Q_UINT64_C(0x8080808080808080))
                return at - start + half + std::countr_zero(beyond) / 8;
    }
    while (at < end && uchar(*at) < 0x80)
        *units++ = uchar(*at++);
    return at - start;
}

// The code point of the sequence at the front, of two bytes at least; 0 when it is not well-formed (RFC
// 3629).
char32_t readSequence(const char *&at, const char *end)
{
    const auto lead = uchar(*at);
    if (lead >= 0xC2 && lead < 0xE0 && end - at >= 2 && (at[1] & 0xC0) == 0x80) {
        const auto point = char32_t((lead & 0x1F) << 6 | (at[1] & 0x3F));
        at += 2;
        return point;
    }
    const int tail = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    if (lead < 0xC2 || lead > 0xF4 || end - at <= tail)
        return 0;
    char32_t point = lead & (0x3Fu >> tail);
    for (int i = 1; i <= tail; ++i) {
        const auto byte = uchar(at[i]);
        if ((byte & 0xC0) != 0x80)
            return 0;
        point = point << 6 | (byte & 0x3F);
    }
    constexpr char32_t lowest[] = {0, 0x80, 0x800, 0x10000};
    if (point < lowest[tail] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000))
        return 0;
    at += tail + 1;
    return point;
}

} // namespace

char16_t *decodeUtf8(QByteArrayView bytes, char16_t *units)
{
    const char *at = bytes.begin();
    const char *const end = bytes.end();
    while (true) {
        const qsizetype ascii = widenAscii(at, end, units);
        at += ascii;
        units += ascii;
        if (at == end)
            return units;
        const char32_t point = readSequence(at, end);
        if (point == 0)
            return nullptr;
        if (QChar::requiresSurrogates(point)) {
            *units++ = QChar::highSurrogate(point);
            *units++ = QChar::lowSurrogate(point);
        } else {
            *units++ = char16_t(point);
        }
    }
}

std::optional<QString> decodeUtf8(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return QStringLiteral("");
    QString text(bytes.size(), Qt::Uninitialized);
    auto *const units = reinterpret_cast<char16_t *>(text.data());
    const char16_t *const end = decodeUtf8(bytes, units);
    if (!end)
        return std::nullopt;
    text.truncate(end - units);
    return text;
}

qint64 integerValue(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        negative = text[i++] == u'-';
    constexpr qint64 lowest = std::numeric_limits<qint64>::min();
    // Gathered below zero, where the range is one larger.
    qint64 value = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        const qint64 digit = text[i].unicode() - u'0';
        if (value < (lowest + digit) / 10)
            return negative ? lowest : std::numeric_limits<qint64>::max();
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    return value == lowest ? std::numeric_limits<qint64>::max() : -value;
}

qint32 intValue(QStringView text)
{
    return qint32(std::clamp<qint64>(integerValue(text), std::numeric_limits<qint32>::min(),
                                     std::numeric_limits<qint32>::max()));
}

bool equalsIgnoringCase(QStringView a, QStringView b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

} // namespace orvel
