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
    : programme_(programme), synth_(programme.music, firstSong)
{
}

Encoder::~Encoder()
{
    // An encoder that is not drained warns of the frames it still holds.
    if (context_ && avcodec_is_open(context_.get()) && avcodec_send_frame(context_.get(), nullptr) >= 0) {
        while (avcodec_receive_packet(context_.get(), packet_.get()) >= 0)
            av_packet_unref(packet_.get());
    }
}

bool Encoder::openCodec()
{
    const bool mp3 = programme_.codec == Codec::Mp3;
    const AVCodec *codec =
        mp3 ? avcodec_find_encoder_by_name("libmp3lame") : avcodec_find_encoder_by_name("aac");
    if (!codec)
        return false;
    context_.reset(avcodec_alloc_context3(codec));
    frame_.reset(av_frame_alloc());
    packet_.reset(av_packet_alloc());
    context_->bit_rate = programme_.kbps * 1000;
    context_->sample_rate = Synth::sampleRate;
    context_->sample_fmt = AV_SAMPLE_FMT_FLTP;
    av_channel_layout_default(&context_->ch_layout, 2);
    context_->flags |= AV_CODEC_FLAG_BITEXACT;
    if (mp3) {
        context_->compression_level = 9; // fast: a cold start fills the whole burst at once
        // Without the reservoir no frame borrows bits from earlier ones: a listener may join at any.
        av_opt_set_int(context_->priv_data, "reservoir", 0, 0);
    } else {
        av_opt_set(context_->priv_data, "aac_coder", "fast", 0);
    }
    if (avcodec_open2(context_.get(), codec, nullptr) < 0)
        return false;
    frame_->nb_samples = context_->frame_size;
    frame_->format = context_->sample_fmt;
    frame_->sample_rate = context_->sample_rate;
    return av_channel_layout_copy(&frame_->ch_layout, &context_->ch_layout) >= 0 &&
           av_frame_get_buffer(frame_.get(), 0) >= 0;
}

Frame Encoder::next()
{
    while (avcodec_receive_packet(context_.get(), packet_.get()) < 0) {
        if (!feed())
            return {};
    }
    Frame frame;
    frame.bytes = packetBytes();
    frame.title = programme_.titles.value(song_ % qMax(1, int(programme_.titles.size()))).toUtf8();
    frame.seconds = double(context_->frame_size) / Synth::sampleRate;
    av_packet_unref(packet_.get());
    return frame;
}

bool Encoder::feed()
{
    if (av_frame_make_writable(frame_.get()) < 0)
        return false;
    song_ = synth_.song();
    const auto size = std::size_t(frame_->nb_samples);
    synth_.render(std::span(reinterpret_cast<float *>(frame_->data[0]), size),
                  std::span(reinterpret_cast<float *>(frame_->data[1]), size));
    frame_->pts = frame_->pts == AV_NOPTS_VALUE ? 0 : frame_->pts + frame_->nb_samples;
    return avcodec_send_frame(context_.get(), frame_.get()) >= 0;
}

QByteArray Encoder::packetBytes() const
{
    const QByteArray payload(reinterpret_cast<const char *>(packet_->data), packet_->size);
    return programme_.codec == Codec::Mp3 ? payload : adtsHeader(packet_->size) + payload;
}

} // namespace orvel::demo
