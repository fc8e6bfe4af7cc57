#pragma once

#include "platform/media/parse/ChunkReader.h"

namespace orvel {

// Core Audio files: linear PCM, A-law, mu-law, AAC and ALAC. The table of the packets may lie behind them.
class CafReader final : public ChunkReader
{
public:
    CafReader() : ChunkReader(8, 12) {}

private:
    // Of the packets whose size varies.
    struct PacketSizes
    {
        std::vector<quint32> sizes;
        std::optional<AudioTrim> trim;
    };

    bool takeFileHeader(QByteArrayView header) override;
    Chunk readChunkHeader(QByteArrayView header) override;
    qint64 bytesToRead(const Chunk &chunk) const override;
    ContainerStep takeChunk(const Chunk &chunk, QByteArrayView body) override;
    bool takeDescription(QByteArrayView body);
    bool takeCookie(QByteArrayView body);
    static std::optional<PacketSizes> readPacketTable(QByteArrayView body);
    ContainerStep varyingPackets();

    AudioStreamBasicDescription m_description; // of packets that vary: only rate, format, channels
    std::optional<Chunk> m_data;
    std::optional<PacketSizes> m_packetSizes;
};

} // namespace orvel
