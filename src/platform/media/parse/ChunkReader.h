#pragma once

#include "platform/media/parse/ContainerReader.h"

namespace orvel {

// One of the chunks that RIFF, IFF and Core Audio files consist of.
struct Chunk
{
    quint32 code = 0;
    qint64 offset = 0;                // of its body
    std::optional<quint64> size = {}; // of its body; nullopt: to the end of the file
};

// Goes from chunk to chunk.
class ChunkReader : public ContainerReader
{
public:
    ContainerStep begin() final { return ContainerStep::read(0, m_fileHeaderBytes); }
    ContainerStep next(QByteArrayView headers) final;

protected:
    ChunkReader(qint64 fileHeaderBytes, qint64 chunkHeaderBytes)
        : m_fileHeaderBytes(fileHeaderBytes), m_chunkHeaderBytes(chunkHeaderBytes)
    {
    }

    virtual bool takeFileHeader(QByteArrayView header) = 0;
    // Its offset is filled in later.
    virtual Chunk readChunkHeader(QByteArrayView header) = 0;
    // How many bytes of a chunk of this kind are worth to be read.
    virtual qint64 bytesToRead(const Chunk &chunk) const = 0;
    // Takes these bytes, fewer when the chunk is shorter.
    virtual ContainerStep takeChunk(const Chunk &chunk, QByteArrayView body) = 0;

    // The chunk behind this one. `passesSound` when this one holds sound that needs what is behind it.
    ContainerStep chunkBehind(const Chunk &chunk, bool passesSound = false);

private:
    enum class Part { FileHeader, ChunkHeader, Body };

    const qint64 m_fileHeaderBytes;
    const qint64 m_chunkHeaderBytes;
    Part m_part = Part::FileHeader;
    qint64 m_headerOffset = 0; // of the next chunk
    Chunk m_chunk;
};

} // namespace orvel
