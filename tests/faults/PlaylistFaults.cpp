#include "faults/Fault.h"

namespace orvel::test {

namespace {

constexpr const char *m3u = "/list.m3u";
constexpr const char *pls = "/list.pls";
constexpr const char *xspf = "/list.xspf";
// What the network's buffers hold beside the first megabyte, which is all that is read.
constexpr qint64 mostRead = 16 << 20;

Fault namesNothing(const char *name, const char *path, const QByteArray &body)
{
    return {.name = name,
            .answers = {{Send{httpHead() + body}}},
            .state = RadioStateError,
            .error = RadioErrorPlaylistParsing,
            .path = path};
}

Fault namesAStream(const char *name, const char *path, const Script &answer)
{
    return {.name = name, .answers = {answer, goodAnswer()}, .state = RadioStatePlaying, .path = path};
}

Fault endless(Fault fault, const QByteArray &first, const QByteArray &then)
{
    fault.answers.front() = {Send{httpHead("Content-Length: 104857600\r\n") + first}, SendForever{then}};
    fault.atMostSent = mostRead;
    return fault;
}

QByteArray xspfOf(const QByteArray &tracks, const QByteArray &docType = {})
{
    return "<?xml version='1.0'?>" + docType + "<playlist xmlns='http://xspf.org/ns/0/'><trackList>" +
           tracks + "</trackList></playlist>";
}

QByteArray track(const QByteArray &location)
{
    return "<track><location>" + location + "</location></track>";
}

std::vector<Fault> lists()
{
    // It is asked for as a stream, not read as a list again.
    Fault itself{.name = "PlaylistThatNamesItself",
                 .answers = {{Send{httpHead() + "{server}/list.m3u\r\n"}}},
                 .path = m3u,
                 .requests = 2};
    Fault notFound = namesNothing("PlaylistNotFound", m3u, {});
    notFound.answers = {{Send{httpHead({}, "HTTP/1.1 404 Not Found") + "{server}/live"}}};
    notFound.error = RadioErrorHostNotReachable;
    Fault unsupported =
        namesNothing("PlaylistThatNamesAFile", pls, "[playlist]\nFile1=file:///etc/hostname\n");
    unsupported.error = RadioErrorNetworkError;
    Fault noHost = namesNothing("M3UWithoutHost", m3u, "http://\r\n");
    noHost.error = RadioErrorNetworkError;
    return {
        noHost,
        namesNothing("M3UEmpty", m3u, {}),
        namesNothing("PLSEmpty", pls, {}),
        namesNothing("XSPFEmpty", xspf, {}),
        namesNothing("PlaylistIsAPage", m3u, "<html><a href=\"http://127.0.0.1/\">here</a></html>"),
        namesNothing("M3UNotUtf8", m3u, "#\xFF\xFE\r\n{server}/live\r\n"),
        namesNothing("PLSNotUtf8", pls, "Title1=\xE9t\xE9\nFile1={server}/live\n"),
        namesNothing("M3UWithNul", m3u, QByteArray("http://127.0.0.1/a\0b\r\n", 22)),
        namesNothing("PLSWithNothingBehind", pls, "File1=\n"),
        itself,
        notFound,
        unsupported,
        endless(namesNothing("M3UOf100MBWithoutAName", m3u, {}), {}, QByteArray(65536, '#')),
        endless(namesNothing("PLSOf100MBWithoutAName", pls, {}), {}, QByteArray("Title=x\n").repeated(8000)),
        endless(namesNothing("XSPFOf100MBWithoutAName", xspf, {}), "<?xml version='1.0'?><a>",
                QByteArray("<b/>").repeated(8000)),
        endless(namesAStream("M3UOf100MB", m3u, {}), "{server}/live\r\n", QByteArray(65536, '#')),
        {.name = "M3UThatNamesAMegabyte",
         .answers = {{Send{httpHead() + "{server}/" + QByteArray(900000, 'x') + "\r\n"}},
                     {Send{httpHead({}, "HTTP/1.1 414 Too Long")}}},
         .state = RadioStateError,
         .error = RadioErrorHostNotReachable,
         .path = m3u},
        {.name = "PackedBombOfAPlaylist",
         .answers = {{Send{httpHead("Content-Encoding: deflate\r\n") +
                           qCompress(QByteArray(64 << 20, '#'), 9).sliced(4)}}},
         .state = RadioStateError,
         .error = RadioErrorPlaylistParsing,
         .path = m3u},
    };
}

std::vector<Fault> documents()
{
    QByteArray bomb = "<!DOCTYPE playlist [<!ENTITY e0 'http://127.0.0.1/'>";
    for (int i = 1; i < 30; ++i)
        bomb += "<!ENTITY e" + QByteArray::number(i) + " '" +
                ("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "'>";
    bomb += "]>";
    QByteArray declared = "<!DOCTYPE playlist [";
    for (int i = 0; i < 1000; ++i)
        declared += "<!ATTLIST a b" + QByteArray::number(i) + " CDATA 'x'>";
    declared += "]><playlist>";
    const QByteArray file = "<!DOCTYPE playlist [<!ENTITY file SYSTEM 'file:///etc/hostname'>]>";
    const QByteArray foreign =
        "<!DOCTYPE playlist SYSTEM '{server}/list.dtd' [<!ENTITY % p SYSTEM '{server}/p.dtd'> %p;]>";
    return {
        namesNothing("XSPFBomb", xspf, xspfOf(track("&e29;"), bomb)),
        namesNothing("XSPFBombInAnAttribute", xspf, xspfOf("<track a='&e29;'/>", bomb)),
        namesNothing("XSPFOfAFile", xspf, xspfOf(track("&file;"), file)),
        namesAStream("XSPFWithAForeignGrammar", xspf,
                     {Send{httpHead() + xspfOf(track("{server}/live"), foreign)}}),
        namesNothing("XSPFInADeepNest", xspf, QByteArray("<a>").repeated(200000)),
        namesNothing("XSPFOfDeclaredAttributes", xspf, declared + QByteArray("<a/>").repeated(200000)),
        namesNothing("XSPFOfManyAttributes", xspf,
                     xspfOf("<track" + QByteArray(" a='b'").repeated(150000) + "/>")),
        namesNothing("XSPFWithNul", xspf, xspfOf(QByteArray("\0<track/>", 9))),
        namesNothing("XSPFOfNoise", xspf, QByteArray("\xFF\xFE<\xC0\xAF?\x80 &&&;]]>").repeated(5000)),
        namesNothing("XSPFOfAnotherNamespace", xspf,
                     "<playlist xmlns='x'><track><location>{server}/live</location></track></playlist>"),
        namesAStream(
            "XSPFWithATitleNotUtf8", xspf,
            {Send{httpHead() + xspfOf(track("{server}/live") + "<track><title>\xE9t\xE9</title></track>")}}),
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
