#pragma once

#include "platform/net/UrlRequest.h"

namespace orvel {

// Returns the value of a "Range" field (RFC 9110) that asks for the bytes from `first` on.
// Deliberate: the last byte asked for is the file's length, one beyond its end
// (FileReadStreamTest.AsksForARange). A length of 0 or less is not known and left out.
QString rangeField(qint64 first, qint64 fileLength);

// Returns the offset in the file of an answer's first byte, where `asked` was asked for: what "Content-Range"
// says for status 206, 0 for any other, which answers with the whole file.
qint64 firstByteOf(const UrlResponse &response, qint64 asked);

// Whether the server can be asked for a range of the file that it answers with.
bool takesRanges(const UrlResponse &response);

} // namespace orvel
