#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/FreeName.h"
#include "platform/foundation/Log.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdio>

namespace orvel {

namespace {

// A process killed in the moment of taking the file's lock leaves a lock that names nobody. It would hold up
// the next write for half a minute.
void removeNamelessLock(const QString &path)
{
    const QFileInfo lock(path + QStringLiteral(".lock"));
    if (lock.exists() && lock.size() == 0)
        QFile::remove(lock.filePath());
}

// Far more than the application ever stores, and read in a few seconds.
constexpr qint64 maxFileBytes = 256 * 1024 * 1024;

bool keepAside(const QString &path)
{
    const QString aside =
        freeName(path + QStringLiteral(".damaged"), qOverload<const QString &>(&QFileInfo::exists));
    const bool kept = std::rename(QFile::encodeName(path), QFile::encodeName(aside)) == 0;
    qCWarning(logFoundation) << "The settings file is damaged"
                             << (kept ? "and kept as" : "and can't be kept as") << aside;
    return kept;
}

// The path of a settings file that can be read and written. A damaged one is kept aside, and a new one begun
// with whatever could be read of it: Qt's next write would lose the rest. An empty path, which makes Qt keep
// the settings in memory, when it can't be kept aside.
QString readyFile(const QString &path)
{
    removeNamelessLock(path);
    const QFileInfo info(path);
    // Qt would read a pipe, or a file beyond all memory, to the bitter end.
    if (info.exists() && (!info.isFile() || info.size() > maxFileBytes) && !keepAside(path))
        return {};
    QSettings settings(path, QSettings::IniFormat);
    const QStringList readable = settings.allKeys(); // only this reads every line
    if (settings.status() != QSettings::FormatError)
        return path;
    if (!keepAside(path))
        return {};
    for (const QString &key : readable)
        settings.setValue(key, settings.value(key));
    return path;
}

} // namespace

UserDefaults &UserDefaults::standardUserDefaults()
{
    static UserDefaults defaults(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                 u'/' + QCoreApplication::organizationName() + u'/' +
                                 QCoreApplication::applicationName() + QStringLiteral(".ini"));
    return defaults;
}

UserDefaults::UserDefaults(const QString &path) : m_settings(readyFile(path), QSettings::IniFormat)
{
    m_settings.setAtomicSyncRequired(true);
}

QVariant UserDefaults::objectForKey(const QString &key) const { return m_settings.value(key); }

void UserDefaults::setObject(const QVariant &value, const QString &key) { m_settings.setValue(key, value); }

bool UserDefaults::boolForKey(const QString &key) const { return m_settings.value(key).toBool(); }

void UserDefaults::removeObjectForKey(const QString &key) { m_settings.remove(key); }

bool UserDefaults::synchronise()
{
    m_settings.sync();
    if (m_settings.status() == QSettings::NoError)
        return true;
    qCWarning(logFoundation) << "The settings file can't be written:" << m_settings.fileName();
    return false;
}

} // namespace orvel
