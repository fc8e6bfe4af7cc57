#include "demo/Encoder.h"

#include <span>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

namespace orvel::demo {

namespace {

constexpr int adtsHeaderSize = 7;

// The header of an AAC-LC frame at 44.1 kHz in stereo, without checksum.
QByteArray adtsHeader(int payload)
{
    const int length = payload + adtsHeaderSize;
    QByteArray header(adtsHeaderSize, Qt::Uninitialized);
    header[0] = char(0xFF);
    header[1] = char(0xF1);
    header[2] = char(0x50);
    header[3] = char(0x80 | (length >> 11));
    header[4] = char((length >> 3) & 0xFF);
    header[5] = char(((length & 7) << 5) | 0x1F);
    header[6] = char(0xFC);
    return header;
}

} // namespace

void Encoder::FreeContext::operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
void Encoder::FreeFrame::operator()(AVFrame *frame) const { av_frame_free(&frame); }
void Encoder::FreePacket::operator()(AVPacket *packet) const { av_packet_free(&packet); }

std::unique_ptr<Encoder> Encoder::open(const Programme &programme, int firstSong)
{
    if (av_log_get_level() > AV_LOG_ERROR)
        av_log_set_level(AV_LOG_ERROR); // the encoders tell their statistics otherwise
    std::unique_ptr<Encoder> encoder(new Encoder(programme, firstSong));
    return encoder->openCodec() ? std::move(encoder) : nullptr;
}

Encoder::Encoder(const Programme &programme, int firstSong)
    : m_programme(programme), m_synth(programme.music, firstSong)
{
}

Encoder::~Encoder()
{
    // An encoder that is not drained warns of the frames it still holds.
    if (m_context && avcodec_is_open(m_context.get()) && avcodec_send_frame(m_context.get(), nullptr) >= 0) {
        while (avcodec_receive_packet(m_context.get(), m_packet.get()) >= 0)
            av_packet_unref(m_packet.get());
    }
}

bool Encoder::openCodec()
{
    const bool mp3 = m_programme.codec == Codec::Mp3;
    const AVCodec *codec =
        mp3 ? avcodec_find_encoder_by_name("libmp3lame") : avcodec_find_encoder_by_name("aac");
    if (!codec)
        return false;
    m_context.reset(avcodec_alloc_context3(codec));
    m_frame.reset(av_frame_alloc());
    m_packet.reset(av_packet_alloc());
    m_context->bit_rate = m_programme.kbps * 1000;
    m_context->sample_rate = Synth::sampleRate;
    m_context->sample_fmt = AV_SAMPLE_FMT_FLTP;
    av_channel_layout_default(&m_context->ch_layout, 2);
    m_context->flags |= AV_CODEC_FLAG_BITEXACT;
    if (mp3) {
        m_context->compression_level = 9; // fast: a cold start fills the whole burst at once
        // Without the reservoir no frame borrows bits from earlier ones: a listener may join at any.
        av_opt_set_int(m_context->priv_data, "reservoir", 0, 0);
    } else {
        av_opt_set(m_context->priv_data, "aac_coder", "fast", 0);
    }
    if (avcodec_open2(m_context.get(), codec, nullptr) < 0)
        return false;
    m_frame->nb_samples = m_context->frame_size;
    m_frame->format = m_context->sample_fmt;
    m_frame->sample_rate = m_context->sample_rate;
    return av_channel_layout_copy(&m_frame->ch_layout, &m_context->ch_layout) >= 0 &&
           av_frame_get_buffer(m_frame.get(), 0) >= 0;
}

Frame Encoder::next()
{
    while (avcodec_receive_packet(m_context.get(), m_packet.get()) < 0) {
        if (!feed())
            return {};
    }
    Frame frame;
    frame.bytes = packetBytes();
    frame.title = m_programme.titles.value(m_song % qMax(1, int(m_programme.titles.size()))).toUtf8();
    frame.seconds = double(m_context->frame_size) / Synth::sampleRate;
    av_packet_unref(m_packet.get());
    return frame;
}

bool Encoder::feed()
{
    if (av_frame_make_writable(m_frame.get()) < 0)
        return false;
    m_song = m_synth.song();
    const auto size = std::size_t(m_frame->nb_samples);
    m_synth.render(std::span(reinterpret_cast<float *>(m_frame->data[0]), size),
                   std::span(reinterpret_cast<float *>(m_frame->data[1]), size));
    m_frame->pts = m_frame->pts == AV_NOPTS_VALUE ? 0 : m_frame->pts + m_frame->nb_samples;
    return avcodec_send_frame(m_context.get(), m_frame.get()) >= 0;
}

QByteArray Encoder::packetBytes() const
{
    const QByteArray payload(reinterpret_cast<const char *>(m_packet->data), m_packet->size);
    return m_programme.codec == Codec::Mp3 ? payload : adtsHeader(m_packet->size) + payload;
}

} // namespace orvel::demo
