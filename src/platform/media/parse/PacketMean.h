#pragma once

#include "platform/media/parse/AudioFileStream.h"

#include <algorithm>

namespace orvel {

// Estimates where packets begin from the mean size of those so far.
class PacketMean
{
public:
    void add(qint64 packets, qint64 bytes)
    {
        m_packets += packets;
        m_bytes += bytes;
    }
    // nullopt before the first packet.
    std::optional<AudioFileStreamSeek> seek(qint64 packet) const
    {
        constexpr qint64 maxPacket = qint64(1) << 40;
        if (m_packets == 0)
            return std::nullopt;
        const double mean = double(m_bytes) / double(m_packets);
        const qint64 wanted = std::clamp<qint64>(packet, 0, maxPacket);
        return AudioFileStreamSeek{.byteOffset = qint64(double(wanted) * mean)};
    }
    bool isEmpty() const { return m_packets == 0; }

private:
    qint64 m_packets = 0;
    qint64 m_bytes = 0;
};

} // namespace orvel
