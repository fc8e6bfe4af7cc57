#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QString>

namespace orvel {

// How a stream's sound is kept in a file: a null extension and no hint when its content type is not known.
struct StreamFileType
{
    QString fileExtension{};
    AudioFileType hint = AudioFileType::none;
};

// Content types are compared exactly: other case or parameters make them unknown.
StreamFileType streamFileType(QStringView contentType);

} // namespace orvel
