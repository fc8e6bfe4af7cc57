#include "faults/Fault.h"

#include "support/EncodedTone.h"

namespace orvel::test {

Fault plays(const char *name, const Script &answer, const QString &station)
{
    return {.name = name, .answers = {answer}, .state = RadioStatePlaying, .station = station};
}

Fault fails(const char *name, const Script &answer, RadioError error)
{
    return {.name = name, .answers = {answer}, .state = RadioStateError, .error = error};
}

Fault stops(const char *name, const Script &answer, bool sounds)
{
    return {.name = name, .answers = {answer}, .sounds = sounds};
}

Fault buffers(const char *name, const Script &answer, const QString &station)
{
    return {.name = name,
            .answers = {answer},
            .state = RadioStateBuffering,
            .station = station,
            .atLeastSent = 64 << 20};
}

const QByteArray &sound()
{
    static const QByteArray bytes = encodeTone({.bitrate = 320000, .seconds = 2}).bytes;
    return bytes;
}

QByteArray soundHead(const QByteArray &fields) { return httpHead("Content-Type: audio/mpeg\r\n" + fields); }

Script soundBehind(const QByteArray &head) { return {Send{head}, SendForever{sound()}}; }

QByteArray bomb() { return qCompress(QByteArray(64 << 20, '\0'), 9).sliced(4); }

} // namespace orvel::test
