#include "platform/media/parse/ChunkReader.h"

#include <algorithm>

namespace orvel {

ContainerStep ChunkReader::next(QByteArrayView headers)
{
    switch (m_part) {
    case Part::FileHeader:
        if (!takeFileHeader(headers))
            return ContainerStep::fail();
        return chunkBehind({.offset = m_fileHeaderBytes, .size = 0});
    case Part::ChunkHeader: {
        m_chunk = readChunkHeader(headers);
        m_chunk.offset = m_headerOffset + m_chunkHeaderBytes;
        const auto size =
            qint64(std::min(m_chunk.size.value_or(quint64(maxFileBytes)), quint64(bytesToRead(m_chunk))));
        if (size == 0)
            return takeChunk(m_chunk, {});
        m_part = Part::Body;
        return ContainerStep::read(m_chunk.offset, size);
    }
    case Part::Body:
        return takeChunk(m_chunk, headers);
    }
    return ContainerStep::fail();
}

ContainerStep ChunkReader::chunkBehind(const Chunk &chunk, bool passesSound)
{
    if (!chunk.size || *chunk.size > quint64(maxFileBytes))
        return ContainerStep::fail();
    m_part = Part::ChunkHeader;
    m_headerOffset = chunk.offset + qint64(*chunk.size);
    if (m_headerOffset > maxFileBytes)
        return ContainerStep::fail();
    return passesSound ? ContainerStep::readBehindSound(m_headerOffset, m_chunkHeaderBytes)
                       : ContainerStep::read(m_headerOffset, m_chunkHeaderBytes);
}

} // namespace orvel
