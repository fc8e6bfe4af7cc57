#include "support/EncodedTone.h"
#include "support/EnvironmentValue.h"
#include "support/Footprint.h"
#include "support/PlayerUnderTest.h"
#include "support/ScriptedServer.h"

#include <gtest/gtest.h>
#include <limits>
#include <string_view>

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
    // No more is read of a playlist than the first megabyte; the rest is the network's buffers.
    qint64 atMostSent = std::string_view(path) == "/live" ? std::numeric_limits<qint64>::max() : 16 << 20;
};

Fault fails(const char *name, const Script &script, RadioError error = RadioErrorNetworkError,
            const char *path = "/live")
{
    return {.name = name, .answers = {script}, .state = RadioStateError, .error = error, .path = path};
}

Fault plays(const char *name, const Script &script, const QString &station = {})
{
    return {.name = name, .answers = {script}, .state = RadioStatePlaying, .station = station};
}

// However much comes.
Fault buffers(const char *name, const Script &script, const QString &station = {})
{
    return {.name = name,
            .answers = {script},
            .state = RadioStateBuffering,
            .station = station,
            .atLeastSent = 64 << 20};
}

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
    const auto breaks = [](const char *name, const Script &script) {
        Fault fault = fails(name, script);
        fault.sounds = true;
        return fault;
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
        breaks("ShorterThanItsLength",
               {Send{soundHead("Content-Length: 999999\r\n") + sound()}, WaitForRelease{}}),
        breaks("ChunkWithoutASize",
               {Send{chunked + QByteArray::number(sound().size(), 16) + "\r\n" + sound()}, WaitForRelease{},
                Send{"\r\nnone\r\n"}, Stall{}}),
        plays("NameInLatin1", soundBehind(soundHead("icy-name: Zo\xE9\r\n")), "Zoé"),
        plays("SoundWithAnotherSoundsType", soundBehind(httpHead("Content-Type: audio/aacp\r\n"))),
        plays("SoundThatIsCalledPacked", soundBehind(packed)),
        {.name = "LongerThanItsLength", .answers = {soundBehind(soundHead(length))}, .sounds = true},
        {.name = "NoContent", .answers = {{Send{httpHead({}, "HTTP/1.1 204 No Content")}, Stall{}}}},
        {.name = "BombOfZeros", .answers = {{Send{packed + bomb()}}}},
        buffers("EndlessPage", {Send{httpHead("Content-Type: text/html\r\n")},
                                SendForever{QByteArray("<p>Pas de radio ici</p>").repeated(5000)}}),
    });
}

// Their head is in their body.
TEST(FaultsTest, OfBareAnswers)
{
    const QByteArray head = "ICY 200 OK\r\nicy-name: Nue\r\n";
    expectToEndAsTheyShould({
        {.name = "NotFound", .answers = {{Send{"ICY 404 Resource Not Found\r\n\r\n"}}}},
        buffers("WithoutInterval", soundBehind(head + "\r\n"), "Nue"),
        buffers("WithoutEnd",
                {Send{head}, SendForever{("icy-x: " + QByteArray(1000, 'y') + "\r\n").repeated(50)}}, "Nue"),
        buffers("OneLineWithoutEnd", {Send{"ICY 200 OK\r\nicy-name: "}, SendForever{QByteArray(50000, 'n')}}),
    });
}

TEST(FaultsTest, OfPlaylists)
{
    const auto leadsToSound = [](const char *name, const char *path, const Script &script) {
        return Fault{.name = name,
                     .answers = {script, soundBehind(soundHead())},
                     .state = RadioStatePlaying,
                     .path = path};
    };
    expectToEndAsTheyShould({
        // Asked for as a stream, not read as a list again.
        {.name = "NamesItself",
         .answers = {{Send{httpHead() + "{server}/list.m3u\r\n"}}},
         .path = "/list.m3u",
         .requests = 2},
        fails("WithoutHost", answer("http://\r\n"), RadioErrorNetworkError, "/list.m3u"),
        fails("NamesAFile", answer("File1=file:///etc/hostname\n"), RadioErrorNetworkError, "/list.pls"),
        fails("PackedBomb", {Send{httpHead("Content-Encoding: deflate\r\n") + bomb()}},
              RadioErrorPlaylistParsing, "/list.m3u"),
        fails("XSPFWithoutAnEnd", {Send{httpHead() + "<a>"}, SendForever{QByteArray("<b/>").repeated(8000)}},
              RadioErrorPlaylistParsing, "/list.xspf"),
        leadsToSound("M3UOfAStreamAndWithoutAnEnd", "/list.m3u",
                     {Send{httpHead() + "{server}/live\r\n"}, SendForever{QByteArray(65536, '#')}}),
        // Never asked for.
        leadsToSound(
            "XSPFWithAForeignGrammar", "/list.xspf",
            {Send{httpHead() + "<!DOCTYPE playlist [<!ENTITY % p SYSTEM '{server}/p.dtd'> %p;]><playlist "
                               "xmlns='http://xspf.org/ns/0/'><track><location>{server}/live</location>"}}),
    });
}
