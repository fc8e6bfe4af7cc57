#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArrayView>
#include <QString>

namespace orvel {

// Returns the file type that goes with a URL path's extension; MPEG layer 3 for an unknown one.
// Deliberate: the case counts, "WAV" is unknown (FileTypeHintTest.ComparesExtensionsExactly).
AudioFileType hintForFileExtension(QStringView fileExtension);

// How many bytes of a file show its type.
inline constexpr qsizetype fileTypeBytes = 16;

// Returns the type that a file's first bytes plainly show (RIFF, RF64, FORM, caff, ftyp), else `hint`.
AudioFileType fileTypeOf(QByteArrayView firstBytes, AudioFileType hint);

// Whether the type is a bare row of frames, which are looked for in whatever comes.
bool isFramed(AudioFileType type);

// Returns the length of the ID3v2 tag (id3.org) that begins with these bytes, 0 when none does.
qint64 id3TagSize(QByteArrayView firstBytes);

} // namespace orvel
