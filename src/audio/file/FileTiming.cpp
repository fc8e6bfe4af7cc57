#include "audio/file/FileTiming.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvel {

namespace {

constexpr double maxPacket = 1e15;

} // namespace

void FileTiming::takeHeaders(const HeaderFields &headers)
{
    m_httpHeaders = headers;
    if (m_seekByteOffset == 0)
        m_fileLength = headers.value(QStringLiteral("Content-Length")).value_or(QString()).toLongLong();
}

void FileTiming::forgetDownload()
{
    m_httpHeaders.clear();
    m_seekByteOffset = 0;
}

void FileTiming::takeFormat(const AudioStreamBasicDescription &format)
{
    if (m_asbd.sampleRate <= 0)
        m_asbd = format;
}

void FileTiming::takeFormatOf(const std::vector<AudioStreamBasicDescription> &formats)
{
    const auto highEfficiency =
        std::ranges::find(formats, AudioFormat::mpeg4AacHe, &AudioStreamBasicDescription::format);
    if (highEfficiency != formats.end())
        m_asbd = *highEfficiency;
}

void FileTiming::setDataOffset(qint64 offset)
{
    m_dataOffset = offset;
    updateFileLength();
}

void FileTiming::setAudioDataByteCount(quint64 count)
{
    m_audioDataByteCount = count;
    updateFileLength();
}

// The file's sound ends where its packets do, whatever follows.
void FileTiming::updateFileLength()
{
    if (!m_audioDataByteCount)
        return;
    const auto room = quint64(std::numeric_limits<qint64>::max() - m_dataOffset);
    m_fileLength = m_dataOffset + qint64(std::min(*m_audioDataByteCount, room));
}

double FileTiming::packetDuration() const
{
    return m_asbd.sampleRate > 0 ? m_asbd.framesPerPacket / m_asbd.sampleRate : 0;
}

void FileTiming::addPackets(quint32 numberOfPackets,
                            std::span<const AudioStreamPacketDescription> descriptions)
{
    if (m_bitRate == 0)
        m_bitRate = std::numeric_limits<quint32>::max();
    for (const AudioStreamPacketDescription &packet : descriptions)
        m_estimate.add(1, packet.dataByteSize);
    if (descriptions.empty())
        m_estimate.add(numberOfPackets, m_asbd.bytesPerPacket);
}

double FileTiming::calculatedBitRate() const
{
    const double packet = packetDuration();
    return m_estimate.isKnown() && packet > 0 ? m_estimate.bitsPerSecond(packet) : m_bitRate;
}

double FileTiming::duration() const
{
    const double bitRate = calculatedBitRate();
    if (bitRate == 0 || m_fileLength == 0)
        return 0;
    return boundedSeconds(double(m_fileLength - m_dataOffset) / (bitRate * 0.125));
}

double FileTiming::secondsAt(double frames) const
{
    return boundedSeconds(m_seekTime + frames / m_asbd.sampleRate);
}

std::optional<qint64> FileTiming::prepareSeek(double target, const AudioFileStream &stream,
                                              quint32 packetBufferSize)
{
    const double length = duration();
    const double share = target == 0 ? 0 : target / length; // infinite for a length of 0
    const double last = double(m_fileLength - 2 * qint64(packetBufferSize));
    const double aimed = double(m_dataOffset) + share * double(m_fileLength - m_dataOffset);
    m_seekByteOffset = std::max(m_dataOffset, qint64(std::min(aimed, last)));
    m_seekTime = target;
    if (packetDuration() <= 0)
        return std::nullopt;
    const qint64 packet = qint64(std::min(std::floor(target / packetDuration()), maxPacket));
    const std::optional<AudioFileStreamSeek> found = stream.seek(packet);
    if (!found || found->isEstimated)
        return std::nullopt;
    m_seekTime -= double(m_seekByteOffset - m_dataOffset - found->byteOffset) * 8 / calculatedBitRate();
    m_seekByteOffset = m_dataOffset + found->byteOffset;
    return packet;
}

} // namespace orvel
