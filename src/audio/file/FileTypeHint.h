#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QString>

namespace orvel {

// Returns the file type that goes with a URL path's extension; MPEG layer 3 for an unknown one.
// Deliberate: the case counts, "WAV" is unknown (FileTypeHintTest.ComparesExtensionsExactly).
AudioFileType hintForFileExtension(QStringView fileExtension);

} // namespace orvel
