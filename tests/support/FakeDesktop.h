#pragma once

#include "support/EnvironmentValue.h"

#include <QStringList>
#include <QTemporaryDir>
#include <list>

namespace orvel::test {

// A desktop of its own for a test's time: empty folders for programs, settings and documents, a PATH of
// nothing but programs installed here, which note what they are given.
class FakeDesktop
{
public:
    FakeDesktop();

    // A program on the PATH that notes its arguments, and keeps a copy of the file named after "--attach".
    void install(const QString &program) const;
    // Lets an installed desktop program take `scheme`.
    void takeScheme(const QString &scheme) const;
    // A file below the desktop's home folder; `applications/` is where programs are listed.
    void write(const QString &path, const QByteArray &content) const;
    QString path(const QString &path) const { return m_home.filePath(path); }

    // Waits for the program to be started and gives its arguments; none after a while.
    QStringList given(const QString &program) const;
    QByteArray attachmentGiven() const;

private:
    const QTemporaryDir m_home;
    std::list<EnvironmentValue> m_environment;
};

} // namespace orvel::test
