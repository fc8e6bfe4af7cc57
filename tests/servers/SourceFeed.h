#pragma once

#include "servers/ChildProcess.h"

namespace orvel::test {

class IcecastServer;

// Debian's ffmpeg as a station's source: a tone in noise, in real time, with some seconds at once to begin
// with. Main thread.
class SourceFeed
{
public:
    enum class Codec { Mp3, Aac };
    SourceFeed(const IcecastServer &server, Codec codec);

    // A null text once the server has a whole burst for its listeners, or why it has not.
    QString start();
    // Ends its request to the server as a source does that has no more to send.
    void end() { m_process.end(SIGTERM); }

    // "/mp3", "/aac"
    QString mount() const;

    static constexpr auto name = "Orvel Essai";
    static constexpr auto genre = "Chanson";
    static constexpr auto site = "http://radio.example/";
    static constexpr int sampleRate = 44100;
    // Whatever the codec, roughly: AAC varies about it.
    static constexpr int bytesPerSecond = 40000;

private:
    const IcecastServer &m_server;
    const Codec m_codec;
    ChildProcess m_process;
};

} // namespace orvel::test
