#pragma once

#include "platform/media/parse/ContainerReader.h"

#include <map>

namespace orvel {

// The index of an MPEG-4 file.
struct Mpeg4Movie
{
    ContainedSound sound = {}; // of the first track that can be played
    quint32 trackNumber = 0;
    // Further packets come with fragments, which leave out what is the same in all.
    bool isFragmented = false;
    std::map<quint32, quint32> fragmentPacketBytes = {}; // by track
};

// Reads a "moov" box. nullopt when no track of it can be played.
std::optional<Mpeg4Movie> readMpeg4Movie(QByteArrayView movie);

} // namespace orvel
