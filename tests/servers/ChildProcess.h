#pragma once

#include <QProcess>
#include <csignal>

namespace orvel::test {

// Another program, which never outlives this one, nor the object. It runs as "nobody" when this one runs as
// root. Main thread.
class ChildProcess
{
public:
    explicit ChildProcess(const QString &logFile);
    ~ChildProcess() { end(SIGKILL); }

    // A null text once it runs, or a sentence that says why it does not.
    QString start(const QString &program, const QStringList &arguments);
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    // Returns when it has gone. What does not heed the signal is killed.
    void end(int signal = SIGTERM);

private:
    QProcess m_process;
};

} // namespace orvel::test
