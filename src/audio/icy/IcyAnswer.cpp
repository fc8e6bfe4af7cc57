#include "audio/icy/IcyAnswer.h"

#include "platform/foundation/ByteText.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr QByteArrayView status("ICY 200 OK");
constexpr QByteArrayView lineEnd("\r\n");
constexpr qsizetype mostHeaderBytes = 64 * 1024;

} // namespace

std::optional<QMap<QString, QString>> icyHeaderFields(QByteArrayView data)
{
    if (data.size() < status.size() || data.first(status.size()).compare(status, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    data = data.first(std::min(data.size(), mostHeaderBytes)).sliced(status.size());
    const qsizetype end = data.indexOf("\r\n\r\n");
    QByteArray text = data.first(end < 0 ? data.size() : end).toByteArray();
    text.replace("<BR>", "");

    QMap<QString, QString> fields;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype found = text.indexOf(lineEnd, start);
        const qsizetype next = found < 0 ? text.size() : found;
        const QByteArrayView line = QByteArrayView(text).sliced(start, next - start);
        const QString content = decodeUtf8(line).value_or(QString::fromLatin1(line));
        const qsizetype colon = content.indexOf(u':');
        if (colon >= 0)
            fields.insert(content.first(colon), content.sliced(colon + 1));
        start = next + lineEnd.size();
    }
    return fields;
}

} // namespace orvel
