#include "faults/Fault.h"

namespace orvel::test {

namespace {

constexpr double idle = 30;    // a request without a byte
constexpr double stalled = 10; // a started sound without any more
constexpr double waiting = 60; // for a lost network

Fault after(const std::vector<Turn> &turns, Fault fault)
{
    fault.turns = turns;
    return fault;
}

// Connects anew once, and then to a good answer.
Fault recovers(Fault fault)
{
    fault.answers.push_back(soundBehind());
    fault.requests = 2;
    return fault;
}

Fault whilePlaying(Fault fault)
{
    fault.sounds = true;
    return fault;
}

Fault ofPlaylist(Fault fault)
{
    fault.path = "/list.m3u";
    return fault;
}

} // namespace

std::vector<Fault> connectionFaults()
{
    const QByteArray cutHead = "HTTP/1.1 200 OK\r\nContent-Ty";
    const QByteArray cutList = httpHead() + "#EXTM3U\r\nhttp://127.0.0.1";
    // Enough to start with, and a title of which only the beginning comes.
    const Send cutTitle{soundHead("icy-metaint: 70000\r\n") + sound().first(70000) + char(2) +
                        "StreamTitle='Cou"};
    const Send playing{soundHead() + sound()};
    const Turn networkLeaves{.in = RadioStateBuffering, .seconds = stalled, .networkLeaves = true};
    return {
        after({{RadioStateConnecting, idle}}, fails("StallInTheHead", {Send{cutHead}, Stall{}})),
        after({{RadioStateBuffering, idle}}, fails("StallAfterTheHead", {Send{soundHead()}, Stall{}})),
        after({{RadioStateConnecting, idle}},
              ofPlaylist(fails("StallInThePlaylist", {Send{cutList}, Stall{}}, RadioErrorHostNotReachable))),
        after({{RadioStateBuffering, stalled}}, recovers(plays("StallInMetadata", {cutTitle, Stall{}}))),
        after({networkLeaves, {RadioStateBuffering, waiting}},
              whilePlaying(fails("StallWithoutNetwork", {playing, Stall{}}, RadioErrorHostNotReachable))),
        ofPlaylist(fails("ResetInThePlaylist", {Send{cutList}, Reset{}}, RadioErrorHostNotReachable)),
        whilePlaying(fails("ResetInMetadata", {cutTitle, WaitForRelease{}, Reset{}})),
        after({{.in = RadioStatePlaying, .seconds = 1, .networkLeaves = true, .releasesServer = true},
               {RadioStateBuffering, waiting}},
              whilePlaying(fails("ResetWithoutNetwork", {playing, WaitForRelease{}, Reset{}},
                                 RadioErrorHostNotReachable))),
        stops("EndInMetadata", {cutTitle}, true),
    };
}

} // namespace orvel::test
