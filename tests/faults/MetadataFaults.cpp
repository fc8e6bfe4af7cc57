#include "faults/Fault.h"

namespace orvel::test {

namespace {

// A block of in-band metadata: its length byte, the text, the padding.
QByteArray metadataBlock(const QByteArray &text)
{
    const qsizetype blocks = (text.size() + 15) / 16;
    return char(blocks) + text.leftJustified(blocks * 16, '\0');
}

// Sound with a metadata block behind every `interval` bytes, the first one `text` and the others empty.
QByteArray framed(qsizetype interval, const QByteArray &text)
{
    QByteArray bytes;
    for (qsizetype at = 0; at + interval <= sound().size(); at += interval)
        bytes += sound().sliced(at, interval) + metadataBlock(at == 0 ? text : QByteArray());
    return bytes;
}

// A stream whose head says `interval` and whose body goes on for ever. What goes wrong must not end the
// sound.
Fault of(const char *name, const QByteArray &interval, const QByteArray &body, const QStringList &titles = {})
{
    Fault fault = plays(name, {Send{soundHead("icy-metaint:" + interval + "\r\n")}, SendForever{body}});
    fault.titles = titles;
    return fault;
}

Fault bare(const char *name, const QByteArray &fields, const QString &station)
{
    const QByteArray head =
        "ICY 200 OK\r\n" + fields + "content-type: audio/mpeg\r\nicy-metaint:8192\r\n\r\n";
    return plays(name, {Send{head}, SendForever{framed(8192, {})}}, station);
}

} // namespace

std::vector<Fault> metadataFaults()
{
    const QByteArray longest = "StreamTitle='" + QByteArray(2000, 'a');
    const QByteArray bareHead = "ICY 200 OK\r\nicy-name: Nue\r\n";
    Fault inBytes = bare("BareHeadByteByByte", {}, "Nue");
    inBytes.answers.front().clear();
    for (const char byte : bareHead + "icy-metaint: 8192\r\n\r\n")
        inBytes.answers.front().push_back(Send{QByteArray(1, byte)});
    inBytes.answers.front().push_back(SendForever{framed(8192, {})});
    return {
        inBytes,
        of("IntervalOne", "1", framed(1, "StreamTitle='Un';"), {"Un"}),
        of("IntervalNegative", "-8192", sound()),
        of("IntervalHuge", "2147483647", sound()),
        of("IntervalBeyondNumbers", "99999999999999999999", sound()),
        of("IntervalInHexadecimal", "0x2000", sound()),
        of("IntervalWithMoreBehind", "8192 bytes", framed(8192, "StreamTitle='Huit';"), {"Huit"}),
        of("IntervalTwice", "0\r\nIcy-MetaInt: 8192", framed(8192, "StreamTitle='Deux';"), {"Deux"}),
        of("TitleOfTheGreatestLength", "8192", framed(8192, (longest + "';").leftJustified(127 * 16, ' ')),
           {QString(2000, 'a')}),
        of("TitleWithoutAnEnd", "8192", framed(8192, longest)),
        of("TitleWithNuls", "8192", framed(8192, QByteArray("StreamTitle='A\0\0B';\0", 21)), {"AB"}),
        bare("BareHeadWithNuls", QByteArray("icy-name: A\0B\r\n\0\0\0\r\n", 20),
             QString(QByteArray("A\0B", 3))),
        bare("BareHeadWithoutColons", QByteArray("icy-name\r\n").repeated(1000), {}),
        bare("BareHeadLineOfAMegabyte", "icy-name: " + QByteArray(1 << 20, 'n') + "\r\n", {}),
        bare("BareHeadOfManyLines", QByteArray("icy-x: y\r\n").repeated(50000) + "icy-name: Nue\r\n", "Nue"),
        buffers("BareHeadWithoutInterval", soundBehind(bareHead + "\r\n"), "Nue"),
        buffers("BareHeadWithoutEnd",
                {Send{bareHead}, SendForever{("icy-x: " + QByteArray(1000, 'y') + "\r\n").repeated(50)}},
                "Nue"),
        buffers("BareHeadOfOneLineWithoutEnd",
                {Send{"ICY 200 OK\r\nicy-name: "}, SendForever{QByteArray(50000, 'n')}}),
        stops("BareNotFound", {Send{"ICY 404 Resource Not Found\r\n\r\n"}}),
    };
}

} // namespace orvel::test
