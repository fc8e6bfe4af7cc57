#pragma once

#include <QString>

namespace orvel {

class Streamer;
struct NetError;

// The program's exit status. The manual page has the same table.
enum class ExitCode {
    Done = 0,
    Usage = 2,
    Unreachable = 3, // no network, no such host, a connection refused or lost
    Refused = 4,     // the server answered, but not with what was asked for
    NoStream = 5,    // the playlist names none
    NoSound = 6,     // what came is no sound that can be played
    NoOutput = 7,    // decoder or sound output failed
    CannotWrite = 8,
    TimedOut = 9,
    Interrupted = 128, // and the signal's number
};

// How a command ended.
struct Outcome
{
    int exitStatus = int(ExitCode::Done);
    QString sentence{}; // for people, when it failed

    static Outcome failure(ExitCode code, const QString &sentence) { return {int(code), sentence}; }
    static Outcome interrupted(int signal) { return {int(ExitCode::Interrupted) + signal}; }
};

Outcome outcomeOf(const NetError &error);
// Of an answer with status 400 or above.
Outcome outcomeOfStatus(int statusCode);
// Of a player in RadioStateError.
Outcome outcomeOf(const Streamer &streamer);

} // namespace orvel
