#include "platform/media/parse/CafReader.h"

#include "platform/media/parse/AlacConfig.h"
#include "platform/media/parse/AudioSpecificConfig.h"
#include "platform/media/parse/ByteReader.h"
#include "platform/media/parse/ConstantFormat.h"

#include <algorithm>
#include <limits>

namespace orvel {

namespace {

constexpr quint32 descriptionChunk = fourCharacterCode("desc");
constexpr quint32 cookieChunk = fourCharacterCode("kuki");
constexpr quint32 packetTableChunk = fourCharacterCode("pakt");
constexpr quint32 dataChunk = fourCharacterCode("data");
constexpr qint64 editCountBytes = 4; // in front of the data

constexpr quint64 toTheEnd = std::numeric_limits<quint64>::max();

std::optional<AudioStreamBasicDescription> linearFormat(double sampleRate, quint32 flags,
                                                        quint32 bytesPerPacket, quint32 channels)
{
    enum Flag : quint32 { IsFloat = 1, IsLittleEndian = 2 };
    if (channels == 0 || bytesPerPacket % channels != 0 || bytesPerPacket / channels > 8)
        return std::nullopt;
    return pcmFormat(sampleRate, channels, bytesPerPacket / channels * 8,
                     flags & IsFloat ? SampleType::FloatingPoint : SampleType::SignedInteger,
                     flags & IsLittleEndian ? std::endian::little : std::endian::big);
}

} // namespace

bool CafReader::takeFileHeader(QByteArrayView header)
{
    return header.startsWith(QByteArrayView("caff\0\1", 6));
}

Chunk CafReader::readChunkHeader(QByteArrayView header)
{
    ByteReader reader(header);
    Chunk chunk{.code = reader.code()};
    if (const quint64 size = reader.u64(); size != toTheEnd)
        chunk.size = size;
    return chunk;
}

qint64 CafReader::bytesToRead(const Chunk &chunk) const
{
    switch (chunk.code) {
    case descriptionChunk:
        return 32;
    case cookieChunk:
        return 4096;
    case packetTableChunk:
        return maxIndexBytes;
    default:
        return 0;
    }
}

ContainerStep CafReader::takeChunk(const Chunk &chunk, QByteArrayView body)
{
    switch (chunk.code) {
    case descriptionChunk:
        if (!takeDescription(body))
            return ContainerStep::fail();
        break;
    case cookieChunk:
        if (!takeCookie(body))
            return ContainerStep::fail();
        break;
    case packetTableChunk:
        m_packetSizes = readPacketTable(body);
        if (!m_packetSizes)
            return ContainerStep::fail();
        break;
    case dataChunk:
        if (chunk.size && *chunk.size < quint64(editCountBytes))
            return ContainerStep::fail();
        m_data = chunk;
        break;
    default:
        break;
    }
    if (m_data && m_sound.format.bytesPerPacket > 0) {
        const auto bytes = m_data->size ? std::optional(*m_data->size - editCountBytes) : std::nullopt;
        return constantPackets(m_data->offset + editCountBytes, bytes);
    }
    if (m_data && m_packetSizes && m_sound.format.format != AudioFormat::none)
        return varyingPackets();
    return chunkBehind(chunk, m_data.has_value());
}

bool CafReader::takeDescription(QByteArrayView body)
{
    ByteReader reader(body);
    const auto sampleRate = std::bit_cast<double>(reader.u64());
    const quint32 code = reader.code();
    const quint32 flags = reader.u32();
    const quint32 bytesPerPacket = reader.u32();
    reader.skip(4); // frames in a packet
    const quint32 channels = reader.u32();
    m_description = {.sampleRate = sampleRate, .format = AudioFormat(code), .channelsPerFrame = channels};
    std::optional<AudioStreamBasicDescription> constant;
    switch (m_description.format) {
    case AudioFormat::linearPcm:
        constant = linearFormat(sampleRate, flags, bytesPerPacket, channels);
        break;
    case AudioFormat::aLaw:
    case AudioFormat::muLaw:
        constant = lawFormat(sampleRate, channels, m_description.format);
        break;
    case AudioFormat::mpeg4Aac:
    case AudioFormat::mpeg4AacHe:
    case AudioFormat::mpeg4AacHeV2:
    case AudioFormat::appleLossless:
        return isPlausible(m_description); // the cookie says the rest
    default:
        break;
    }
    if (constant)
        m_sound.format = *constant;
    return constant.has_value();
}

bool CafReader::takeCookie(QByteArrayView body)
{
    std::optional<AudioStreamBasicDescription> format;
    if (m_description.format == AudioFormat::appleLossless) {
        // Older files wrap it as an MPEG-4 file does.
        constexpr qsizetype wrapBytes = 24;
        const bool isWrapped = body.sliced(std::min<qsizetype>(4, body.size())).startsWith("frmaalac");
        const QByteArrayView config = isWrapped ? body.sliced(std::min(wrapBytes, body.size())) : body;
        format = alacFormat(config);
        m_sound.cookie = config.first(std::min(alacConfigBytes, config.size())).toByteArray();
    } else if (m_description.format != AudioFormat::none && m_sound.format.bytesPerPacket == 0) {
        const QByteArrayView config = audioSpecificConfigIn(body);
        format = aacFormat(config, m_description.channelsPerFrame);
        m_sound.cookie = config.toByteArray();
    } else {
        return true; // of no use
    }
    if (format)
        m_sound.format = *format;
    return format.has_value();
}

std::optional<CafReader::PacketSizes> CafReader::readPacketTable(QByteArrayView body)
{
    ByteReader reader(body);
    const quint64 packets = reader.u64();
    const quint64 validFrames = reader.u64();
    const quint32 primingFrames = reader.u32();
    const quint32 remainderFrames = reader.u32();
    if (packets > quint64(PacketTable::maxPackets) || packets > quint64(reader.rest().size()))
        return std::nullopt;
    PacketSizes table;
    table.sizes.reserve(packets);
    for (quint64 i = 0; i < packets; ++i) {
        quint32 size = 0;
        quint8 byte = 0;
        do { // seven bits a byte, the highest first
            if (reader.rest().isEmpty() || size > PacketTable::maxPacketBytes)
                return std::nullopt;
            byte = reader.u8();
            size = size << 7 | (byte & 0x7Fu);
        } while (byte & 0x80);
        table.sizes.push_back(size);
    }
    constexpr quint64 maxFrames = quint64(1) << 48;
    if ((primingFrames > 0 || remainderFrames > 0) && validFrames > 0 && validFrames < maxFrames)
        table.trim = {.primingFrames = primingFrames, .validFrames = qint64(validFrames)};
    return table;
}

ContainerStep CafReader::varyingPackets()
{
    const auto count = qint64(m_packetSizes->sizes.size());
    m_sound.packets = PacketTable(std::move(m_packetSizes->sizes));
    m_sound.trim = m_packetSizes->trim;
    m_sound.trimRate = m_description.sampleRate;
    const bool isGood = count > 0 && m_sound.packets.addRun(m_data->offset + editCountBytes, count);
    return isGood ? ContainerStep::sound() : ContainerStep::fail();
}

} // namespace orvel
