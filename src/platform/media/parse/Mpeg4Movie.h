#pragma once

#include "platform/media/parse/ContainerReader.h"

namespace orvel {

// The index of an MPEG-4 file.
struct Mpeg4Movie
{
    ContainedSound sound = {}; // of the first track that can be played
    quint32 trackNumber = 0;
    // Further packets come with fragments, which leave out what is the same in all.
    bool isFragmented = false;
    quint32 fragmentPacketBytes = 0;
};

// Reads a "moov" box. nullopt when no track of it can be played.
std::optional<Mpeg4Movie> readMpeg4Movie(QByteArrayView movie);

} // namespace orvel
