#include "platform/system/SafeFileName.h"

namespace orvel {

QString safeFileName(const QString &name)
{
    constexpr qsizetype maxLength = 120;
    QString safe;
    for (const QChar character : name.section(u'/', -1).section(u'\\', -1)) {
        if (character.isPrint() && !(safe.isEmpty() && character == u'.'))
            safe += character;
    }
    safe = safe.right(maxLength); // the kind of file stands at the end
    return safe.isEmpty() ? QStringLiteral("document") : safe;
}

} // namespace orvel
