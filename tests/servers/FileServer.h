#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace orvel::test {

// Debian's nginx on free ports of 127.0.0.1, with files of a folder of its own. Never outlives this program.
// It gives up a client that takes nothing for a second. Main thread.
class FileServer
{
public:
    FileServer();
    ~FileServer();

    // Returns a null text once it answers, or why it does not.
    QString start();
    // Ends it with all connections.
    void end();
    // Where a file of this name is served from.
    QString path(const QString &name) const { return m_folder.filePath(name); }
    // Makes a file with ffmpeg: its input is ten seconds of a tone in noise, in 44.1 kHz stereo. False when
    // ffmpeg can't.
    bool make(const QString &name, const QString &options) const;

    // `way` is how the file is served: as it is (an empty text), "unknown" without its length, "whole"
    // without ranges, "moved" behind two redirects, "refused" with status 416 for a range.
    QString url(const QString &name, const QString &way = {}) const;
    QString secureUrl(const QString &name) const;
    // The lines of the requests that have ended: range and status.
    QStringList requests() const;

private:
    void startServer();
    bool answers() const;

    QTemporaryDir m_folder;
    QProcess m_server;
    quint16 m_port = 0;
    quint16 m_securePort = 0;
};

} // namespace orvel::test
