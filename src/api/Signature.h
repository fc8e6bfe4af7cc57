#pragma once

#include <QString>

namespace orvel {

// The base64 text (28 characters) of the HMAC-SHA1 (RFC 2104) of a text under a key. Both end at a zero
// character.
QString glob_hmacsha1(const QString &text, const QString &secret);

// Seconds since 1 January 1970, rounded to a whole number.
QString glob_CurrentTime();

} // namespace orvel
