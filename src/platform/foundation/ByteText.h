#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <optional>

namespace orvel {

// Returns the text that `bytes` spell in UTF-8, or std::nullopt when they are not well-formed UTF-8 (RFC
// 3629): a cut sequence, an overlong form and a surrogate all fail. No byte is replaced. Empty bytes are an
// empty text.
std::optional<QString> decodeUtf8(QByteArrayView bytes);
// Writes the same to `units`, which has room for as many units as there are bytes. Returns the end of what
// was written, or nullptr when the bytes are not well-formed.
char16_t *decodeUtf8(QByteArrayView bytes, char16_t *units);

// Returns the leading whole number of a text ("8192;x" is 8192), after white space and an optional sign, or 0
// without one. A number out of range becomes the type's least or greatest.
qint64 integerValue(QStringView text);
qint32 intValue(QStringView text);

// Returns whether two texts are equal but for upper and lower case.
bool equalsIgnoringCase(QStringView a, QStringView b);

} // namespace orvel
