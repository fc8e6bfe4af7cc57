#include "audio/live/BufferFill.h"

#include <algorithm>

namespace orvel {

void fillVariableBitRate(AudioQueue &packets, OutputBuffer &buffer,
                         std::vector<AudioStreamPacketDescription> &descriptions)
{
    const std::size_t capacity = buffer.capacity();
    buffer.byteSize = 0;
    descriptions.clear();
    while (AudioPacket *packet = packets.peak()) {
        const std::size_t length = packet->length();
        if (length >= capacity) {
            packets.pop();
            continue;
        }
        if (buffer.byteSize + length >= capacity || descriptions.size() == maxPacketDescriptions)
            return;
        AudioStreamPacketDescription description = packet->audioDescription();
        description.startOffset = buffer.byteSize;
        descriptions.push_back(description);
        packet->copyToBuffer(buffer.data.data() + buffer.byteSize, length);
        buffer.byteSize += quint32(length);
        packets.pop();
    }
}

void fillConstantBitRate(AudioQueue &packets, OutputBuffer &buffer)
{
    const std::size_t capacity = buffer.capacity();
    std::size_t total = 0;
    while (AudioPacket *packet = packets.peak()) {
        const std::size_t remaining = packet->remainingLength();
        if (total + remaining > capacity) {
            packet->copyToBuffer(buffer.data.data() + total, capacity - total);
            buffer.byteSize = quint32(capacity);
            return;
        }
        total += remaining;
        packet->copyToBuffer(buffer.data.data() + total, std::min(remaining, capacity - total));
        packets.pop();
    }
    buffer.byteSize = quint32(total);
}

} // namespace orvel
