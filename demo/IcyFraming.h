#pragma once

#include <QByteArray>

namespace orvel::demo {

// Puts a metadata block after each `interval` bytes of one listener's audio.
class IcyFraming
{
public:
    // 0 or less: no metadata at all.
    explicit IcyFraming(qint64 interval) : m_interval(interval) {}

    // Returns `audio` with the blocks that fall into it. A block holds `title` (UTF-8) when it differs from
    // the last one, and is a single zero byte otherwise.
    QByteArray framed(const QByteArray &audio, const QByteArray &title);

    // Returns the length byte, "StreamTitle='...';" and zeros up to a multiple of 16. A title that is too
    // long for the length byte (at most 127, since readers take it as signed) is cut between two characters.
    static QByteArray block(QByteArray title);

private:
    qint64 m_interval;
    qint64 m_sinceBlock = 0;
    QByteArray m_told;
};

} // namespace orvel::demo
