#pragma once

#include "platform/media/output/OutputQueue.h"

#include <cstring>
#include <span>
#include <vector>

namespace orvel {

// The packets that are being gathered for the next buffer of a ring. One thread.
class FillBuffer
{
public:
    static constexpr std::size_t maxPacketDescriptions = 512;

    bool isEmpty() const { return m_bytes.isEmpty(); }
    qsizetype bytesFilled() const { return m_bytes.size(); }
    bool isFullOfPackets() const { return m_packetDescs.size() == maxPacketDescriptions; }
    std::span<const AudioStreamPacketDescription> packetDescs() const { return m_packetDescs; }

    void addPacket(QByteArrayView packet, const AudioStreamPacketDescription &description)
    {
        m_packetDescs.push_back(description);
        m_packetDescs.back().startOffset = m_bytes.size();
        m_bytes.append(packet);
    }
    // Bytes of packets of constant size, which are not described.
    void addBytes(QByteArrayView bytes) { m_bytes.append(bytes); }
    void copyTo(OutputBuffer &buffer) const
    {
        buffer.byteSize = quint32(m_bytes.size());
        std::memcpy(buffer.data.data(), m_bytes.constData(), buffer.byteSize);
    }
    void clear()
    {
        m_bytes.resize(0); // keeps its memory
        m_packetDescs.clear();
    }

private:
    QByteArray m_bytes;
    std::vector<AudioStreamPacketDescription> m_packetDescs;
};

} // namespace orvel
