#include "api/json/Decimal.h"

#include <algorithm>
#include <charconv>

namespace orvel {

namespace {

constexpr qsizetype maxCoefficientDigits = 19;

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

quint64 appended(quint64 number, QByteArrayView digits)
{
    for (const char digit : digits)
        number = number * 10 + static_cast<quint64>(digit - '0');
    return number;
}

} // namespace

Decimal::Decimal(qint64 value)
{
    char text[24];
    const char *const end = std::to_chars(text, text + sizeof text, value).ptr;
    const char *const digits = value < 0 ? text + 1 : text;
    *this = *fromParts(value < 0, QByteArrayView(digits, end), {}, 0);
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
    const qint64 plainDigits = exponent >= 0 ? count + exponent : std::max(count, 1 - exponent);
    if (plainDigits > maxPlainDigits)
        return std::nullopt;

    Decimal result;
    result.m_negative = negative;
    result.m_exponent = static_cast<qint32>(exponent);
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
        digits = {buffer, std::to_chars(buffer, buffer + sizeof buffer, m_coefficient).ptr};

    PlainText text;
    const auto append = [&text](QByteArrayView run) { text.append(run.data(), run.size()); };
    const auto appendZeros = [&text](qsizetype count) { text.resize(text.size() + count, '0'); };
    if (m_negative)
        text.append('-');
    const qsizetype beforePoint = digits.size() + m_exponent;
    if (m_exponent >= 0) {
        append(digits);
        appendZeros(m_exponent);
    } else if (beforePoint > 0) {
        append(digits.first(beforePoint));
        text.append('.');
        append(digits.sliced(beforePoint));
    } else {
        append("0.");
        appendZeros(-beforePoint);
        append(digits);
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
