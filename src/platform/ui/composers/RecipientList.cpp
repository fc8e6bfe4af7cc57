#include "platform/ui/composers/RecipientList.h"

#include <QRegularExpression>

namespace orvel {

QString textOfRecipients(const QStringList &recipients)
{
    return recipientsInText(recipients.join(u',')).join(QStringLiteral(", "));
}

QStringList recipientsInText(const QString &text)
{
    static const QRegularExpression separator(QStringLiteral("[,;\\s]*[,;]\\s*"));
    return text.trimmed().split(separator, Qt::SkipEmptyParts);
}

} // namespace orvel
