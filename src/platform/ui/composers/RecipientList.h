#pragma once

#include <QStringList>

namespace orvel {

// Recipients as one line of text, and back: they are separated by commas or semicolons; spaces around them
// and empty ones do not count.
QString textOfRecipients(const QStringList &recipients);
QStringList recipientsInText(const QString &text);

} // namespace orvel
