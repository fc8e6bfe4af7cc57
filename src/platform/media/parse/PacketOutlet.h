#pragma once

#include "platform/media/parse/AudioFileStream.h"
#include "platform/media/parse/HeAacProbe.h"

namespace orvel {

// The end of a parser: tells its properties and hands its packets on. AAC that may be HE-AAC waits there
// until the first packets have shown it.
class PacketOutlet
{
public:
    PacketOutlet(AudioFileStream &stream, AudioFileStreamClient &client) : m_stream(stream), m_client(client)
    {
    }

    // The stream's other properties are known, too. Before any packet.
    void open(const AudioStreamBasicDescription &format, const QByteArray &cookie);
    bool isOpen() const { return m_format.has_value(); }
    void take(QByteArrayView bytes, std::span<const AudioStreamPacketDescription> packets);
    // Packets of constant size.
    void take(QByteArrayView bytes, quint32 packets) { m_client.handlePacket(m_stream, packets, bytes, {}); }
    // Hands on what waits.
    void finish();

    const std::optional<AudioStreamBasicDescription> &format() const { return m_format; }
    std::vector<AudioStreamBasicDescription> formatList() const;

private:
    bool showsFormat(QByteArrayView bytes, std::span<const AudioStreamPacketDescription> packets);
    void hold(QByteArrayView bytes, std::span<const AudioStreamPacketDescription> packets);
    void tellProperties();

    AudioFileStream &m_stream;
    AudioFileStreamClient &m_client;
    std::optional<AudioStreamBasicDescription> m_format;
    std::unique_ptr<HeAacProbe> m_probe; // while the format is in question
    std::optional<AudioStreamBasicDescription> m_highQualityFormat;
    QByteArray m_heldBytes;
    std::vector<AudioStreamPacketDescription> m_heldPackets;
};

} // namespace orvel
