#pragma once

#include "platform/media/parse/ContainerReader.h"
#include "platform/media/parse/PacketMean.h"
#include "platform/media/parse/PacketOutlet.h"

namespace orvel {

// The packets of a container file: takes the bytes that are pushed to the reader of its headers, or cuts them
// into the packets that the reader has made known. Holds the sound that comes before its index.
class ContainerStream final : public AudioFileStream
{
public:
    ContainerStream(AudioFileStreamClient &client, std::unique_ptr<ContainerReader> reader);

    bool parseBytes(QByteArrayView bytes) override;
    void finish() override { m_outlet.finish(); }
    std::optional<AudioFileStreamSeek> seek(qint64 packet) const override;
    void continueAt(qint64 fileOffset) override;
    std::optional<qint64> wantedOffset() const override;

    std::optional<AudioStreamBasicDescription> dataFormat() const override { return m_outlet.format(); }
    std::vector<AudioStreamBasicDescription> formatList() const override { return m_outlet.formatList(); }
    std::optional<qint64> dataOffset() const override { return m_dataOffset; }
    std::optional<quint64> audioDataByteCount() const override;
    std::optional<quint32> packetSizeUpperBound() const override;
    std::optional<quint32> maximumPacketSize() const override { return packetSizeUpperBound(); }
    QByteArray magicCookie() const override { return m_reader->sound().cookie; }
    std::optional<AudioTrim> trim() const override;

private:
    qsizetype readHeaders(QByteArrayView bytes);
    bool hold(QByteArrayView bytes);
    void proceed(const ContainerStep &step);
    void cutHeld();
    qsizetype cut(QByteArrayView bytes);
    qsizetype takeVarying(QByteArrayView bytes);
    qsizetype takeConstant(QByteArrayView bytes);
    qsizetype completePacket(QByteArrayView bytes);
    const PacketTable &packets() const { return m_reader->sound().packets; }
    bool hasConstantPackets() const { return m_reader->sound().format.bytesPerPacket > 0; }
    // No packet is left that ends before headers go on.
    bool isSoundOver() const;

    const std::unique_ptr<ContainerReader> m_reader;
    PacketOutlet m_outlet;
    ContainerStep m_step;
    qint64 m_position = 0; // in the file, of the next byte
    QByteArray m_part;     // of the headers, or of the packet, that are incomplete
    bool m_hasJumped = false;
    bool m_isHolding = false;
    QByteArray m_held; // up to m_position
    std::optional<qint64> m_dataOffset;
    PacketTable::Cursor m_cursor; // the packet that comes next or is incomplete
    std::vector<AudioStreamPacketDescription> m_found;
    PacketMean m_mean;
};

} // namespace orvel
