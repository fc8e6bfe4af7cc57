#include "platform/foundation/ByteText.h"

#include <QStringDecoder>
#include <algorithm>
#include <limits>

namespace orvel {

std::optional<QString> decodeUtf8(QByteArrayView bytes)
{
    // Stateless, so that a sequence cut at the end counts as an error too; the mark at the start is a
    // character.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text.isNull() ? QStringLiteral("") : text;
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
    return static_cast<qint32>(std::clamp<qint64>(integerValue(text), std::numeric_limits<qint32>::min(),
                                                  std::numeric_limits<qint32>::max()));
}

bool equalsIgnoringCase(QStringView a, QStringView b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

} // namespace orvel
