#include "platform/media/parse/WaveReader.h"

#include "platform/media/parse/ByteReader.h"
#include "platform/media/parse/ConstantFormat.h"

namespace orvel {

namespace {

constexpr quint32 formatChunk = fourCharacterCode("fmt ");
constexpr quint32 sizesChunk = fourCharacterCode("ds64");
constexpr quint32 dataChunk = fourCharacterCode("data");

constexpr quint32 sizeElsewhere = 0xFFFFFFFF;

} // namespace

bool WaveReader::takeFileHeader(QByteArrayView header)
{
    m_isRf64 = header.startsWith("RF64");
    return (m_isRf64 || header.startsWith("RIFF")) && header.sliced(8) == QByteArrayView("WAVE");
}

Chunk WaveReader::readChunkHeader(QByteArrayView header)
{
    ByteReader reader(header, std::endian::little);
    Chunk chunk{.code = reader.code()};
    const quint32 size = reader.u32();
    if (chunk.code != dataChunk)
        chunk.size = quint64(size) + size % 2;
    else if (m_isRf64 && size == sizeElsewhere)
        chunk.size = m_dataBytes;
    else if (size != 0 && size != sizeElsewhere) // who writes to a pipe leaves the size open
        chunk.size = size;
    return chunk;
}

qint64 WaveReader::bytesToRead(const Chunk &chunk) const
{
    return chunk.code == formatChunk ? 40 : chunk.code == sizesChunk ? 28 : 0;
}

ContainerStep WaveReader::takeChunk(const Chunk &chunk, QByteArrayView body)
{
    if (chunk.code == dataChunk)
        return m_sound.format.bytesPerPacket == 0 ? ContainerStep::fail()
                                                  : constantPackets(chunk.offset, chunk.size);
    if (chunk.code == sizesChunk) {
        ByteReader reader(body, std::endian::little);
        reader.skip(8); // the whole file's
        m_dataBytes = reader.u64();
    }
    if (chunk.code == formatChunk && !takeFormat(body))
        return ContainerStep::fail();
    return chunkBehind(chunk);
}

bool WaveReader::takeFormat(QByteArrayView body)
{
    enum Tag : quint16 { Pcm = 1, Float = 3, ALaw = 6, MuLaw = 7, Extensible = 0xFFFE };

    ByteReader reader(body, std::endian::little);
    quint16 tag = reader.u16();
    const quint32 channels = reader.u16();
    const double sampleRate = reader.u32();
    reader.skip(6); // bytes a second and a block
    const quint32 bits = reader.u16();
    if (tag == Extensible) {
        reader.skip(8);     // size, valid bits, speakers
        tag = reader.u16(); // what the GUID begins with
    }
    std::optional<AudioStreamBasicDescription> format;
    if (tag == ALaw || tag == MuLaw)
        format = lawFormat(sampleRate, channels, tag == ALaw ? AudioFormat::aLaw : AudioFormat::muLaw);
    else if (tag == Pcm || tag == Float)
        format = pcmFormat(sampleRate, channels, bits,
                           tag == Float ? SampleType::FloatingPoint
                           : bits <= 8  ? SampleType::UnsignedInteger
                                        : SampleType::SignedInteger,
                           std::endian::little);
    if (format)
        m_sound.format = *format;
    return format.has_value();
}

} // namespace orvel
