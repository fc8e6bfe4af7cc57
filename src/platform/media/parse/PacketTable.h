#pragma once

#include <QtGlobal>
#include <optional>
#include <vector>

namespace orvel {

// Where the packets of a file lie: runs of packets one behind the other, in the order of their bytes.
class PacketTable
{
public:
    // A file that claims more is not believed.
    static constexpr qint64 maxPackets = 1 << 22; // described one by one: 27 hours of AAC
    static constexpr quint32 maxPacketBytes = 1 << 20;
    static constexpr std::size_t maxRuns = 1 << 20;

    // A place between two packets, or in front of the next run.
    struct Cursor
    {
        std::size_t run = 0;
        qint64 packet = 0;
        qint64 offset = 0; // of that packet, in the file
    };

    PacketTable() = default;
    // The sizes of all packets, which the runs then use up.
    explicit PacketTable(std::vector<quint32> sizes) : m_sizes(std::move(sizes)) {}
    // All packets have this size, which is not 0.
    explicit PacketTable(quint32 constantSize) : m_constantSize(constantSize) {}

    // Returns false for a run in front of the end of the last one, with too big a packet or offset, with more
    // packets than there are sizes for, or for one run too many.
    bool addRun(qint64 offset, qint64 packets);

    qint64 packetCount() const { return m_packets; }
    qint64 endOffset() const { return m_end; } // of the last packet
    quint32 maxSize() const { return m_maxSize; }
    quint32 sizeOf(qint64 packet) const
    {
        return m_constantSize > 0 ? m_constantSize : m_sizes[std::size_t(packet)];
    }

    Cursor begin() const { return m_runs.empty() ? Cursor{} : Cursor{0, 0, m_runs.front().offset}; }
    bool isEnd(const Cursor &cursor) const { return cursor.packet == m_packets; }
    // Returns the packet of this number, the last one for any number beyond it.
    Cursor packet(qint64 number) const;
    // Returns the first packet that begins at this offset or behind.
    Cursor packetFrom(qint64 offset) const;
    // How many packets follow in the cursor's run.
    qint64 leftInRun(const Cursor &cursor) const { return firstBehind(cursor.run) - cursor.packet; }
    void advance(Cursor &cursor) const;
    // By at most leftInRun() packets of the constant size.
    void advance(Cursor &cursor, qint64 packets) const;

private:
    struct Run
    {
        qint64 offset;
        qint64 firstPacket;
    };
    qint64 firstBehind(std::size_t run) const
    {
        return run + 1 < m_runs.size() ? m_runs[run + 1].firstPacket : m_packets;
    }
    void enterNextRun(Cursor &cursor) const;

    std::vector<quint32> m_sizes;
    quint32 m_constantSize = 0;
    std::vector<Run> m_runs; // none is empty
    qint64 m_packets = 0;
    qint64 m_end = 0;
    quint32 m_maxSize = 0;
};

} // namespace orvel
