#pragma once

#include "audio/live/AudioPacket.h"

#include <deque>
#include <optional>

namespace orvel {

// The player's own first-in, first-out row of packets. Not safe between threads by itself.
class AudioQueue
{
public:
    void addPacket(AudioPacket packet)
    {
        m_byteCount += packet.length();
        m_packets.push_back(std::move(packet));
    }
    // The oldest packet; null when there is none.
    AudioPacket *peak() { return m_packets.empty() ? nullptr : &m_packets.front(); }
    std::optional<AudioPacket> pop();
    void removeAllPackets();
    std::size_t count() const { return m_packets.size(); }
    // Bytes of all packets in the row, as they were added.
    std::size_t byteCount() const { return m_byteCount; }

private:
    std::deque<AudioPacket> m_packets;
    std::size_t m_byteCount = 0;
};

} // namespace orvel
