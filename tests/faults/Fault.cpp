#include "faults/Fault.h"

#include "support/EncodedTone.h"

namespace orvel::test {

void PrintTo(const Fault &fault, std::ostream *out) { *out << fault.name; }

const QByteArray &sound()
{
    static const QByteArray bytes = encodeTone({.bitrate = 320000, .seconds = 2}).bytes;
    return bytes;
}

QByteArray soundHead(const QByteArray &fields) { return httpHead("Content-Type: audio/mpeg\r\n" + fields); }

Script goodAnswer() { return {Send{soundHead()}, SendForever{sound()}}; }

QByteArray metadataBlock(const QByteArray &text)
{
    const qsizetype blocks = (text.size() + 15) / 16;
    return char(blocks) + text.leftJustified(blocks * 16, '\0');
}

QByteArray framed(qsizetype interval, const QByteArray &block)
{
    QByteArray bytes;
    for (qsizetype at = 0; at + interval <= sound().size(); at += interval)
        bytes += sound().sliced(at, interval) + (at == 0 ? block : QByteArray(1, '\0'));
    return bytes;
}

} // namespace orvel::test
