#include "audio/icy/IcyHeader.h"

#include "platform/foundation/ByteText.h"

namespace orvel {

bool beginsWithIcyStatus(QByteArrayView answer)
{
    return answer.size() >= icyStatus.size() &&
           answer.first(icyStatus.size()).compare(icyStatus, Qt::CaseInsensitive) == 0;
}

std::optional<IcyHeaderField> icyHeaderField(QByteArrayView line)
{
    const QString text = decodeUtf8(line).value_or(QString::fromLatin1(line));
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0)
        return std::nullopt;
    return IcyHeaderField{text.first(colon), text.sliced(colon + 1)};
}

} // namespace orvel
