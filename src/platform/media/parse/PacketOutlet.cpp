#include "platform/media/parse/PacketOutlet.h"

#include <utility>

namespace orvel {

void PacketOutlet::open(const AudioStreamBasicDescription &format, const QByteArray &cookie)
{
    m_format = format;
    if (HeAacProbe::isNeededFor(format))
        m_probe = std::make_unique<HeAacProbe>(format, cookie);
    else
        tellProperties();
}

void PacketOutlet::take(QByteArrayView bytes, std::span<const AudioStreamPacketDescription> packets)
{
    if (packets.empty())
        return;
    if (m_probe) {
        if (!showsFormat(bytes, packets)) {
            hold(bytes, packets);
            return;
        }
        finish();
    }
    m_client.handlePacket(m_stream, quint32(packets.size()), bytes, packets);
}

void PacketOutlet::finish()
{
    if (!m_probe)
        return;
    m_highQualityFormat = m_probe->highQualityFormat();
    m_probe.reset();
    tellProperties();
    const QByteArray bytes = std::exchange(m_heldBytes, {});
    take(bytes, std::exchange(m_heldPackets, {}));
}

std::vector<AudioStreamBasicDescription> PacketOutlet::formatList() const
{
    if (!m_highQualityFormat)
        return {};
    return {*m_highQualityFormat, *m_format};
}

bool PacketOutlet::showsFormat(QByteArrayView bytes, std::span<const AudioStreamPacketDescription> packets)
{
    for (const AudioStreamPacketDescription &packet : packets)
        if (m_probe->feed(bytes.sliced(packet.startOffset, packet.dataByteSize)))
            return true;
    return false;
}

void PacketOutlet::hold(QByteArrayView bytes, std::span<const AudioStreamPacketDescription> packets)
{
    for (AudioStreamPacketDescription packet : packets) {
        const QByteArrayView data = bytes.sliced(packet.startOffset, packet.dataByteSize);
        packet.startOffset = m_heldBytes.size();
        m_heldPackets.push_back(packet);
        m_heldBytes.append(data);
    }
}

void PacketOutlet::tellProperties()
{
    using enum AudioFileStreamProperty;
    m_client.handlePropertyChange(m_stream, DataFormat);
    if (m_highQualityFormat)
        m_client.handlePropertyChange(m_stream, FormatList);
    if (m_stream.dataOffset())
        m_client.handlePropertyChange(m_stream, DataOffset);
    if (m_stream.audioDataByteCount())
        m_client.handlePropertyChange(m_stream, AudioDataByteCount);
    m_client.handlePropertyChange(m_stream, ReadyToProducePackets);
}

} // namespace orvel
