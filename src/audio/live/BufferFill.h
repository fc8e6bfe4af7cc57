#pragma once

#include "audio/live/AudioQueue.h"
#include "platform/media/output/OutputQueue.h"

#include <vector>

namespace orvel {

// At most this many packets of a varying bit rate go into one buffer.
inline constexpr std::size_t maxPacketDescriptions = 512;

// Moves whole packets from the head of `packets` into `buffer` while they leave at least a byte of it free,
// and describes each. Drops a packet that no buffer could hold.
void fillVariableBitRate(AudioQueue &packets, OutputBuffer &buffer,
                         std::vector<AudioStreamPacketDescription> &descriptions);

// Fills `buffer` from packets of a constant size. The packet that does not fit whole fills the rest of the
// buffer, and keeps its other bytes at the head of `packets`.
// Deliberate: each whole packet is copied one packet length beyond where it is counted, clipped at the
// capacity, so that the buffer's first packet length keeps its old bytes
// (BufferFillTest.ConstantPacketsAreCopiedOnePacketBeyondAndClipped).
void fillConstantBitRate(AudioQueue &packets, OutputBuffer &buffer);

} // namespace orvel
