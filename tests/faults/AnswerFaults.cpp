#include "faults/Fault.h"

#include <random>

namespace orvel::test {

namespace {

const QByteArray page =
    "<!DOCTYPE html><html><body>" + QByteArray("<p>Pas de radio ici</p>").repeated(5000) + "</body></html>";

// The head says what curl or the player must refuse.
Fault refused(const char *name, const Script &answer)
{
    return {.name = name, .answers = {answer}, .state = RadioStateError, .error = RadioErrorNetworkError};
}

Fault plays(const char *name, const Script &answer)
{
    return {.name = name, .answers = {answer}, .state = RadioStatePlaying};
}

Fault status(const char *name, const QByteArray &line)
{
    return {.name = name,
            .answers = {{Send{httpHead("Content-Type: audio/mpeg\r\n", line)}, SendForever{sound()}}},
            .state = RadioStateError,
            .error = RadioErrorHostNotReachable};
}

Script redirectTo(const QByteArray &location)
{
    return {Send{httpHead("Location: " + location + "\r\nContent-Length: 0\r\n", "HTTP/1.1 302 Found")}};
}

QByteArray noise(qsizetype size)
{
    std::mt19937 generator(7);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(generator());
    return bytes;
}

QByteArray chunk(const QByteArray &bytes)
{
    return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

// In zlib's format.
QByteArray deflated(const QByteArray &bytes) { return qCompress(bytes, 9).sliced(4); }

std::vector<Fault> heads()
{
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    const QByteArray line = QByteArray(1 << 20, 'x');
    QByteArray manyNames;
    for (int i = 0; i < 5000; ++i)
        manyNames += "X-" + QByteArray::number(i) + ": y\r\n";
    Fault latin1 = plays("NameInLatin1", {Send{soundHead("icy-name: Zo\xE9\r\n")}, SendForever{sound()}});
    latin1.station = QString::fromUtf8("Zo\xC3\xA9");
    Fault overlong = plays("FieldNamesNotUtf8", {Send{soundHead("\xFF\xFE: \xC0\xAF\r\nicy-name: Nord\r\n")},
                                                 SendForever{sound()}});
    overlong.station = "Nord";
    return {
        refused("FieldOfAMegabyte", {Send{soundHead("X: " + line + "\r\n")}, SendForever{sound()}}),
        refused("FieldNameOfAMegabyte", {Send{soundHead(line + ": x\r\n")}, SendForever{sound()}}),
        refused("StatusLineOfAMegabyte", {Send{"HTTP/1.1 200 " + line + "\r\n\r\n"}, SendForever{sound()}}),
        refused("ThousandsOfFields", {Send{soundHead(manyNames)}, SendForever{sound()}}),
        refused("HeadWithoutEnd", {Send{ok}, SendForever{QByteArray("X: y\r\n").repeated(1000)}}),
        refused("InterimHeadsWithoutEnd", {SendForever{httpHead({}, "HTTP/1.1 100 Continue").repeated(100)}}),
        refused("FieldWithNul",
                {Send{soundHead(QByteArray("icy-name: A\0B\r\n", 15))}, SendForever{sound()}}),
        plays("ThousandsOfTheSameField",
              {Send{soundHead(QByteArray("X: y\r\n").repeated(5000))}, SendForever{sound()}}),
        refused("FieldWithoutColon", {Send{soundHead("no colon here\r\n")}, SendForever{sound()}}),
        plays("InterimHead",
              {Send{httpHead("A: b\r\n", "HTTP/1.1 103 Early Hints") + soundHead()}, SendForever{sound()}}),
        latin1,
        overlong,
    };
}

std::vector<Fault> statuses()
{
    return {
        status("BadRequest", "HTTP/1.1 400 Bad Request"),
        status("NotFound", "HTTP/1.0 404 Not Found"),
        status("ServerError", "HTTP/1.1 500 Internal Server Error"),
        status("Unavailable", "HTTP/1.1 503"),
        status("Unheard", "HTTP/1.1 999 Never"),
        {.name = "NoContent", .answers = {{Send{httpHead({}, "HTTP/1.1 204 No Content")}, Stall{}}}},
        {.name = "NotModified", .answers = {{Send{httpHead({}, "HTTP/1.1 304 Not Modified")}, Stall{}}}},
        plays("PartialContent", {Send{httpHead("Content-Range: bytes 5-9/2\r\n", "HTTP/1.1 206 Partial")},
                                 SendForever{sound()}}),
    };
}

std::vector<Fault> redirects()
{
    const auto followed = [](const char *name, const QByteArray &location) {
        return Fault{
            .name = name, .answers = {redirectTo(location), goodAnswer()}, .state = RadioStatePlaying};
    };
    Fault loop = refused("RedirectLoop", redirectTo("/live"));
    loop.requests = 21;
    Fault playlistLoop = loop;
    playlistLoop.name = "PlaylistRedirectLoop";
    playlistLoop.path = "/list.xspf";
    playlistLoop.error = RadioErrorHostNotReachable;
    return {
        loop,
        playlistLoop,
        refused("RedirectToAFile", redirectTo("file:///etc/hostname")),
        refused("RedirectToFtp", redirectTo("ftp://127.0.0.1/x.mp3")),
        refused("RedirectToData", redirectTo("data:audio/mpeg;base64,AAAA")),
        refused("RedirectToNoAddress", redirectTo("http://[::x/")),
        followed("RedirectToAnotherStream", "{server}/other"),
        followed("RedirectToARelativePath", "other"),
        followed("RedirectOfManyBytes", "/" + QByteArray(30000, 'x')),
        {.name = "RedirectToNowhere",
         .answers = {{Send{httpHead({}, "HTTP/1.1 302 Found") + "nothing here"}}}},
    };
}

std::vector<Fault> bodies()
{
    QByteArray noSync = noise(1 << 20);
    noSync.replace('\xFF', '\0');
    return {
        plays("SoundAsText", {Send{httpHead("Content-Type: text/plain\r\n")}, SendForever{sound()}}),
        plays("SoundWithoutType", {Send{httpHead()}, SendForever{sound()}}),
        plays("SoundWithAnotherSoundsType",
              {Send{httpHead("Content-Type: audio/aacp\r\n")}, SendForever{sound()}}),
        plays("SoundBehindNoise", {Send{soundHead() + noSync}, SendForever{sound()}}),
        {.name = "Picture",
         .answers = {{Send{httpHead("Content-Type: image/png\r\n")}, SendForever{noSync}}},
         .state = RadioStateBuffering,
         .atLeastSent = 64 << 20},
        {.name = "Noise", .answers = {{Send{soundHead() + noise(4 << 20)}}}},
        {.name = "NoAnswerAtAll", .answers = {{Send{noise(4 << 20)}}}},
        {.name = "OnlySyncBytes", .answers = {{Send{soundHead() + QByteArray(4 << 20, '\xFF')}}}},
        {.name = "Page", .answers = {{Send{httpHead("Content-Type: text/html\r\n") + page}}}},
        {.name = "PageAsSound", .answers = {{Send{soundHead() + page}}}},
        {.name = "EndlessPage",
         .answers = {{Send{httpHead("Content-Type: text/html\r\n")}, SendForever{page}}},
         .state = RadioStateBuffering,
         .atLeastSent = 64 << 20},
    };
}

std::vector<Fault> framings()
{
    const QByteArray length = QByteArray::number(sound().size());
    const QByteArray chunked = soundHead("Transfer-Encoding: chunked\r\n");
    const QByteArray packed = soundHead("Content-Encoding: deflate\r\n");
    Fault cut = refused("ShorterThanItsLength",
                        {Send{soundHead("Content-Length: 999999\r\n") + sound()}, Pause{0.3}});
    cut.sounds = true;
    Fault brokenChunk =
        refused("ChunkWithoutASize", {Send{chunked + chunk(sound())}, Pause{0.3}, Send{"none\r\n"}, Stall{}});
    brokenChunk.sounds = true;
    Fault cutChunk = refused("ChunkCut", {Send{chunked + chunk(sound()).chopped(9)}, Pause{0.3}});
    cutChunk.sounds = true;
    return {
        cut,
        {.name = "LongerThanItsLength",
         .answers = {{Send{soundHead("Content-Length: " + length + "\r\n")}, SendForever{sound()}}},
         .sounds = true},
        {.name = "LengthZero", .answers = {{Send{soundHead("Content-Length: 0\r\n")}, SendForever{sound()}}}},
        refused("LengthNegative", {Send{soundHead("Content-Length: -5\r\n")}, SendForever{sound()}}),
        refused("LengthNoNumber", {Send{soundHead("Content-Length: all\r\n")}, SendForever{sound()}}),
        plays("LengthBeyondNumbers",
              {Send{soundHead("Content-Length: 99999999999999999999\r\n")}, SendForever{sound()}}),
        plays("Chunks", {Send{chunked}, SendForever{chunk(sound())}}),
        brokenChunk,
        cutChunk,
        refused("ChunkBeyondNumbers", {Send{chunked + "FFFFFFFFFFFFFFFFFF\r\n"}, SendForever{sound()}}),
        refused("TrailersWithoutEnd",
                {Send{chunked + "0\r\n"}, SendForever{QByteArray("X: y\r\n").repeated(1000)}}),
        {.name = "BombOfZeros", .answers = {{Send{packed + deflated(QByteArray(64 << 20, '\0'))}}}},
        // Sound is not unpacked, whatever the head says.
        plays("SoundThatIsCalledPacked", {Send{packed}, SendForever{sound()}}),
        plays("SoundThatIsCalledPackedManyTimes",
              {Send{soundHead("Content-Encoding: " + QByteArray("gzip, ").repeated(50) + "orvel\r\n")},
               SendForever{sound()}}),
    };
}

} // namespace

std::vector<Fault> answerFaults()
{
    std::vector<Fault> all;
    for (const std::vector<Fault> &some : {heads(), statuses(), redirects(), bodies(), framings()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace orvel::test
