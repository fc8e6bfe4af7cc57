#include "audio/live/AudioQueue.h"

namespace orvel {

std::optional<AudioPacket> AudioQueue::pop()
{
    if (m_packets.empty())
        return std::nullopt;
    std::optional<AudioPacket> packet = std::move(m_packets.front());
    m_packets.pop_front();
    m_byteCount -= packet->length();
    return packet;
}

void AudioQueue::removeAllPackets()
{
    m_packets.clear();
    m_byteCount = 0;
}

} // namespace orvel
