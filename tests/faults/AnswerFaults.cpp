#include "faults/Fault.h"

#include <random>

namespace orvel::test {

namespace {

const QByteArray page =
    "<!DOCTYPE html><html><body>" + QByteArray("<p>Pas de radio ici</p>").repeated(5000) + "</body></html>";
const QByteArray fields = QByteArray("X: y\r\n").repeated(5000);

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

std::vector<Fault> heads()
{
    const QByteArray line(1 << 20, 'x');
    QByteArray names;
    for (int i = 0; i < 5000; ++i)
        names += "X-" + QByteArray::number(i) + ": y\r\n";
    return {
        fails("FieldOfAMegabyte", soundBehind(soundHead("X: " + line + "\r\n"))),
        fails("FieldNameOfAMegabyte", soundBehind(soundHead(line + ": x\r\n"))),
        fails("StatusLineOfAMegabyte", soundBehind("HTTP/1.1 200 " + line + "\r\n\r\n")),
        fails("ThousandsOfFields", soundBehind(soundHead(names))),
        fails("HeadWithoutEnd", {Send{"HTTP/1.1 200 OK\r\n"}, SendForever{fields}}),
        fails("InterimHeadsWithoutEnd", {SendForever{httpHead({}, "HTTP/1.1 100 Continue").repeated(100)}}),
        fails("FieldWithNul", soundBehind(soundHead(QByteArray("icy-name: A\0B\r\n", 15)))),
        fails("FieldWithoutColon", soundBehind(soundHead("no colon here\r\n"))),
        plays("ThousandsOfTheSameField", soundBehind(soundHead(fields))),
        plays("InterimHead", soundBehind(httpHead("A: b\r\n", "HTTP/1.1 103 Early Hints") + soundHead())),
        plays("NameInLatin1", soundBehind(soundHead("icy-name: Zo\xE9\r\n")), "Zoé"),
        plays("FieldNamesNotUtf8", soundBehind(soundHead("\xFF\xFE: \xC0\xAF\r\nicy-name: Nord\r\n")),
              "Nord"),
    };
}

std::vector<Fault> statusesAndRedirects()
{
    const auto status = [](const char *name, const QByteArray &line) {
        return fails(name, soundBehind(httpHead({}, line)), RadioErrorHostNotReachable);
    };
    Fault loop = fails("RedirectLoop", redirectTo("/live"));
    loop.requests = 21;
    Fault longPath = plays("RedirectOfManyBytes", redirectTo("/" + QByteArray(30000, 'x')));
    longPath.answers.push_back(soundBehind());
    longPath.requests = 2;
    return {
        status("BadRequest", "HTTP/1.1 400 Bad Request"),
        status("Unavailable", "HTTP/1.0 503"),
        status("Unheard", "HTTP/1.1 999 Never"),
        stops("NoContent", {Send{httpHead({}, "HTTP/1.1 204 No Content")}, Stall{}}),
        plays("PartialContent",
              soundBehind(httpHead("Content-Range: bytes 5-9/2\r\n", "HTTP/1.1 206 Partial"))),
        loop,
        longPath,
        fails("RedirectToAFile", redirectTo("file:///etc/hostname")),
        fails("RedirectToNoAddress", redirectTo("http://[::x/")),
        stops("RedirectToNowhere", {Send{httpHead({}, "HTTP/1.1 302 Found") + "nothing here"}}),
    };
}

std::vector<Fault> bodies()
{
    QByteArray noSync = noise(1 << 20);
    noSync.replace('\xFF', '\0');
    return {
        plays("SoundWithoutType", soundBehind(httpHead())),
        plays("SoundWithAnotherSoundsType", soundBehind(httpHead("Content-Type: audio/aacp\r\n"))),
        plays("SoundBehindNoise", soundBehind(soundHead() + noSync)),
        stops("Noise", {Send{soundHead() + noise(4 << 20)}}),
        stops("NoAnswerAtAll", {Send{noise(4 << 20)}}),
        stops("OnlySyncBytes", {Send{soundHead() + QByteArray(4 << 20, '\xFF')}}),
        stops("PageAsSound", {Send{soundHead() + page}}),
        buffers("EndlessPage", {Send{httpHead("Content-Type: text/html\r\n")}, SendForever{page}}),
    };
}

std::vector<Fault> framings()
{
    const QByteArray length = QByteArray::number(sound().size());
    const QByteArray chunked = soundHead("Transfer-Encoding: chunked\r\n");
    const QByteArray packed = soundHead("Content-Encoding: deflate\r\n");
    Fault cut = fails("ShorterThanItsLength",
                      {Send{soundHead("Content-Length: 999999\r\n") + sound()}, WaitForRelease{}});
    cut.sounds = true;
    Fault chunkCut =
        fails("ChunkWithoutASize", {Send{chunked + QByteArray::number(sound().size(), 16) + "\r\n" + sound()},
                                    WaitForRelease{}, Send{"\r\nnone\r\n"}, Stall{}});
    chunkCut.sounds = true;
    return {
        cut,
        chunkCut,
        stops("LongerThanItsLength", soundBehind(soundHead("Content-Length: " + length + "\r\n")), true),
        stops("LengthZero", soundBehind(soundHead("Content-Length: 0\r\n"))),
        fails("LengthNegative", soundBehind(soundHead("Content-Length: -5\r\n"))),
        plays("LengthBeyondNumbers", soundBehind(soundHead("Content-Length: 99999999999999999999\r\n"))),
        fails("ChunkBeyondNumbers", soundBehind(chunked + "FFFFFFFFFFFFFFFFFF\r\n")),
        fails("TrailersWithoutEnd", {Send{chunked + "0\r\n"}, SendForever{fields}}),
        // Sound is not unpacked, whatever the head says.
        stops("BombOfZeros", {Send{packed + bomb()}}),
        plays("SoundThatIsCalledPacked", soundBehind(packed)),
    };
}

} // namespace

std::vector<Fault> answerFaults()
{
    std::vector<Fault> all;
    for (const std::vector<Fault> &some : {heads(), statusesAndRedirects(), bodies(), framings()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace orvel::test
