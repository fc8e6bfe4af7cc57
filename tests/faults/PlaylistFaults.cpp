#include "faults/Fault.h"

namespace orvel::test {

namespace {

constexpr const char *m3u = "/list.m3u";
constexpr const char *pls = "/list.pls";
constexpr const char *xspf = "/list.xspf";

Fault namesNothing(const char *name, const char *path, const QByteArray &body,
                   RadioError error = RadioErrorPlaylistParsing)
{
    Fault fault = fails(name, {Send{httpHead() + body}}, error);
    fault.path = path;
    return fault;
}

Fault namesAStream(const char *name, const char *path, const QByteArray &body)
{
    return {.name = name,
            .answers = {{Send{httpHead() + body}}, soundBehind()},
            .state = RadioStatePlaying,
            .path = path};
}

// No more is read than the first megabyte; the rest is the network's buffers.
Fault endless(Fault fault, const QByteArray &then)
{
    fault.answers.front().push_back(SendForever{then});
    fault.atMostSent = 16 << 20;
    return fault;
}

QByteArray xspfOf(const QByteArray &location, const QByteArray &declarations = {})
{
    return "<!DOCTYPE playlist [" + declarations +
           "]><playlist xmlns='http://xspf.org/ns/0/'><track><location>" + location +
           "</location></track></playlist>";
}

std::vector<Fault> lists()
{
    // It is asked for as a stream, not read as a list again.
    Fault itself = stops("PlaylistThatNamesItself", {Send{httpHead() + "{server}/list.m3u\r\n"}});
    itself.path = m3u;
    itself.requests = 2;
    Fault notFound = namesNothing("PlaylistNotFound", m3u, {}, RadioErrorHostNotReachable);
    notFound.answers = {{Send{httpHead({}, "HTTP/1.1 404 Not Found") + "{server}/live"}}};
    Fault megabyte = namesNothing("M3UThatNamesAMegabyte", m3u,
                                  "{server}/" + QByteArray(900000, 'x') + "\r\n", RadioErrorHostNotReachable);
    megabyte.answers.push_back({Send{httpHead({}, "HTTP/1.1 414 Too Long")}});
    megabyte.requests = 2;
    Fault packed = namesNothing("PackedBombOfAPlaylist", m3u, {});
    packed.answers = {{Send{httpHead("Content-Encoding: deflate\r\n") + bomb()}}};
    return {
        itself,
        notFound,
        megabyte,
        packed,
        namesNothing("M3UWithoutHost", m3u, "http://\r\n", RadioErrorNetworkError),
        namesNothing("PlaylistThatNamesAFile", pls, "File1=file:///etc/hostname\n", RadioErrorNetworkError),
        namesNothing("M3UEmpty", m3u, {}),
        namesNothing("M3UWithNul", m3u, QByteArray("http://127.0.0.1/a\0b\r\n", 22)),
        namesNothing("PLSWithNothingBehind", pls, "File1=\n"),
        endless(namesNothing("M3UWithoutAnEnd", m3u, {}), QByteArray(65536, '#')),
        endless(namesNothing("XSPFWithoutAnEnd", xspf, "<a>"), QByteArray("<b/>").repeated(8000)),
        endless(namesAStream("M3UOfAStreamAndWithoutAnEnd", m3u, "{server}/live\r\n"),
                QByteArray(65536, '#')),
    };
}

std::vector<Fault> documents()
{
    QByteArray explosive = "<!ENTITY e0 'http://127.0.0.1/'>";
    for (int i = 1; i < 30; ++i)
        explosive += "<!ENTITY e" + QByteArray::number(i) + " '" +
                     ("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "'>";
    const QByteArray large = "<!ENTITY large '" + QByteArray(200000, 'y') + "'>";
    QByteArray declared;
    for (int i = 0; i < 1000; ++i)
        declared += "<!ATTLIST a b" + QByteArray::number(i) + " CDATA 'x'>";
    return {
        namesNothing("XSPFBomb", xspf, xspfOf("&e29;", explosive)),
        namesNothing("XSPFOfAFile", xspf, xspfOf("&f;", "<!ENTITY f SYSTEM 'file:///etc/hostname'>")),
        namesNothing("XSPFInADeepNest", xspf, QByteArray("<a>").repeated(200000)),
        namesNothing("XSPFOfDeclaredAttributes", xspf,
                     "<!DOCTYPE p [" + declared + "]><p>" + QByteArray("<a/>").repeated(200000)),
        namesNothing("XSPFWithNul", xspf, xspfOf(QByteArray("\0<track/>", 9))),
        namesNothing("XSPFOfNoise", xspf, QByteArray("\xFF\xFE<\xC0\xAF?\x80 &&&;]]>").repeated(5000)),
        // Neither unfolded nor asked for.
        namesAStream("XSPFOfALargeEntity", xspf,
                     xspfOf("{server}/live" + QByteArray("&large;").repeated(50000), large)),
        namesAStream("XSPFWithAForeignGrammar", xspf,
                     xspfOf("{server}/live", "<!ENTITY % p SYSTEM '{server}/p.dtd'> %p;")),
    };
}

} // namespace

std::vector<Fault> playlistFaults()
{
    std::vector<Fault> all = lists();
    for (Fault &fault : documents())
        all.push_back(std::move(fault));
    return all;
}

} // namespace orvel::test
