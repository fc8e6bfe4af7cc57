#include "platform/media/parse/HeAacProbe.h"

#include "platform/media/codec/FfmpegHandles.h"

namespace orvel {

namespace {
constexpr int packetsToDecode = 6; // about a quarter of a second
} // namespace

bool HeAacProbe::isNeededFor(const AudioStreamBasicDescription &format)
{
    return format.format == AudioFormat::mpeg4Aac && format.sampleRate <= 24000;
}

HeAacProbe::HeAacProbe(const AudioStreamBasicDescription &format, const QByteArray &cookie)
    : m_format(format), m_decoder(AudioDecoder::make(format, cookie))
{
}

bool HeAacProbe::feed(QByteArrayView packet)
{
    if (!m_decoder)
        return true;
    m_decoder->decode(packet);
    while (const AVFrame *frame = m_decoder->nextFrame()) {
        if (double(frame->sample_rate) != 2 * m_format.sampleRate)
            continue;
        const auto channels = quint32(frame->ch_layout.nb_channels);
        const bool parametricStereo = m_format.channelsPerFrame == 1 && channels == 2;
        m_highQualityFormat = {.sampleRate = double(frame->sample_rate),
                               .format =
                                   parametricStereo ? AudioFormat::mpeg4AacHeV2 : AudioFormat::mpeg4AacHe,
                               .framesPerPacket = 2 * m_format.framesPerPacket,
                               .channelsPerFrame = channels};
    }
    return m_highQualityFormat || ++m_packets == packetsToDecode;
}

} // namespace orvel
