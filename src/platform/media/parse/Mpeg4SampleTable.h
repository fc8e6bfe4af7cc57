#pragma once

#include "platform/media/parse/PacketTable.h"

#include <QByteArrayView>

namespace orvel {

// Reads where a track's packets lie from its sample table ("stbl"), whose boxes say the packets' sizes, the
// offsets of chunks, and how many packets each chunk has. nullopt when they contradict each other, or when
// the chunks are not in the order of the file.
std::optional<PacketTable> readMpeg4SampleTable(QByteArrayView sampleTable);

} // namespace orvel
