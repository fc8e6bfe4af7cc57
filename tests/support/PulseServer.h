#pragma once

#include "support/EnvironmentValue.h"

#include <QProcess>
#include <QTemporaryDir>
#include <vector>

namespace orvel::test {

// Debian's PulseAudio, or PipeWire, in a folder of its own, with a sink that keeps 44.1 kHz, stereo, floats
// as they come. While an object of this class lives, the program's sound goes there. Never outlives the
// program.
class PulseServer
{
public:
    enum class Kind { PulseAudio, PipeWire };
    explicit PulseServer(Kind kind = Kind::PulseAudio);
    ~PulseServer();

    // Whether the server is installed.
    static bool isThere(Kind kind = Kind::PulseAudio);
    // Starts the server. PulseAudio does not yet answer players.
    bool start();
    void answerPlayers() const;
    // Ends it as a crash does.
    void kill();
    void addSink() const;
    // PulseAudio's.
    void removeSink() const { pactl("unload-module module-pipe-sink"); }
    void pactl(const QString &arguments) const;
    // Plays silence in a role while the process runs.
    void play(QProcess &process, const QString &role) const;

    const QString &folder() const { return m_path; }

private:
    QString command() const;
    QString socket(const QString &name) const { return m_path + u'/' + name; }

    const Kind m_kind;
    const QTemporaryDir m_folder;
    const QString m_path = m_folder.path();
    const EnvironmentValue m_address;
    const EnvironmentValue m_noDriver{"SDL_AUDIODRIVER", ""};
    QProcess m_process;
};

// Records what the server's sink plays from its making on. `latency` is in milliseconds; the sink keeps to
// it, too.
class SinkRecorder
{
public:
    explicit SinkRecorder(const PulseServer &server, int latency = 20);
    ~SinkRecorder();
    // Returns all that was recorded, interleaved, once its last half second is silent and there was some
    // sound before. What there is after 20 s without.
    std::vector<float> soundUntilSilence() const;
    std::vector<float> samples() const;

private:
    const QTemporaryDir m_folder;
    QProcess m_process;
};

} // namespace orvel::test
