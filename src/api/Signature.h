#pragma once

#include <QString>

namespace orvel {

// Returns the base64 text (28 characters) of the HMAC-SHA1 (RFC 2104) of a text under a key.
// Deliberate: both end at a zero character, as the server's do (SignatureTest.EndsATextAtItsZero)
QString glob_hmacsha1(const QString &text, const QString &secret);

// Returns the seconds since 1 January 1970, rounded to a whole number.
QString glob_CurrentTime();

} // namespace orvel
