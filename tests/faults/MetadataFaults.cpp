#include "faults/Fault.h"

namespace orvel::test {

namespace {

// A stream whose head says `interval` and whose body goes on for ever. What goes wrong must not end the
// sound.
Fault plays(const char *name, const QByteArray &interval, const QByteArray &body,
            const QStringList &titles = {})
{
    return {.name = name,
            .answers = {{Send{soundHead("icy-metaint:" + interval + "\r\n")}, SendForever{body}}},
            .state = RadioStatePlaying,
            .titles = titles};
}

Fault title(const char *name, const QByteArray &text, const QStringList &titles = {})
{
    return plays(name, "8192", framed(8192, metadataBlock(text)), titles);
}

Fault bare(const char *name, const QByteArray &fields, const QString &station)
{
    return {
        .name = name,
        .answers = {{Send{"ICY 200 OK\r\n" + fields + "content-type: audio/mpeg\r\nicy-metaint:8192\r\n\r\n"},
                     SendForever{framed(8192, {1, '\0'})}}},
        .state = RadioStatePlaying,
        .station = station};
}

Script byteByByte(const QByteArray &head)
{
    Script script;
    for (const char byte : head)
        script.push_back(Send{QByteArray(1, byte)});
    return script;
}

std::vector<Fault> intervals()
{
    return {
        plays("IntervalZero", "0", sound()),
        plays("IntervalOne", "1", framed(1, metadataBlock("StreamTitle='Un';")), {"Un"}),
        plays("IntervalNegative", "-8192", sound()),
        plays("IntervalHuge", "2147483647", sound()),
        plays("IntervalBeyondNumbers", "99999999999999999999", sound()),
        plays("IntervalBelowNumbers", "-99999999999999999999", sound()),
        plays("IntervalNoNumber", "eight", sound()),
        plays("IntervalEmpty", "", sound()),
        plays("IntervalInHexadecimal", "0x2000", sound()),
        plays("IntervalWithMoreBehind", "8192 bytes", framed(8192, metadataBlock("StreamTitle='Huit';")),
              {"Huit"}),
        plays("IntervalTwice", "0\r\nIcy-MetaInt: 8192", framed(8192, metadataBlock("StreamTitle='Deux';")),
              {"Deux"}),
    };
}

std::vector<Fault> titles()
{
    // The bytes of a block whose length is read as negative are sound, and count for the interval.
    const QByteArray shortened = sound().first(8192) + '\x90' +
                                 QByteArray("StreamTitle='Non';").leftJustified(2304, '\0') +
                                 sound().first(8192 - 2304) + metadataBlock("StreamTitle='Oui';");
    return {
        plays("LengthOf128AndMore", "8192", shortened, {"Oui"}),
        title("TitleOfTheGreatestLength",
              QByteArray("StreamTitle='" + QByteArray(2000, 'a') + "';").leftJustified(127 * 16, ' '),
              {QString(2000, 'a')}),
        title("TitleWithoutAnEnd", "StreamTitle='" + QByteArray(2000, 'a')),
        title("TitleNotUtf8", "StreamTitle='\xC3\x28\xFF\xFE';"),
        title("TitleOverlongUtf8", "StreamTitle='\xC0\xAF\xED\xA0\x80';"),
        title("TitleWithNuls", QByteArray("StreamTitle='A\0\0B';\0", 21), {"AB"}),
        title("TitleOfFormats", "StreamTitle='%s%n%@{}$(x)';", {"%s%n%@{}$(x)"}),
        title("TitleEmpty", "StreamTitle='';", {""}),
        title("TitleNoTitle", QByteArray(4000, '\xFF')),
    };
}

std::vector<Fault> bareAnswers()
{
    const QByteArray split = "ICY 200 OK\r\nicy-name: Coup\xC3\xA9\r\nicy-metaint: 8192\r\n\r\n";
    Script inBytes = byteByByte(split);
    inBytes.push_back(SendForever{framed(8192, metadataBlock("StreamTitle='Bout';"))});
    return {
        {.name = "BareHeadByteByByte",
         .answers = {inBytes},
         .state = RadioStatePlaying,
         .titles = {"Bout"},
         .station = QString::fromUtf8("Coup\xC3\xA9")},
        bare("BareHeadInLatin1", "icy-name: Zo\xE9\r\n", QString::fromUtf8("Zo\xC3\xA9")),
        bare("BareHeadWithNuls", QByteArray("icy-name: A\0B\r\n\0\0\0\r\n", 20),
             QString(QByteArray("A\0B", 3))),
        bare("BareHeadWithoutColons", QByteArray("icy-name\r\n").repeated(1000), {}),
        bare("BareHeadLineOfAMegabyte", "icy-name: " + QByteArray(1 << 20, 'n') + "\r\n", {}),
        bare("BareHeadOfManyLines", QByteArray("icy-x: y\r\n").repeated(50000) + "icy-name: Nue\r\n", "Nue"),
        {.name = "BareHeadWithoutInterval",
         .answers = {{Send{"ICY 200 OK\r\nicy-name: Nue\r\n\r\n"}, SendForever{sound()}}},
         .state = RadioStateBuffering,
         .station = "Nue",
         .atLeastSent = 64 << 20},
        {.name = "BareHeadWithoutEnd",
         .answers = {{Send{"ICY 200 OK\r\nicy-name: Nue\r\n"},
                      SendForever{("icy-x: " + QByteArray(1000, 'y') + "\r\n").repeated(50)}}},
         .state = RadioStateBuffering,
         .station = "Nue",
         .atLeastSent = 64 << 20},
        {.name = "BareHeadOfOneLineWithoutEnd",
         .answers = {{Send{"ICY 200 OK\r\nicy-name: "}, SendForever{QByteArray(50000, 'n')}}},
         .state = RadioStateBuffering,
         .atLeastSent = 64 << 20},
        {.name = "BareNotFound", .answers = {{Send{"ICY 404 Resource Not Found\r\n\r\n"}}}},
        {.name = "BareServerFull",
         .answers = {{Send{"ICY 401 Service Unavailable\r\nicy-name: Nue\r\n\r\n"}}}},
    };
}

} // namespace

std::vector<Fault> metadataFaults()
{
    std::vector<Fault> all;
    for (const std::vector<Fault> &some : {intervals(), titles(), bareAnswers()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace orvel::test
