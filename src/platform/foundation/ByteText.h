#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <optional>

namespace orvel {

// The text that `bytes` spell in UTF-8, or nothing when they are not well-formed UTF-8 (RFC 3629): a cut
// sequence, an overlong form and a surrogate all fail. No byte is replaced. Empty bytes give an empty text.
std::optional<QString> decodeUtf8(QByteArrayView bytes);
// The same to `units`, which has room for as many units as there are bytes. Gives the end of what was
// written; null when the bytes are not well-formed.
char16_t *decodeUtf8(QByteArrayView bytes, char16_t *units);

// The leading whole number of a text ("8192;x" is 8192), after white space and an optional sign; 0 when there
// is none. What does not fit saturates at the ends of the type.
qint64 integerValue(QStringView text);
qint32 intValue(QStringView text);

// Equality of two texts but for upper and lower case.
bool equalsIgnoringCase(QStringView a, QStringView b);

} // namespace orvel
