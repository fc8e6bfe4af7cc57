#include "support/EncodedTone.h"
#include "support/EnvironmentValue.h"
#include "support/Footprint.h"
#include "support/PlayerUnderTest.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace orvel;
using namespace orvel::test;

namespace {

// What a server does to the player, and what becomes of it.
struct Fault
{
    const char *name;
    std::vector<Script> answers; // the n-th connection's; later ones get the last
    RadioState state = RadioStateStopped;
    RadioError error = RadioErrorNone;
    const char *path = "/live";
    bool sounds = state == RadioStatePlaying; // sometime; then the server is released
    QString station{};
    std::size_t requests = answers.size();
    qint64 atLeastSent = 0; // before the player is judged
    qint64 atMostSent = std::numeric_limits<qint64>::max();
};

// Two seconds of MP3, enough to start with.
const QByteArray &sound()
{
    static const QByteArray bytes = encodeTone({.bitrate = 320000, .seconds = 2}).bytes;
    return bytes;
}

QByteArray soundHead(const QByteArray &fields = {})
{
    return httpHead("Content-Type: audio/mpeg\r\n" + fields);
}

// Sound without end.
Script soundBehind(const QByteArray &head) { return {Send{head}, SendForever{sound()}}; }

// 64 megabytes of zeros in zlib's format.
QByteArray bomb() { return qCompress(QByteArray(64 << 20, '\0'), 9).sliced(4); }

QByteArray noise()
{
    std::mt19937 generator(7);
    QByteArray bytes(4 << 20, Qt::Uninitialized);
    std::ranges::generate(bytes, [&] { return char(generator()); });
    return bytes;
}

// One run of the player on the silent device against one faulty server.
struct Encounter
{
    explicit Encounter(const Fault &it) : fault(it), server(it.answers)
    {
        player->setBufferInSeconds(1);
        player->play();
    }

    const Fault &fault;
    TakenClock clock;
    SilentDevice device;
    ScriptedServer server;
    PlayerUnderTest player{server.url(QLatin1String(fault.path))};
    const qint64 memoryBefore = anonymousMemory();
    qint64 memory = memoryBefore;

    bool isAsItShould()
    {
        memory = std::max(memory, anonymousMemory());
        return player->radioState() == fault.state && player.hasSounded() == fault.sounds &&
               server.requestCount() >= fault.requests && server.bytesSent() >= fault.atLeastSent;
    }
    void judge()
    {
        EXPECT_TRUE(clock.turnUntil([&] { return player.hasSounded() || !fault.sounds; }));
        server.release();
        EXPECT_TRUE(clock.turnUntil([&] { return isAsItShould(); })) << int(player->radioState());
        // It stays so. An endless stream has a moment for it.
        const bool isEndless = std::holds_alternative<SendForever>(fault.answers.back().back());
        waitUntil([&] { return server.isAtRest(); }, isEndless ? 0.1 : 20);
        EXPECT_TRUE(clock.turnUntil([&] { return isAsItShould(); })) << int(player->radioState());
        EXPECT_EQ(player->radioError(), fault.error);
        EXPECT_EQ(player->radioName(), fault.station);
        EXPECT_EQ(server.requestCount(), fault.requests);
        EXPECT_LE(server.bytesSent(), fault.atMostSent);
        if (!isSanitized) {
            EXPECT_LT(memory - memoryBefore, 48 << 20); // the most: a megabyte of empty elements as a tree
        }
        EXPECT_TRUE(player.letGo());
        EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }));
    }
};

// ORVEL_FAULT runs the one of that name alone.
void expectToEndAsTheyShould(const std::vector<Fault> &faults)
{
    const QByteArray only = qgetenv("ORVEL_FAULT");
    for (const Fault &fault : faults) {
        if (!only.isEmpty() && only != fault.name)
            continue;
        SCOPED_TRACE(fault.name);
        Encounter(fault).judge();
    }
}

} // namespace

TEST(FaultsTest, OfAnswers)
{
    const auto fails = [](const char *name, const Script &script, RadioError error = RadioErrorNetworkError,
                          bool sounds = false) {
        return Fault{
            .name = name, .answers = {script}, .state = RadioStateError, .error = error, .sounds = sounds};
    };
    const auto plays = [](const char *name, const Script &script, const QString &station = {}) {
        return Fault{.name = name, .answers = {script}, .state = RadioStatePlaying, .station = station};
    };
    const auto redirectTo = [](const QByteArray &location) {
        return Script{Send{httpHead("Location: " + location + "\r\n", "HTTP/1.1 302 Found")}};
    };
    Fault loop = fails("RedirectLoop", redirectTo("/live"));
    loop.requests = 21;
    const QByteArray chunked = soundHead("Transfer-Encoding: chunked\r\n");
    const QByteArray packed = soundHead("Content-Encoding: deflate\r\n");
    const QByteArray length = "Content-Length: " + QByteArray::number(sound().size()) + "\r\n";
    expectToEndAsTheyShould({
        fails("HeadWithoutEnd",
              {Send{"HTTP/1.1 200 OK\r\n"}, SendForever{"X: " + QByteArray(60000, 'y') + "\r\n"}}),
        fails("BadRequest", soundBehind(httpHead({}, "HTTP/1.1 400 Bad")), RadioErrorHostNotReachable),
        loop,
        fails("RedirectToAFile", redirectTo("file:///etc/hostname")),
        fails("ShorterThanItsLength",
              {Send{soundHead("Content-Length: 999999\r\n") + sound()}, WaitForRelease{}},
              RadioErrorNetworkError, true),
        fails("ChunkWithoutASize",
              {Send{chunked + QByteArray::number(sound().size(), 16) + "\r\n" + sound()}, WaitForRelease{},
               Send{"\r\nnone\r\n"}, Stall{}},
              RadioErrorNetworkError, true),
        plays("NameInLatin1", soundBehind(soundHead("icy-name: Zo\xE9\r\n")), "Zoé"),
        plays("SoundWithAnotherSoundsType", soundBehind(httpHead("Content-Type: audio/aacp\r\n"))),
        plays("SoundThatIsCalledPacked", soundBehind(packed)),
        {.name = "LongerThanItsLength", .answers = {soundBehind(soundHead(length))}, .sounds = true},
        {.name = "NoContent", .answers = {{Send{httpHead({}, "HTTP/1.1 204 No Content")}, Stall{}}}},
        {.name = "Noise", .answers = {{Send{soundHead() + noise()}}}},
        {.name = "BombOfZeros", .answers = {{Send{packed + bomb()}}}},
        {.name = "EndlessPage",
         .answers = {{Send{httpHead("Content-Type: text/html\r\n")},
                      SendForever{QByteArray("<p>Pas de radio ici</p>").repeated(5000)}}},
         .state = RadioStateBuffering,
         .atLeastSent = 64 << 20},
    });
}

// Their head is in their body.
TEST(FaultsTest, OfBareAnswers)
{
    const QByteArray head = "ICY 200 OK\r\nicy-name: Nue\r\n";
    Script byByte;
    for (const char byte : head + "content-type: audio/mpeg\r\nicy-metaint: 70000\r\n\r\n")
        byByte.push_back(Send{QByteArray(1, byte)});
    byByte.push_back(SendForever{sound().first(70000) + '\0'});
    const auto buffers = [](const char *name, const Script &script, const QString &station = {}) {
        return Fault{.name = name,
                     .answers = {script},
                     .state = RadioStateBuffering,
                     .station = station,
                     .atLeastSent = 64 << 20};
    };
    expectToEndAsTheyShould({
        {.name = "ByteByByte", .answers = {byByte}, .state = RadioStatePlaying, .station = "Nue"},
        {.name = "NotFound", .answers = {{Send{"ICY 404 Resource Not Found\r\n\r\n"}}}},
        buffers("WithoutInterval", soundBehind(head + "\r\n"), "Nue"),
        buffers("WithoutEnd",
                {Send{head}, SendForever{("icy-x: " + QByteArray(1000, 'y') + "\r\n").repeated(50)}}, "Nue"),
        buffers("OneLineWithoutEnd", {Send{"ICY 200 OK\r\nicy-name: "}, SendForever{QByteArray(50000, 'n')}}),
    });
}

TEST(FaultsTest, OfPlaylists)
{
    const auto fails = [](const char *name, const char *path, const Script &script, RadioError error) {
        return Fault{
            .name = name, .answers = {script}, .state = RadioStateError, .error = error, .path = path};
    };
    const auto plays = [](const char *name, const char *path, const Script &script) {
        return Fault{.name = name,
                     .answers = {script, soundBehind(soundHead())},
                     .state = RadioStatePlaying,
                     .path = path};
    };
    // No more is read than the first megabyte; the rest is the network's buffers.
    const auto bounded = [](Fault fault) {
        fault.atMostSent = 16 << 20;
        return fault;
    };
    expectToEndAsTheyShould({
        // Asked for as a stream, not read as a list again.
        {.name = "NamesItself",
         .answers = {{Send{httpHead() + "{server}/list.m3u\r\n"}}},
         .path = "/list.m3u",
         .requests = 2},
        fails("WithoutHost", "/list.m3u", answer("http://\r\n"), RadioErrorNetworkError),
        fails("NamesAFile", "/list.pls", answer("File1=file:///etc/hostname\n"), RadioErrorNetworkError),
        fails("PackedBomb", "/list.m3u", {Send{httpHead("Content-Encoding: deflate\r\n") + bomb()}},
              RadioErrorPlaylistParsing),
        bounded(fails("XSPFWithoutAnEnd", "/list.xspf",
                      {Send{httpHead() + "<a>"}, SendForever{QByteArray("<b/>").repeated(8000)}},
                      RadioErrorPlaylistParsing)),
        bounded(plays("M3UOfAStreamAndWithoutAnEnd", "/list.m3u",
                      {Send{httpHead() + "{server}/live\r\n"}, SendForever{QByteArray(65536, '#')}})),
        // Never asked for.
        plays("XSPFWithAForeignGrammar", "/list.xspf",
              {Send{httpHead() + "<!DOCTYPE playlist [<!ENTITY % p SYSTEM '{server}/p.dtd'> %p;]><playlist "
                                 "xmlns='http://xspf.org/ns/0/'><track><location>{server}/live</location>"}}),
    });
}
