#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/Log.h"
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

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

} // namespace

UserDefaults &UserDefaults::standardUserDefaults()
{
    static UserDefaults defaults(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                 u'/' + QCoreApplication::organizationName() + u'/' +
                                 QCoreApplication::applicationName() + QStringLiteral(".ini"));
    return defaults;
}

UserDefaults::UserDefaults(const QString &path) : m_settings(path, QSettings::IniFormat)
{
    m_settings.setAtomicSyncRequired(true);
    removeNamelessLock(path);
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
