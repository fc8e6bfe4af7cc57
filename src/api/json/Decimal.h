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
    // The most digits a plain text may have.
    static constexpr qint64 maxPlainDigits = 1024;
    // The most digits that are kept in place.
    static constexpr qsizetype maxCoefficientDigits = 19;
    using PlainText = QVarLengthArray<char, 48>;

    Decimal() = default;
    explicit Decimal(qint64 value);

    // "<integer>.<fraction>e<exponent>", both runs of ASCII digits, either may be empty. Nothing when the
    // plain text would be longer than maxPlainDigits.
    static std::optional<Decimal> fromParts(bool negative, QByteArrayView integer, QByteArrayView fraction,
                                            qint64 exponent);

    // `coefficient` times ten to the power of `exponent`, bounded likewise. At most maxCoefficientDigits
    // digits.
    static std::optional<Decimal> fromCoefficient(bool negative, quint64 coefficient, qint64 exponent);

    // The digits with a point where one belongs, never in exponent form: "-0.1", "100".
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
