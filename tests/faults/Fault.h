#pragma once

#include "audio/live/Radio.h"
#include "support/ScriptedServer.h"

#include <limits>

namespace orvel::test {

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

// Plays whatever is wrong.
Fault plays(const char *name, const Script &answer, const QString &station = {});
// Ends in an error.
Fault fails(const char *name, const Script &answer, RadioError error = RadioErrorNetworkError);
// Stops: no sound in it, or no more.
Fault stops(const char *name, const Script &answer, bool sounds = false);
// Finds no sound in an endless answer, and bears it.
Fault buffers(const char *name, const Script &answer, const QString &station = {});

std::vector<Fault> answerFaults();
std::vector<Fault> playlistFaults();

// Two seconds of MP3, enough to start with.
const QByteArray &sound();
// A good answer's head, with more fields.
QByteArray soundHead(const QByteArray &fields = {});
// Sound without end.
Script soundBehind(const QByteArray &head = soundHead());
// 64 megabytes of zeros in zlib's format.
QByteArray bomb();

} // namespace orvel::test
