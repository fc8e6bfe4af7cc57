#include "servers/ChildProcess.h"

#include <QFile>
#include <QStandardPaths>
#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace orvel::test {

namespace {

struct User
{
    uid_t user;
    gid_t group;
};

User unprivilegedUser()
{
    if (::geteuid() != 0)
        return {::geteuid(), ::getegid()};
    const passwd *const nobody = ::getpwnam("nobody");
    if (!nobody)
        qFatal("There is no user \"nobody\"");
    return {nobody->pw_uid, nobody->pw_gid};
}

// Between fork and exec.
void become(const User &user)
{
    if (::geteuid() == 0 &&
        (::setgroups(0, nullptr) != 0 || ::setgid(user.group) != 0 || ::setuid(user.user) != 0))
        ::_exit(126);
}

} // namespace

ChildProcess::ChildProcess(const QString &logFile)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(logFile, QIODevice::Append);
    m_process.setStandardInputFile(QProcess::nullDevice());
}

ChildProcess::~ChildProcess() { end(SIGKILL); }

QString ChildProcess::start(const QString &program, const QStringList &arguments, Privilege privilege)
{
    const QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty())
        return QStringLiteral("%1 is not installed; scripts/setup installs it").arg(program);
    const User user = privilege == Privilege::None ? unprivilegedUser() : User{::geteuid(), ::getegid()};
    const pid_t parent = ::getpid();
    m_process.setChildProcessModifier([user, parent] {
        become(user); // first: a change of user clears what follows
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(126);
    });
    m_process.start(path, arguments);
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

void giveToUnprivileged(const QString &folder)
{
    const User user = unprivilegedUser();
    if (::chown(QFile::encodeName(folder).constData(), user.user, user.group) != 0)
        qFatal("The folder can't be given away");
}

} // namespace orvel::test
