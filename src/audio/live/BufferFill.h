#pragma once

#include "audio/live/AudioQueue.h"
#include "platform/media/output/OutputQueue.h"

#include <vector>

namespace orvel {

// At most this many packets of a varying bit rate go into one buffer.
inline constexpr std::size_t maxPacketDescriptions = 512;

// Moves whole packets from the head of the row into `buffer`, as long as they leave at least a byte of it
// free, and describes each. A packet that no buffer could ever hold is dropped.
void fillVariableBitRate(AudioQueue &packets, OutputBuffer &buffer,
                         std::vector<AudioStreamPacketDescription> &descriptions);

// Fills `buffer` from packets of a constant size. Each whole packet is copied one packet length beyond where
// it is counted, so that the first packet length of the buffer keeps its old bytes; what would pass the
// capacity is clipped. The packet that does not fit whole fills the buffer from the running total on, and
// keeps the rest at the head of the row.
void fillConstantBitRate(AudioQueue &packets, OutputBuffer &buffer);

} // namespace orvel
