#include "platform/media/parse/HeAacProbe.h"

#include "platform/media/codec/FfmpegHandles.h"

namespace orvel {

namespace {
constexpr int framesToDecode = 6; // about a quarter of a second
} // namespace

bool HeAacProbe::isNeededFor(const AudioFrameHeader &header)
{
    return header.format == AudioFormat::mpeg4Aac && header.sampleRate <= 24000;
}

HeAacProbe::HeAacProbe(const AudioFrameHeader &header)
    : m_header(header)
    , m_decoder(AudioDecoder::make({.sampleRate = double(header.sampleRate),
                                    .format = AudioFormat::mpeg4Aac,
                                    .channelsPerFrame = std::max(header.channels, 1u)}))
{
}

bool HeAacProbe::feed(QByteArrayView packet)
{
    if (!m_decoder)
        return true;
    m_decoder->decode(packet);
    while (const AVFrame *frame = m_decoder->nextFrame()) {
        if (quint32(frame->sample_rate) != 2 * m_header.sampleRate)
            continue;
        const auto channels = quint32(frame->ch_layout.nb_channels);
        const bool parametricStereo = m_header.channels == 1 && channels == 2;
        m_format = {.sampleRate = double(frame->sample_rate),
                    .format = parametricStereo ? AudioFormat::mpeg4AacHeV2 : AudioFormat::mpeg4AacHe,
                    .framesPerPacket = 2 * m_header.framesPerPacket,
                    .channelsPerFrame = channels};
    }
    return m_format || ++m_frames == framesToDecode;
}

} // namespace orvel
