#include "platform/media/parse/ContainerReader.h"

#include <algorithm>

namespace orvel {

ContainerStep ContainerReader::constantPackets(qint64 offset, std::optional<quint64> bytes)
{
    const quint32 size = m_sound.format.bytesPerPacket;
    const quint64 count = bytes.value_or(maxFileBytes) / size;
    m_sound.packets = PacketTable(size);
    m_sound.hasEnd = bytes.has_value();
    if (count == 0 || !m_sound.packets.addRun(offset, qint64(std::min<quint64>(count, maxFileBytes))))
        return ContainerStep::fail();
    return ContainerStep::sound();
}

} // namespace orvel
