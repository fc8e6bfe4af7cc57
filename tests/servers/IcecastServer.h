#pragma once

#include "servers/ChildProcess.h"

#include <QTemporaryDir>

namespace orvel::test {

// Debian's icecast2 on a free port of 127.0.0.1, with a configuration and a folder of its own. Main thread.
class IcecastServer
{
public:
    // What a listener is given at once when it comes.
    explicit IcecastServer(int burstBytes);

    // A null text once it answers, or why it does not. After kill(): again on the same port.
    QString start();
    // As the system does when memory runs out: its connections are the kernel's to end.
    void kill() { m_process.end(SIGKILL); }

    int burstBytes() const { return m_burstBytes; }
    QString url(const QString &path) const;
    // Where a source called `mount` ("/mp3") sends its sound.
    QString sourceUrl(const QString &mount) const;
    QString logFile(const QString &name) const { return m_folder.filePath(name); }

    // By the administrator's interface, which hands the bytes on as they are as long as nobody names their
    // charset. False unless the server says that it is done.
    bool setTitle(const QString &mount, const QString &title) const;
    // How many listeners the server counts on all its mounts.
    int listeners() const;
    // An answer, head and body, up to `max` bytes; what has come within a time when it does not end.
    QByteArray get(const QString &path, qsizetype max = 1 << 20) const;

private:
    bool writeConfiguration() const;
    bool answers() const;

    const int m_burstBytes;
    quint16 m_port = 0;
    QTemporaryDir m_folder;
    ChildProcess m_process;
};

} // namespace orvel::test
