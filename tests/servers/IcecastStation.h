#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <csignal>
#include <functional>

namespace orvel::test {

// Debian's icecast2 on a free port of 127.0.0.1, with Debian's ffmpeg as its source: a tone in noise, in real
// time, with some seconds at once to begin with. Both run as "nobody" when this program runs as root, and
// never outlive it. Main thread.
class IcecastStation
{
public:
    enum class Codec { Mp3, Aac };
    explicit IcecastStation(Codec codec);
    ~IcecastStation();

    // Returns a null text once a listener gets a whole burst, or why none does.
    QString start();
    // Ends the source's request as a source does that has no more to send.
    void endSource() { end(m_source, SIGTERM); }

    QString url() const;
    // Hands the bytes on as they are. False unless the server says that it is done.
    bool setTitle(const QString &title) const;
    // As the server counts them.
    bool hasListeners() const;

    static constexpr auto name = "Orvel Essai";
    static constexpr auto genre = "Chanson";
    static constexpr auto site = "http://radio.example/";

private:
    void startServer();
    bool run(QProcess &process, const QString &command, const std::function<bool()> &isReady);
    static void end(QProcess &process, int signal);
    // An answer, head and body, up to `max` bytes; what has come within a time when it does not end.
    QByteArray get(const QString &path, qsizetype max = 1 << 20) const;

    const bool m_isMp3;
    quint16 m_port = 0;
    QTemporaryDir m_folder;
    QProcess m_server;
    QProcess m_source;
};

} // namespace orvel::test
