#pragma once

#include "platform/media/parse/Mpeg4Movie.h"

namespace orvel {

// Reads where a fragment's packets lie, those of the movie's track, from its "moof" box, which begins at this
// offset of the file. nullopt when it can't be true.
std::optional<PacketTable> readMpeg4Fragment(QByteArrayView fragment, qint64 offset, const Mpeg4Movie &movie);

} // namespace orvel
