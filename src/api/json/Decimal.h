#pragma once

#include <QByteArrayView>
#include <QSharedData>
#include <QString>
#include <QVarLengthArray>
#include <optional>

namespace orvel {

// An exact decimal number: sign, digits and exponent, without leading or trailing zeros; there is one zero,
// and it has no sign.
class Decimal
{
public:
    // Of a plain text.
    static constexpr qint64 maxPlainDigits = 1024;
    // Of those that are kept in place.
    static constexpr qsizetype maxCoefficientDigits = 19;
    using PlainText = QVarLengthArray<char, 48>;

    Decimal() = default;
    explicit Decimal(qint64 value);

    // Returns "<integer>.<fraction>e<exponent>", both runs of ASCII digits, either of which may be empty, or
    // std::nullopt when the plain text would have more than maxPlainDigits.
    static std::optional<Decimal> fromParts(bool negative, QByteArrayView integer, QByteArrayView fraction,
                                            qint64 exponent);

    // Returns `coefficient`, of at most maxCoefficientDigits, times ten to the power of `exponent`, or
    // std::nullopt when the plain text would have more than maxPlainDigits.
    static std::optional<Decimal> fromCoefficient(bool negative, quint64 coefficient, qint64 exponent);

    // Returns the digits with a point where one belongs, never in exponent form: "-0.1", "100".
    PlainText plainText() const;
    QString stringValue() const;

    bool operator==(const Decimal &other) const;

private:
    struct Digits : QSharedData
    {
        QByteArray text;
    };

    quint64 m_coefficient = 0;
    QExplicitlySharedDataPointer<const Digits> m_digits; // in place of the coefficient, when it would not fit
    qint32 m_exponent = 0;
    bool m_negative = false;
};

} // namespace orvel
