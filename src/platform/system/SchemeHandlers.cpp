#include "platform/system/SchemeHandlers.h"

#include <QFile>
#include <QHash>
#include <QSet>
#include <QStandardPaths>

namespace orvel {

namespace {

constexpr qint64 maxFileBytes = qint64(8) * 1024 * 1024;

// The programs that a file of the desktop names for one type, by the group they stand under.
QHash<QString, QStringList> programsByGroup(const QString &path, const QString &type)
{
    QHash<QString, QStringList> programs;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxFileBytes)
        return programs;
    const QByteArray key = type.toUtf8();
    QString group;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith('[') && line.endsWith(']')) {
            group = QString::fromUtf8(line.sliced(1, line.size() - 2));
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (equals < 0 || line.first(equals).trimmed() != key)
            continue;
        for (const QString &program :
             QString::fromUtf8(line.sliced(equals + 1)).split(u';', Qt::SkipEmptyParts))
            programs[group] << program.trimmed();
    }
    return programs;
}

// A program's id names its file, where folders of the path became dashes.
bool isInstalled(const QString &program)
{
    QString path = program;
    for (qsizetype dash = 0; dash >= 0;) {
        if (!QStandardPaths::locate(QStandardPaths::ApplicationsLocation, path).isEmpty())
            return true;
        dash = path.indexOf(u'-', dash);
        if (dash >= 0)
            path[dash] = u'/';
    }
    return false;
}

// The lists of users' and the system's choices, the strongest first.
QStringList choiceLists()
{
    QStringList names;
    const QString desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower();
    for (const QString &desktop : desktops.split(u':', Qt::SkipEmptyParts))
        names << desktop + QStringLiteral("-mimeapps.list");
    names << QStringLiteral("mimeapps.list");
    QStringList paths;
    for (const auto location :
         {QStandardPaths::GenericConfigLocation, QStandardPaths::ApplicationsLocation}) {
        for (const QString &folder : QStandardPaths::standardLocations(location)) {
            for (const QString &name : names)
                paths << folder + u'/' + name;
        }
    }
    return paths;
}

} // namespace

bool hasSchemeHandler(const QString &scheme)
{
    const QString type = QStringLiteral("x-scheme-handler/") + scheme.toLower();
    QSet<QString> removed;
    const auto anyInstalled = [&](const QStringList &programs) {
        for (const QString &program : programs) {
            if (!removed.contains(program) && isInstalled(program))
                return true;
        }
        return false;
    };
    for (const QString &path : choiceLists()) {
        const QHash<QString, QStringList> programs = programsByGroup(path, type);
        if (anyInstalled(programs.value(QStringLiteral("Default Applications"))) ||
            anyInstalled(programs.value(QStringLiteral("Added Associations"))))
            return true;
        for (const QString &program : programs.value(QStringLiteral("Removed Associations")))
            removed.insert(program);
    }
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        if (anyInstalled(programsByGroup(folder + QStringLiteral("/mimeinfo.cache"), type)
                             .value(QStringLiteral("MIME Cache"))))
            return true;
    }
    return false;
}

} // namespace orvel
