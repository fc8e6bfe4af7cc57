#include "faults/Fault.h"

namespace orvel::test {

namespace {

constexpr double idle = 30;    // a request without a byte
constexpr double stalled = 10; // a started sound without any more
constexpr double waiting = 60; // for a lost network
constexpr double trickle = 0.003;

const QByteArray bareHead = "ICY 200 OK\r\nicy-name: Nue\r\ncontent-type: audio/mpeg\r\n\r\n";
const QByteArray cutHead = "HTTP/1.1 200 OK\r\nContent-Ty";
// Enough to start with, and a title of which only the beginning comes.
const QByteArray cutTitle = sound().first(70000) + char(2) + "StreamTitle='Cou";
const QByteArray intervalHead = soundHead("icy-metaint: 70000\r\nicy-name: Nord\r\n");

std::vector<Fault> stalls()
{
    return {
        {.name = "StallBeforeTheHead",
         .answers = {{Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError,
         .turns = {{RadioStateConnecting, idle}}},
        {.name = "StallInTheHead",
         .answers = {{Send{cutHead}, Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError,
         .turns = {{RadioStateConnecting, idle}}},
        {.name = "StallAfterTheHead",
         .answers = {{Send{soundHead()}, Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError,
         .turns = {{RadioStateBuffering, idle}}},
        {.name = "StallInABareHead",
         .answers = {{Send{"ICY 200 OK\r\nicy-name: Nue\r\nicy-"}, Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError,
         .turns = {{RadioStateBuffering, idle}},
         .station = "Nue"},
        {.name = "StallInTheSound",
         .answers = {{Send{soundHead()}, Send{sound().first(30000)}, Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError,
         .turns = {{RadioStateBuffering, idle}}},
        {.name = "StallInMetadata",
         .answers = {{Send{soundHead("icy-metaint: 8192\r\n") + sound().first(8192) + char(2) + "StreamT"},
                      Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError,
         .turns = {{RadioStateBuffering, idle}}},
        {.name = "StallWhilePlaying",
         .answers = {{Send{soundHead() + sound()}, Stall{}}, goodAnswer()},
         .state = RadioStatePlaying,
         .turns = {{RadioStateBuffering, stalled}}},
        {.name = "StallInMetadataWhilePlaying",
         .answers = {{Send{intervalHead + cutTitle}, Stall{}}, goodAnswer()},
         .state = RadioStatePlaying,
         .turns = {{RadioStateBuffering, stalled}},
         .station = "Nord"},
        {.name = "StallWithoutNetwork",
         .answers = {{Send{soundHead() + sound()}, Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorHostNotReachable,
         .sounds = true,
         .turns = {{.in = RadioStateBuffering, .seconds = stalled, .networkLeaves = true},
                   {RadioStateBuffering, waiting}}},
        {.name = "StallInThePlaylist",
         .answers = {{Send{httpHead() + "#EXTM3U\r\nhttp://"}, Stall{}}},
         .state = RadioStateError,
         .error = RadioErrorHostNotReachable,
         .path = "/list.m3u",
         .turns = {{RadioStateConnecting, idle}}},
    };
}

std::vector<Fault> trickles()
{
    return {
        // The head's lines count whole.
        {.name = "AByteASecondOfTheHead",
         .answers = {{Send{cutHead}, SendForever{"x", trickle}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError,
         .turns = {{.in = RadioStateConnecting, .seconds = idle, .trickles = true}}},
        {.name = "AByteASecondOfABareHead",
         .answers = {{Send{"ICY 200 OK\r\nicy-name: "}, SendForever{"x", trickle}}},
         .state = RadioStateBuffering,
         .turns = {{.in = RadioStateBuffering, .seconds = 3 * idle, .trickles = true}}},
        {.name = "AByteASecondOfSound",
         .answers = {{Send{soundHead()}, SendForever{sound().first(1), trickle}}},
         .state = RadioStateBuffering,
         .turns = {{.in = RadioStateBuffering, .seconds = 3 * idle, .trickles = true}}},
        {.name = "AByteASecondWhilePlaying",
         .answers = {{Send{soundHead() + sound()}, SendForever{"\xFF", trickle}}, goodAnswer()},
         .state = RadioStatePlaying,
         .turns = {{.in = RadioStateBuffering, .seconds = stalled, .trickles = true}}},
        {.name = "AByteASecondOfThePlaylist",
         .answers = {{Send{httpHead()}, SendForever{"#", trickle}}},
         .state = RadioStateConnecting,
         .path = "/list.m3u",
         .turns = {{.in = RadioStateConnecting, .seconds = 3 * idle, .trickles = true}}},
    };
}

// The pause lets the player read what the reset would take away.
Fault reset(const char *name, const QByteArray &before, const char *path = "/live")
{
    return {.name = name,
            .answers = {{Send{before}, Pause{0.05}, Reset{}}},
            .state = RadioStateError,
            .error = RadioErrorNetworkError,
            .path = path};
}

std::vector<Fault> resets()
{
    Fault inPlaylist = reset("ResetInThePlaylist", httpHead() + "#EXTM3U\r\nhttp://127.0.0.1", "/list.pls");
    inPlaylist.error = RadioErrorHostNotReachable;
    Fault bare = reset("ResetInABareHead", bareHead.chopped(4));
    bare.station = "Nue";
    Fault inMetadata = reset("ResetInMetadataWhilePlaying", intervalHead + cutTitle);
    inMetadata.station = "Nord";
    inMetadata.sounds = true;
    Fault playing = reset("ResetWhilePlaying", soundHead() + sound());
    playing.sounds = true;
    return {
        reset("ResetBeforeTheHead", {}),
        reset("ResetInTheHead", cutHead),
        reset("ResetAfterTheHead", soundHead()),
        reset("ResetInTheSound", soundHead() + sound().first(30000)),
        bare,
        inMetadata,
        playing,
        inPlaylist,
        {.name = "ResetWithoutNetwork",
         .answers = {{Send{soundHead() + sound()}, Pause{0.3}, Reset{}}},
         .state = RadioStateError,
         .error = RadioErrorHostNotReachable,
         .sounds = true,
         .turns = {{.in = RadioStatePlaying, .seconds = 1, .networkLeaves = true},
                   {RadioStateBuffering, waiting}}},
    };
}

// The server ends what it sends and waits for the client to leave.
std::vector<Fault> ends()
{
    return {
        {.name = "EndBeforeTheHead",
         .answers = {{Close{}}},
         .state = RadioStateError,
         .error = RadioErrorNetworkError},
        {.name = "EndAfterTheHead", .answers = {{Send{soundHead()}}}},
        {.name = "EndInABareHead", .answers = {{Send{bareHead.chopped(4)}}}, .station = "Nue"},
        {.name = "EndInTheSound", .answers = {{Send{soundHead() + sound().first(30000)}}}},
        {.name = "EndInMetadata",
         .answers = {{Send{soundHead("icy-metaint: 8192\r\n") + sound().first(8192) + char(2)}}}},
        {.name = "EndWhilePlaying", .answers = {{Send{soundHead() + sound()}}}, .sounds = true},
        {.name = "EndInMetadataWhilePlaying",
         .answers = {{Send{intervalHead + cutTitle}}},
         .sounds = true,
         .station = "Nord"},
    };
}

} // namespace

std::vector<Fault> connectionFaults()
{
    std::vector<Fault> all;
    for (const std::vector<Fault> &some : {stalls(), trickles(), resets(), ends()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

} // namespace orvel::test
