#include "api/json/Decimal.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace orvel {

namespace {

QByteArrayView withoutLeadingZeros(QByteArrayView digits)
{
    while (!digits.isEmpty() && digits.front() == '0')
        digits = digits.sliced(1);
    return digits;
}

QByteArrayView withoutTrailingZeros(QByteArrayView digits)
{
    while (!digits.isEmpty() && digits.back() == '0')
        digits.chop(1);
    return digits;
}

// Returns whether `count` digits, times ten to the power of `exponent`, are few enough in plain text.
bool isWritable(qint64 digits, qint64 exponent)
{
    return (exponent >= 0 ? digits + exponent : std::max(digits, 1 - exponent)) <= Decimal::maxPlainDigits;
}

qint64 digitCount(quint64 number)
{
    qint64 count = 1;
    for (; number >= 10; number /= 10)
        ++count;
    return count;
}

quint64 appended(quint64 number, QByteArrayView digits)
{
    for (const char digit : digits)
        number = number * 10 + quint64(digit - '0');
    return number;
}

// "00", "01" and so on to "99".
constexpr auto digitPairs = [] {
    std::array<char, 200> pairs{};
    for (size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = char('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
    return pairs;
}();

// Writes the digits of a number so that they end at `end`, and returns their start. In short pieces,
// because the processor can work on several at once and divides short numbers faster.
char *writeDigits(quint64 number, char *end)
{
    const auto writeTwo = [&end](quint32 two) {
        end -= 2;
        std::memcpy(end, &digitPairs[size_t(two) * 2], 2);
    };
    constexpr quint64 piece = 100'000'000;
    for (; number >= piece; number /= piece) {
        auto eight = quint32(number % piece);
        for (int i = 0; i < 4; ++i, eight /= 100)
            writeTwo(eight % 100);
    }
    auto rest = quint32(number);
    for (; rest >= 10; rest /= 100)
        writeTwo(rest % 100);
    if (rest > 0)
        *--end = char('0' + rest);
    return end;
}

} // namespace

Decimal::Decimal(qint64 value)
{
    const auto bits = quint64(value);
    *this = *fromCoefficient(value < 0, value < 0 ? 0 - bits : bits, 0);
}

std::optional<Decimal> Decimal::fromCoefficient(bool negative, quint64 coefficient, qint64 exponent)
{
    if (coefficient == 0)
        return Decimal();
    for (; coefficient % 10 == 0; coefficient /= 10)
        ++exponent;
    // Counting takes longer than all the rest; almost no exponent needs it.
    const bool isModest = std::abs(exponent) < maxPlainDigits - maxCoefficientDigits;
    if (!isModest && !isWritable(digitCount(coefficient), exponent))
        return std::nullopt;
    Decimal result;
    result.m_coefficient = coefficient;
    result.m_exponent = qint32(exponent);
    result.m_negative = negative;
    return result;
}

std::optional<Decimal> Decimal::fromParts(bool negative, QByteArrayView integer, QByteArrayView fraction,
                                          qint64 exponent)
{
    fraction = withoutTrailingZeros(fraction);
    if (fraction.isEmpty()) {
        const QByteArrayView trimmed = withoutTrailingZeros(integer);
        exponent += integer.size() - trimmed.size();
        integer = trimmed;
    }
    exponent -= fraction.size();
    integer = withoutLeadingZeros(integer);
    if (integer.isEmpty())
        fraction = withoutLeadingZeros(fraction);

    const qint64 count = integer.size() + fraction.size();
    if (count == 0)
        return Decimal();
    if (!isWritable(count, exponent))
        return std::nullopt;

    Decimal result;
    result.m_negative = negative;
    result.m_exponent = qint32(exponent);
    if (count <= maxCoefficientDigits) {
        result.m_coefficient = appended(appended(0, integer), fraction);
    } else {
        auto *const digits = new Digits;
        digits->text = integer.toByteArray();
        digits->text.append(fraction);
        result.m_digits.reset(digits);
    }
    return result;
}

Decimal::PlainText Decimal::plainText() const
{
    char buffer[maxCoefficientDigits + 1];
    QByteArrayView digits;
    if (m_digits)
        digits = m_digits->text;
    else
        digits = m_coefficient == 0
                     ? QByteArrayView("0")
                     : QByteArrayView(writeDigits(m_coefficient, std::end(buffer)), std::end(buffer));

    const qsizetype count = digits.size();
    const qsizetype beforePoint = count + m_exponent;
    const qsizetype length = m_exponent >= 0 ? beforePoint : beforePoint > 0 ? count + 1 : 2 - m_exponent;
    PlainText text(length + (m_negative ? 1 : 0));
    char *at = text.data();
    if (m_negative)
        *at++ = '-';
    if (m_exponent >= 0) {
        std::fill_n(std::copy_n(digits.begin(), count, at), m_exponent, '0');
    } else if (beforePoint > 0) {
        at = std::copy_n(digits.begin(), beforePoint, at);
        *at++ = '.';
        std::copy(digits.begin() + beforePoint, digits.end(), at);
    } else {
        *at++ = '0';
        *at++ = '.';
        std::copy_n(digits.begin(), count, std::fill_n(at, -beforePoint, '0'));
    }
    return text;
}

QString Decimal::stringValue() const
{
    const PlainText text = plainText();
    return QString::fromLatin1(text.data(), text.size());
}

bool Decimal::operator==(const Decimal &other) const
{
    if (m_negative != other.m_negative || m_exponent != other.m_exponent)
        return false;
    if (m_digits && other.m_digits)
        return m_digits->text == other.m_digits->text;
    return !m_digits && !other.m_digits && m_coefficient == other.m_coefficient;
}

} // namespace orvel
