#pragma once

#include "platform/system/SystemServices.h"

namespace orvel {

// The text that a reader of `html` sees, and HTML that shows `text` as it is.
QString plainTextOfHtml(const QString &html);
QString htmlOfPlainText(const QString &text);

// `name` as a file can bear it in any folder: without folders, control characters and leading dots, never
// empty.
QString safeFileName(const QString &name);

// A draft as an unsent message (RFC 5322, MIME) that mail programs open for editing.
QByteArray mailFile(const MailDraft &draft);

// Writes it to a file of its own among the user's documents and gives the file's path; an empty one, and why
// in `error`, when it can't be written.
QString saveMailFile(const MailDraft &draft, QString &error);

} // namespace orvel
