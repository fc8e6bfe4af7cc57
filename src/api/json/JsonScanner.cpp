#include "api/json/JsonScanner.h"

#include "platform/foundation/ByteText.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace orvel {

namespace {

constexpr quint64 everyByte(quint64 byte) { return byte * 0x0101010101010101; }

constexpr bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }

constexpr bool endsRun(char byte) { return uchar(byte) < 0x20 || byte == '"' || byte == '\\'; }

// The highest bit of the first of eight bytes (and perhaps of some behind it) that ends a run.
constexpr quint64 runEnds(quint64 bytes)
{
    const quint64 quote = bytes ^ everyByte('"');
    const quint64 backslash = bytes ^ everyByte('\\');
    return (((bytes - everyByte(0x20)) & ~bytes) | ((quote - everyByte(1)) & ~quote) |
            ((backslash - everyByte(1)) & ~backslash)) &
           everyByte(0x80);
}

// How many of eight bytes, from the lowest on, are digits.
constexpr int digitCount(quint64 bytes)
{
    const quint64 values = bytes ^ everyByte('0'); // at most 9 each for digits
    return std::countr_zero(((values + everyByte(0x80 - 10)) | values) & everyByte(0x80)) / 8;
}

// The number that eight digits spell, the first in the lowest byte: pairs, then fours, then all are put
// together.
constexpr quint64 eightDigits(quint64 bytes)
{
    bytes = (bytes & everyByte(0x0F)) * 0xA01 >> 8;
    bytes = (bytes & 0x00FF'00FF'00FF'00FF) * 0x64'0001 >> 16;
    return (bytes & 0x0000'FFFF'0000'FFFF) * 0x2710'0000'0001 >> 32;
}
static_assert(eightDigits(0x3837363534333231) == 12345678);

constexpr std::array<quint64, 9> powersOfTen{1,       10,        100,        1'000,      10'000,
                                             100'000, 1'000'000, 10'000'000, 100'000'000};

int hexValue(char digit)
{
    if (isDigit(digit))
        return digit - '0';
    const char lower = char(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Returns what a letter after a backslash stands for, or 0 when it is not an escape.
char16_t escaped(char letter)
{
    switch (letter) {
    case '"':
    case '\\':
    case '/':
        return char16_t(letter);
    case 'b':
        return u'\b';
    case 'f':
        return u'\f';
    case 'n':
        return u'\n';
    case 'r':
        return u'\r';
    case 't':
        return u'\t';
    default:
        return 0;
    }
}

} // namespace

bool JsonScanner::fail(int code, const QString &description)
{
    m_errors.addErrorWithCode(code, description);
    return false;
}

bool JsonScanner::skipIf(QByteArrayView text)
{
    if (m_end - m_at < text.size() || std::memcmp(m_at, text.data(), size_t(text.size())) != 0)
        return false;
    m_at += text.size();
    return true;
}

bool JsonScanner::skipQuoted(QByteArrayView text)
{
    if (m_end - m_at <= text.size() || m_at[text.size()] != '"' || !skipIf(text))
        return false;
    ++m_at;
    return true;
}

bool JsonScanner::skipRun()
{
    quint64 seen = 0;
    for (; m_end - m_at >= 8; m_at += 8) {
        const quint64 bytes = qFromLittleEndian<quint64>(m_at);
        if (const quint64 ends = runEnds(bytes)) {
            const int length = std::countr_zero(ends) / 8;
            m_at += length;
            seen |= bytes & ((quint64(1) << (length * 8)) - 1);
            return (seen & everyByte(0x80)) == 0;
        }
        seen |= bytes;
    }
    for (; m_at < m_end && !endsRun(*m_at); ++m_at)
        seen |= uchar(*m_at);
    return (seen & everyByte(0x80)) == 0;
}

bool JsonScanner::readString(QString &text)
{
    const char *const run = m_at;
    const bool isAscii = skipRun();
    if (peek() != '"')
        return readEscapedString(run, isAscii, text);
    const QByteArrayView bytes(run, m_at++);
    if (isAscii) {
        text = QString::fromLatin1(bytes);
        return true;
    }
    std::optional<QString> decoded = decodeUtf8(bytes);
    if (!decoded)
        return fail(JsonError::BadUnicodeEscape, QStringLiteral("Broken unicode character"));
    text = std::move(*decoded);
    return true;
}

bool JsonScanner::readEscapedString(const char *run, bool isAscii, QString &text)
{
    m_units.clear();
    for (;;) {
        if (!appendRun(run, isAscii))
            return fail(JsonError::BadUnicodeEscape, QStringLiteral("Broken unicode character"));
        if (isAtEnd())
            return fail(JsonError::EndOfInput, QStringLiteral("Unexpected EOF while parsing string"));
        const char stop = *m_at++;
        if (stop == '"')
            break;
        if (stop != '\\')
            return fail(JsonError::ControlCharacter,
                        QStringLiteral("Unescaped control character '0x%1'").arg(uchar(stop), 0, 16));
        if (!readEscape())
            return false;
        run = m_at;
        isAscii = skipRun();
    }
    text = QString(reinterpret_cast<const QChar *>(m_units.constData()), m_units.size());
    return true;
}

bool JsonScanner::appendRun(const char *run, bool isAscii)
{
    const QByteArrayView bytes(run, m_at);
    const qsizetype before = m_units.size();
    m_units.resize(before + bytes.size());
    char16_t *const units = m_units.data() + before;
    if (isAscii) {
        std::transform(bytes.begin(), bytes.end(), units, [](char byte) { return uchar(byte); });
        return true;
    }
    const char16_t *const end = decodeUtf8(bytes, units);
    m_units.resize(end ? end - m_units.data() : before);
    return end;
}

bool JsonScanner::readEscape()
{
    if (isAtEnd())
        return fail(JsonError::EndOfInput, QStringLiteral("Unexpected EOF while parsing string"));
    const char letter = *m_at++;
    if (letter == 'u')
        return readUnicodeUnit() ||
               fail(JsonError::BadUnicodeEscape, QStringLiteral("Broken unicode character"));
    const char16_t unit = escaped(letter);
    if (unit == 0)
        return fail(JsonError::BadEscape,
                    QStringLiteral("Illegal escape sequence '0x%1'").arg(uchar(letter), 0, 16));
    m_units.append(unit);
    return true;
}

// Deliberate: a surrogate pair is kept as one unit, the low 16 bits of its code point, which is all that this
// system's texts ever held of it (JsonParserTest.KeepsOnlyTheLowUnitOfASurrogatePair)
bool JsonScanner::readUnicodeUnit()
{
    unsigned unit = 0;
    if (!readHexQuad(unit))
        return fail(JsonError::BadUnicodeEscape, QStringLiteral("Missing hex quad"));
    if (unit >= 0xD800 && unit < 0xDC00) {
        unsigned low = 0;
        if (!skipIf("\\u") || !readHexQuad(low))
            return fail(JsonError::BadUnicodeEscape,
                        QStringLiteral("Missing low character in surrogate pair"));
        // Deliberate: U+DFFF is refused with those that are not low surrogates
        // (JsonParserTest.NamesEachErrorAndWhatItMadeMissing)
        if (((low + 0x2400) & 0xFFFF) >= 0x3FF)
            return fail(JsonError::BadUnicodeEscape, QStringLiteral("Invalid low surrogate char"));
        unit = (unit << 10) + low + 0x2400;
    } else if (unit >= 0xDC00 && unit < 0xE000) {
        return fail(JsonError::BadUnicodeEscape, QStringLiteral("Invalid high character in surrogate pair"));
    }
    m_units.append(char16_t(unit));
    return true;
}

bool JsonScanner::readHexQuad(unsigned &unit)
{
    for (int i = 0; i < 4; ++i) {
        const int value = hexValue(peek());
        if (value < 0)
            return fail(JsonError::BadUnicodeEscape, QStringLiteral("Missing hex digit in quad"));
        unit = unit << 4 | unsigned(value);
        ++m_at;
    }
    return true;
}

QByteArrayView JsonScanner::readDigits(quint64 &number)
{
    const char *at = m_at;
    quint64 read = number;
    int count = 8;
    while (count == 8 && m_end - at >= 8) {
        const quint64 bytes = qFromLittleEndian<quint64>(at);
        count = digitCount(bytes);
        if (count > 0) // moved up behind zeros
            read = read * powersOfTen[size_t(count)] + eightDigits(bytes << (64 - 8 * count));
        at += count;
    }
    for (; at < m_end && isDigit(*at); ++at)
        read = read * 10 + quint64(*at - '0');
    number = read;
    return {std::exchange(m_at, at), at};
}

bool JsonScanner::readNumber(Decimal &number)
{
    const bool isNegative = skipIf('-');
    quint64 coefficient = 0; // right while there are not too many digits
    const QByteArrayView integer = readDigits(coefficient);
    if (integer.isEmpty())
        return fail(JsonError::BadNumber, QStringLiteral("No digits after initial minus"));
    if (integer.size() > 1 && integer.front() == '0')
        return fail(JsonError::BadNumber, QStringLiteral("Leading 0 disallowed in number"));

    QByteArrayView fraction;
    if (skipIf('.')) {
        fraction = readDigits(coefficient);
        if (fraction.isEmpty())
            return fail(JsonError::BadNumber, QStringLiteral("No digits after decimal point"));
    }
    qint64 exponent = 0;
    if ((skipIf('e') || skipIf('E')) && !readExponent(exponent))
        return false;

    const std::optional<Decimal> made =
        integer.size() + fraction.size() <= Decimal::maxCoefficientDigits
            ? Decimal::fromCoefficient(isNegative, coefficient, exponent - fraction.size())
            : Decimal::fromParts(isNegative, integer, fraction, exponent);
    if (!made)
        return fail(JsonError::BadNumber, QStringLiteral("Failed creating decimal instance"));
    number = *made;
    return true;
}

bool JsonScanner::readExponent(qint64 &exponent)
{
    const bool isBelowZero = skipIf('-');
    if (!isBelowZero)
        skipIf('+');
    quint64 number = 0;
    const QByteArrayView digits = readDigits(number);
    if (digits.isEmpty())
        return fail(JsonError::BadNumber, QStringLiteral("No digits after exponent"));
    // Far beyond what makes a number, and far from overflowing.
    constexpr qint64 farOut = qint64(1) << 40;
    exponent = 0;
    for (const char digit : digits)
        exponent = std::min(exponent * 10 + (digit - '0'), farOut);
    if (isBelowZero)
        exponent = -exponent;
    return true;
}

} // namespace orvel
