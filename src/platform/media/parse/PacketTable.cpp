#include "platform/media/parse/PacketTable.h"

#include <algorithm>
#include <limits>

namespace orvel {

namespace {
constexpr qint64 maxOffset = std::numeric_limits<qint64>::max() / 4;
} // namespace

bool PacketTable::addRun(qint64 offset, qint64 packets)
{
    if (packets == 0)
        return true;
    if (offset < m_end || offset > maxOffset || packets < 0)
        return false;
    qint64 end = offset;
    quint32 maxSize = m_maxSize;
    if (m_constantSize > 0) {
        if (packets > maxOffset / m_constantSize)
            return false;
        end += packets * m_constantSize;
        maxSize = m_constantSize;
    } else {
        if (packets > qint64(m_sizes.size()) - m_packets)
            return false;
        for (qint64 i = m_packets; i < m_packets + packets; ++i) {
            end += sizeOf(i);
            maxSize = std::max(maxSize, sizeOf(i));
        }
    }
    if (maxSize > maxPacketBytes || end > maxOffset)
        return false;
    if (m_runs.empty() || offset != m_end) {
        if (m_runs.size() == maxRuns)
            return false;
        m_runs.push_back({offset, m_packets});
    }
    m_packets += packets;
    m_end = end;
    m_maxSize = maxSize;
    return true;
}

PacketTable::Cursor PacketTable::packet(qint64 number) const
{
    if (m_packets == 0)
        return {};
    const qint64 wanted = std::clamp<qint64>(number, 0, m_packets - 1);
    const auto behind = std::ranges::upper_bound(m_runs, wanted, {}, &Run::firstPacket);
    const auto run = behind - 1;
    Cursor cursor{std::size_t(run - m_runs.begin()), run->firstPacket, run->offset};
    if (m_constantSize > 0)
        advance(cursor, wanted - cursor.packet);
    while (cursor.packet < wanted)
        advance(cursor);
    return cursor;
}

PacketTable::Cursor PacketTable::packetFrom(qint64 offset) const
{
    const auto behind = std::ranges::upper_bound(m_runs, offset, {}, &Run::offset);
    if (behind == m_runs.begin())
        return begin();
    const auto run = behind - 1;
    Cursor cursor{std::size_t(run - m_runs.begin()), run->firstPacket, run->offset};
    if (m_constantSize > 0) {
        const qint64 passed = (offset - cursor.offset + m_constantSize - 1) / m_constantSize;
        advance(cursor, std::min(passed, leftInRun(cursor)));
    }
    while (!isEnd(cursor) && cursor.offset < offset)
        advance(cursor);
    return cursor;
}

void PacketTable::advance(Cursor &cursor) const
{
    cursor.offset += sizeOf(cursor.packet);
    ++cursor.packet;
    enterNextRun(cursor);
}

void PacketTable::advance(Cursor &cursor, qint64 packets) const
{
    cursor.offset += packets * m_constantSize;
    cursor.packet += packets;
    enterNextRun(cursor);
}

void PacketTable::enterNextRun(Cursor &cursor) const
{
    if (cursor.packet == firstBehind(cursor.run) && !isEnd(cursor))
        cursor.offset = m_runs[++cursor.run].offset;
}

} // namespace orvel
