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

} // namespace

std::vector<Fault> playlistFaults()
{
    // It is asked for as a stream, not read as a list again.
    Fault itself = stops("PlaylistThatNamesItself", {Send{httpHead() + "{server}/list.m3u\r\n"}});
    itself.path = m3u;
    itself.requests = 2;
    Fault packed = namesNothing("PackedBombOfAPlaylist", m3u, {});
    packed.answers = {{Send{httpHead("Content-Encoding: deflate\r\n") + bomb()}}};
    return {
        itself,
        packed,
        namesNothing("M3UWithoutHost", m3u, "http://\r\n", RadioErrorNetworkError),
        namesNothing("PlaylistThatNamesAFile", pls, "File1=file:///etc/hostname\n", RadioErrorNetworkError),
        endless(namesNothing("XSPFWithoutAnEnd", xspf, "<a>"), QByteArray("<b/>").repeated(8000)),
        endless(namesAStream("M3UOfAStreamAndWithoutAnEnd", m3u, "{server}/live\r\n"),
                QByteArray(65536, '#')),
        // Neither unfolded nor asked for.
        namesAStream(
            "XSPFWithAForeignGrammar", xspf,
            "<!DOCTYPE playlist [<!ENTITY % p SYSTEM '{server}/p.dtd'> %p;]><playlist "
            "xmlns='http://xspf.org/ns/0/'><track><location>{server}/live</location></track></playlist>"),
    };
}

} // namespace orvel::test
