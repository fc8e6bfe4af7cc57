#include "servers/ChildProcess.h"

#include <QStandardPaths>
#include <unistd.h>

namespace orvel::test {

ChildProcess::ChildProcess(const QString &logFile)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(logFile, QIODevice::Append);
    m_process.setStandardInputFile(QProcess::nullDevice());
}

QString ChildProcess::start(const QString &program, const QStringList &arguments)
{
    const QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return QStringLiteral("%1 is not installed; scripts/setup installs it").arg(program);
    QString command = QStringLiteral("setpriv --pdeathsig KILL");
    if (::geteuid() == 0)
        command += QStringLiteral(" --reuid nobody --regid nogroup --clear-groups");
    const QStringList words = command.split(u' ') + QStringList(path) + arguments;
    m_process.start(words.first(), words.mid(1));
    return m_process.waitForStarted()
               ? QString()
               : QStringLiteral("%1 can't be started: %2").arg(path, m_process.errorString());
}

void ChildProcess::end(int signal)
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    ::kill(pid_t(m_process.processId()), signal);
    if (!m_process.waitForFinished(10000)) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

} // namespace orvel::test
