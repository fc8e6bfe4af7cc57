#include "support/Footprint.h"

#include <QDir>
#include <QFile>

namespace orvel::test {

namespace {

qsizetype entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

} // namespace

qint64 anonymousMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = status.readAll();
    const qsizetype at = text.indexOf("RssAnon:") + 8;
    return text.mid(at, text.indexOf("kB", at) - at).trimmed().toLongLong() * 1024;
}

qsizetype threadCount() { return entries(QStringLiteral("/proc/self/task")); }

qsizetype descriptorCount() { return entries(QStringLiteral("/proc/self/fd")); }

} // namespace orvel::test
