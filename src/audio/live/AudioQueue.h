#pragma once

#include "audio/live/AudioPacket.h"

#include <deque>
#include <optional>

namespace orvel {

// A player's packets, first in, first out. One thread at a time.
class AudioQueue
{
public:
    void addPacket(AudioPacket packet)
    {
        m_byteCount += packet.length();
        m_packets.push_back(std::move(packet));
    }
    // Returns the oldest packet, or nullptr.
    AudioPacket *peak() { return m_packets.empty() ? nullptr : &m_packets.front(); }
    // Removes the oldest packet and returns it, or std::nullopt.
    std::optional<AudioPacket> pop();
    void removeAllPackets();
    std::size_t count() const { return m_packets.size(); }
    // Bytes of all packets, as they were added.
    std::size_t byteCount() const { return m_byteCount; }

private:
    std::deque<AudioPacket> m_packets;
    std::size_t m_byteCount = 0;
};

} // namespace orvel
