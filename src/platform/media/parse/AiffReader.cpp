#include "platform/media/parse/AiffReader.h"

#include "platform/media/parse/ByteReader.h"
#include "platform/media/parse/ConstantFormat.h"

#include <algorithm>
#include <cmath>

namespace orvel {

namespace {

constexpr quint32 commonChunk = fourCharacterCode("COMM");
constexpr quint32 soundChunk = fourCharacterCode("SSND");
constexpr qint64 soundHeaderBytes = 8;

// Reads a number in the 80 bits of an extended float.
double readExtended(ByteReader &reader)
{
    const quint16 exponent = reader.u16();
    return std::ldexp(double(reader.u64()), int(exponent & 0x7FFF) - 16383 - 63);
}

std::optional<AudioStreamBasicDescription> formatFor(quint32 compression, double sampleRate, quint32 channels,
                                                     quint32 bits)
{
    using enum SampleType;
    switch (compression) {
    case fourCharacterCode("NONE"):
    case fourCharacterCode("twos"):
        return pcmFormat(sampleRate, channels, bits, SignedInteger, std::endian::big);
    case fourCharacterCode("sowt"):
        return pcmFormat(sampleRate, channels, bits, SignedInteger, std::endian::little);
    case fourCharacterCode("fl32"):
    case fourCharacterCode("FL32"):
        return pcmFormat(sampleRate, channels, 32, FloatingPoint, std::endian::big);
    case fourCharacterCode("fl64"):
    case fourCharacterCode("FL64"):
        return pcmFormat(sampleRate, channels, 64, FloatingPoint, std::endian::big);
    case fourCharacterCode("alaw"):
    case fourCharacterCode("ALAW"):
        return lawFormat(sampleRate, channels, AudioFormat::aLaw);
    case fourCharacterCode("ulaw"):
    case fourCharacterCode("ULAW"):
        return lawFormat(sampleRate, channels, AudioFormat::muLaw);
    default:
        return std::nullopt;
    }
}

} // namespace

bool AiffReader::takeFileHeader(QByteArrayView header)
{
    m_isAifc = header.endsWith("AIFC");
    return header.startsWith("FORM") && (m_isAifc || header.endsWith("AIFF"));
}

Chunk AiffReader::readChunkHeader(QByteArrayView header)
{
    ByteReader reader(header);
    Chunk chunk{.code = reader.code()};
    const quint32 size = reader.u32();
    chunk.size = quint64(size) + size % 2;
    return chunk;
}

qint64 AiffReader::bytesToRead(const Chunk &chunk) const
{
    return chunk.code == commonChunk ? (m_isAifc ? 22 : 18) : chunk.code == soundChunk ? soundHeaderBytes : 0;
}

ContainerStep AiffReader::takeChunk(const Chunk &chunk, QByteArrayView body)
{
    if (chunk.code == commonChunk && !takeFormat(body))
        return ContainerStep::fail();
    if (chunk.code == soundChunk) {
        const quint64 passed = soundHeaderBytes + ByteReader(body).u32();
        m_samples =
            Chunk{chunk.code, chunk.offset + qint64(passed), *chunk.size - std::min(passed, *chunk.size)};
    }
    const bool hasFormat = m_sound.format.bytesPerPacket > 0;
    if (hasFormat && m_samples)
        return constantPackets(m_samples->offset, m_samples->size);
    return chunkBehind(chunk, m_samples.has_value());
}

bool AiffReader::takeFormat(QByteArrayView body)
{
    ByteReader reader(body);
    const quint32 channels = reader.u16();
    reader.skip(4); // number of frames
    const quint32 bits = reader.u16();
    const double sampleRate = readExtended(reader);
    const quint32 compression = m_isAifc ? reader.code() : fourCharacterCode("NONE");
    const auto format = formatFor(compression, sampleRate, channels, bits);
    if (format)
        m_sound.format = *format;
    return format.has_value();
}

} // namespace orvel
