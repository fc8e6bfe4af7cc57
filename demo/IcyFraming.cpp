#include "demo/IcyFraming.h"

#include <algorithm>

namespace orvel::demo {

namespace {

constexpr qsizetype unit = 16;
constexpr qsizetype maxUnits = 127;

bool continuesCharacter(char byte) { return (byte & 0xC0) == 0x80; }

} // namespace

QByteArray IcyFraming::framed(const QByteArray &audio, const QByteArray &title)
{
    if (m_interval <= 0)
        return audio;
    QByteArray result;
    qsizetype at = 0;
    while (at < audio.size()) {
        const qsizetype run = qsizetype(std::min<qint64>(m_interval - m_sinceBlock, audio.size() - at));
        result.append(audio.constData() + at, run);
        at += run;
        m_sinceBlock += run;
        if (m_sinceBlock == m_interval) {
            result += title == m_told ? QByteArray(1, '\0') : block(title);
            m_told = title;
            m_sinceBlock = 0;
        }
    }
    return result;
}

QByteArray IcyFraming::block(QByteArray title)
{
    static const QByteArray before = "StreamTitle='";
    static const QByteArray after = "';";
    const qsizetype room = unit * maxUnits - before.size() - after.size();
    if (title.size() > room) {
        qsizetype end = room;
        while (end > 0 && continuesCharacter(title[end]))
            --end;
        title.truncate(end);
    }
    QByteArray text = before + title + after;
    const qsizetype units = (text.size() + unit - 1) / unit;
    text.append(units * unit - text.size(), '\0');
    return char(units) + text;
}

} // namespace orvel::demo
