#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QString>

namespace orvel {

// How a stream's sound is kept in a file. A null extension and no hint when its content type is unknown.
struct StreamFileType
{
    QString fileExtension{};
    AudioFileType hint = AudioFileType::none;
};

// Deliberate: content types are compared exactly, another case or parameters make them unknown
// (StreamFileTypeTest.ComparesContentTypesExactly).
StreamFileType streamFileType(QStringView contentType);

// What a live player opens its parser with. Knows MP3 and AAC alone, in any case; none for the others.
AudioFileType fileTypeHint(QStringView contentType);

} // namespace orvel
