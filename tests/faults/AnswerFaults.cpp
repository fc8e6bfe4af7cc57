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
        fails("ThousandsOfFields", soundBehind(soundHead(names))),
        fails("HeadWithoutEnd", {Send{"HTTP/1.1 200 OK\r\n"}, SendForever{fields}}),
        fails("InterimHeadsWithoutEnd", {SendForever{httpHead({}, "HTTP/1.1 100 Continue").repeated(100)}}),
        fails("FieldWithoutColon", soundBehind(soundHead("no colon here\r\n"))),
        plays("InterimHead", soundBehind(httpHead("A: b\r\n", "HTTP/1.1 103 Early Hints") + soundHead())),
        plays("NameInLatin1", soundBehind(soundHead("icy-name: Zo\xE9\r\n")), "Zoé"),
    };
}

std::vector<Fault> statusesAndRedirects()
{
    Fault loop = fails("RedirectLoop", redirectTo("/live"));
    loop.requests = 21;
    return {
        fails("BadRequest", soundBehind(httpHead({}, "HTTP/1.1 400 Bad Request")),
              RadioErrorHostNotReachable),
        stops("NoContent", {Send{httpHead({}, "HTTP/1.1 204 No Content")}, Stall{}}),
        plays("PartialContent",
              soundBehind(httpHead("Content-Range: bytes 5-9/2\r\n", "HTTP/1.1 206 Partial"))),
        loop,
        fails("RedirectToAFile", redirectTo("file:///etc/hostname")),
        stops("RedirectToNowhere", {Send{httpHead({}, "HTTP/1.1 302 Found") + "nothing here"}}),
    };
}

std::vector<Fault> bodies()
{
    return {
        plays("SoundWithoutType", soundBehind(httpHead())),
        plays("SoundWithAnotherSoundsType", soundBehind(httpHead("Content-Type: audio/aacp\r\n"))),
        stops("Noise", {Send{soundHead() + noise(4 << 20)}}),
        stops("NoAnswerAtAll", {Send{noise(4 << 20)}}),
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
        fails("LengthNegative", soundBehind(soundHead("Content-Length: -5\r\n"))),
        plays("LengthBeyondNumbers", soundBehind(soundHead("Content-Length: 99999999999999999999\r\n"))),
        fails("TrailersWithoutEnd", {Send{chunked + "0\r\n"}, SendForever{fields}}),
        // Sound is not unpacked, whatever the head says.
        stops("BombOfZeros", {Send{packed + bomb()}}),
        plays("SoundThatIsCalledPacked", soundBehind(packed)),
    };
}

// Answers whose head is in their body.
std::vector<Fault> bareAnswers()
{
    const QByteArray head = "ICY 200 OK\r\nicy-name: Nue\r\n";
    Fault byByte = plays("BareHeadByteByByte", {}, "Nue");
    for (const char byte : head + "content-type: audio/mpeg\r\nicy-metaint: 70000\r\n\r\n")
        byByte.answers.front().push_back(Send{QByteArray(1, byte)});
    byByte.answers.front().push_back(SendForever{sound().first(70000) + '\0'});
    return {
        byByte,
        buffers("BareHeadWithoutInterval", soundBehind(head + "\r\n"), "Nue"),
        buffers("BareHeadWithoutEnd",
                {Send{head}, SendForever{("icy-x: " + QByteArray(1000, 'y') + "\r\n").repeated(50)}}, "Nue"),
        buffers("BareHeadOfOneLineWithoutEnd",
                {Send{"ICY 200 OK\r\nicy-name: "}, SendForever{QByteArray(50000, 'n')}}),
        stops("BareNotFound", {Send{"ICY 404 Resource Not Found\r\n\r\n"}}),
    };
}

} // namespace

std::vector<Fault> answerFaults()
{
    std::vector<Fault> all;
    for (const std::vector<Fault> &some :
         {heads(), statusesAndRedirects(), bodies(), framings(), bareAnswers()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace orvel::test
