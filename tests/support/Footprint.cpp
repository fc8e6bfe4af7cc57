#include "support/Footprint.h"

#include <QFile>

namespace orvel::test {

qint64 anonymousMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = status.readAll();
    const qsizetype at = text.indexOf("RssAnon:") + 8;
    return text.mid(at, text.indexOf("kB", at) - at).trimmed().toLongLong() * 1024;
}

} // namespace orvel::test
