#pragma once

#include "platform/media/parse/ChunkReader.h"

namespace orvel {

// AIFF, and AIFC with sound that is not compressed, or A-law or mu-law.
class AiffReader final : public ChunkReader
{
public:
    AiffReader() : ChunkReader(12, 8) {}

private:
    bool takeFileHeader(QByteArrayView header) override;
    Chunk readChunkHeader(QByteArrayView header) override;
    qint64 bytesToRead(const Chunk &chunk) const override;
    ContainerStep takeChunk(const Chunk &chunk, QByteArrayView body) override;
    bool takeFormat(QByteArrayView body);

    bool m_isAifc = false;
    std::optional<Chunk> m_samples;
};

} // namespace orvel
