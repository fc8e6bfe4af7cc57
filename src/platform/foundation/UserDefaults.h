#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>

namespace orvel {

// The user's small persisted values, in an INI file of the user's configuration folder. A write replaces the
// file as a whole, so that a process killed meanwhile loses no value stored before. A damaged file is
// kept beside the new one as "<file>.damaged", with a line in the log. When it can't be kept, it is not
// touched, and values last as long as the process. Main thread only.
class UserDefaults
{
public:
    // The application's own file, named after the organisation and the application.
    static UserDefaults &standardUserDefaults();
    explicit UserDefaults(const QString &path);

    // Returns an invalid variant for a key that is not stored.
    QVariant objectForKey(const QString &key) const;
    void setObject(const QVariant &value, const QString &key);
    bool boolForKey(const QString &key) const;
    void removeObjectForKey(const QString &key);
    // Writes to disk. Returns false, with a line in the log, when the file can't be written.
    bool synchronise();

private:
    QSettings m_settings;
};

} // namespace orvel
