#include "audio/icy/IcyAnswer.h"

#include "audio/icy/IcyHeader.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr qsizetype leastToDecide = 200;
constexpr qsizetype maxHeaderBytes = 64 * 1024;

} // namespace

bool IcyAnswer::gather(QByteArrayView chunk)
{
    m_data.append(chunk);
    return m_data.size() >= leastToDecide;
}

std::optional<QMap<QString, QString>> IcyAnswer::headerFields() const
{
    if (!beginsWithIcyStatus(m_data))
        return std::nullopt;
    const QByteArrayView data = QByteArrayView(m_data).first(std::min(m_data.size(), maxHeaderBytes));
    const qsizetype end = data.indexOf("\r\n\r\n");
    QByteArray text = data.first(end < 0 ? data.size() : end).sliced(icyStatus.size()).toByteArray();
    text.replace("<BR>", "");

    QMap<QString, QString> fields;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype found = text.indexOf(icyLineEnd, start);
        const qsizetype next = found < 0 ? text.size() : found;
        if (const auto field = icyHeaderField(QByteArrayView(text).sliced(start, next - start)))
            fields.insert(field->name, field->value);
        start = next + icyLineEnd.size();
    }
    return fields;
}

} // namespace orvel
