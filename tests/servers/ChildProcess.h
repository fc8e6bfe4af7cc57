#pragma once

#include <QProcess>
#include <csignal>

namespace orvel::test {

// Another program, which never outlives this one, nor the object. Main thread.
class ChildProcess
{
public:
    explicit ChildProcess(const QString &logFile);
    ~ChildProcess();

    // A null text once it runs, or a sentence that says why it does not. An unprivileged program runs as
    // "nobody" when the caller is root.
    enum class Privilege { Callers, None };
    QString start(const QString &program, const QStringList &arguments,
                  Privilege privilege = Privilege::Callers);
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    // Returns when it has gone. What does not heed the signal is killed.
    void end(int signal = SIGTERM);

private:
    QProcess m_process;
};

// Gives `folder` to the user that an unprivileged program runs as.
void giveToUnprivileged(const QString &folder);

} // namespace orvel::test
