#pragma once

#include "platform/system/SystemServices.h"

namespace orvel {

// Returns `draft` as an unsent message (RFC 5322, MIME) that mail programs open for editing.
QByteArray mailFile(const MailDraft &draft);

// Writes mailFile() to a new file among the user's documents and returns its path. Returns an empty text and
// sets `error` to a French sentence when that fails.
QString saveMailFile(const MailDraft &draft, QString &error);

} // namespace orvel
