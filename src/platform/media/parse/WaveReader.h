#pragma once

#include "platform/media/parse/ChunkReader.h"

namespace orvel {

// WAVE files in RIFF and RF64 (EBU Tech 3306): linear PCM, A-law, mu-law, also by an extensible format.
class WaveReader final : public ChunkReader
{
public:
    WaveReader() : ChunkReader(12, 8) {}

private:
    bool takeFileHeader(QByteArrayView header) override;
    Chunk readChunkHeader(QByteArrayView header) override;
    qint64 bytesToRead(const Chunk &chunk) const override;
    ContainerStep takeChunk(const Chunk &chunk, QByteArrayView body) override;
    bool takeFormat(QByteArrayView body);

    bool m_isRf64 = false;
    std::optional<quint64> m_dataBytes; // from RF64's own chunk
};

} // namespace orvel
