#include "platform/media/codec/AudioDecoder.h"

#include "platform/media/codec/FfmpegHandles.h"

#include <QtEndian>
#include <cmath>
#include <cstring>

namespace orvel {

namespace {

AVCodecID codecForPcm(const AudioStreamBasicDescription &format)
{
    static constexpr struct
    {
        SampleType type;
        quint32 bits;
        AVCodecID littleEndian;
        AVCodecID bigEndian;
    } codecs[] = {
        {SampleType::UnsignedInteger, 8, AV_CODEC_ID_PCM_U8, AV_CODEC_ID_PCM_U8},
        {SampleType::SignedInteger, 8, AV_CODEC_ID_PCM_S8, AV_CODEC_ID_PCM_S8},
        {SampleType::SignedInteger, 16, AV_CODEC_ID_PCM_S16LE, AV_CODEC_ID_PCM_S16BE},
        {SampleType::SignedInteger, 24, AV_CODEC_ID_PCM_S24LE, AV_CODEC_ID_PCM_S24BE},
        {SampleType::SignedInteger, 32, AV_CODEC_ID_PCM_S32LE, AV_CODEC_ID_PCM_S32BE},
        {SampleType::FloatingPoint, 32, AV_CODEC_ID_PCM_F32LE, AV_CODEC_ID_PCM_F32BE},
        {SampleType::FloatingPoint, 64, AV_CODEC_ID_PCM_F64LE, AV_CODEC_ID_PCM_F64BE},
    };
    for (const auto &codec : codecs)
        if (codec.type == format.sampleType && codec.bits == format.bitsPerChannel)
            return format.byteOrder == std::endian::little ? codec.littleEndian : codec.bigEndian;
    return AV_CODEC_ID_NONE;
}

AVCodecID codecFor(const AudioStreamBasicDescription &format)
{
    switch (format.format) {
    case AudioFormat::mpegLayer3:
        return AV_CODEC_ID_MP3;
    case AudioFormat::mpeg4Aac:
    case AudioFormat::mpeg4AacHe:
    case AudioFormat::mpeg4AacHeV2:
        return AV_CODEC_ID_AAC;
    case AudioFormat::linearPcm:
        return codecForPcm(format);
    case AudioFormat::appleLossless:
        return AV_CODEC_ID_ALAC;
    case AudioFormat::aLaw:
        return AV_CODEC_ID_PCM_ALAW;
    case AudioFormat::muLaw:
        return AV_CODEC_ID_PCM_MULAW;
    case AudioFormat::none:
        break;
    }
    return AV_CODEC_ID_NONE;
}

// The cookie that ALAC encoders usually write.
QByteArray usualAlacCookie(const AudioStreamBasicDescription &format)
{
    QByteArray cookie;
    const auto append = [&cookie](quint32 number) {
        char bytes[sizeof number];
        qToBigEndian(number, bytes);
        cookie.append(bytes, sizeof number);
    };
    append(format.framesPerPacket);
    cookie += QByteArray("\x00\x10\x28\x0A\x0E", 5); // version, bits, coding
    cookie += char(format.channelsPerFrame);
    cookie += QByteArray("\x00\xFF", 2); // longest run
    append(0);                           // biggest packet
    append(0);                           // bit rate
    append(quint32(format.sampleRate));
    return cookie;
}

// libavcodec wants a cookie for ALAC from the beginning, in the box in which MPEG-4 files keep it.
QByteArray extradataFor(const AudioStreamBasicDescription &format, const QByteArray &cookie)
{
    if (format.format != AudioFormat::appleLossless)
        return cookie;
    const QByteArray boxStart("\0\0\0\x24"
                              "alac\0\0\0\0",
                              12);
    return boxStart + (cookie.isEmpty() ? usualAlacCookie(format) : cookie);
}

bool makesSense(const AudioStreamBasicDescription &format)
{
    return std::isfinite(format.sampleRate) && format.sampleRate >= 1000 && format.sampleRate <= 384000 &&
           format.channelsPerFrame >= 1 && format.channelsPerFrame <= 8;
}

} // namespace

struct AudioDecoder::Handles
{
    CodecContext codec;
    Packet packet{av_packet_alloc()};
    Frame frame{av_frame_alloc()};
};

AudioDecoder::AudioDecoder(std::unique_ptr<Handles> handles) : m_handles(std::move(handles)) {}
AudioDecoder::~AudioDecoder() = default;

std::unique_ptr<AudioDecoder> AudioDecoder::make(const AudioStreamBasicDescription &format,
                                                 const QByteArray &cookie)
{
    static const bool quiet = [] {
        av_log_set_level(AV_LOG_QUIET); // broken packets are everyday life on a live stream
        return true;
    }();
    Q_UNUSED(quiet);

    const AVCodec *codec = makesSense(format) ? avcodec_find_decoder(codecFor(format)) : nullptr;
    if (!codec)
        return nullptr;
    auto handles = std::make_unique<Handles>();
    handles->codec.reset(avcodec_alloc_context3(codec));
    AVCodecContext *context = handles->codec.get();
    if (!context || !handles->packet || !handles->frame)
        return nullptr;
    context->sample_rate = int(format.sampleRate);
    av_channel_layout_default(&context->ch_layout, int(format.channelsPerFrame));
    context->pkt_timebase = {1, context->sample_rate};
    if (const QByteArray extradata = extradataFor(format, cookie); !extradata.isEmpty()) {
        const auto size = std::size_t(extradata.size());
        context->extradata = static_cast<uint8_t *>(av_mallocz(size + AV_INPUT_BUFFER_PADDING_SIZE));
        if (!context->extradata)
            return nullptr;
        context->extradata_size = int(size);
        std::memcpy(context->extradata, extradata.constData(), size);
    }
    if (avcodec_open2(context, codec, nullptr) < 0)
        return nullptr;
    return std::unique_ptr<AudioDecoder>(new AudioDecoder(std::move(handles)));
}

void AudioDecoder::decode(QByteArrayView bytes)
{
    AVPacket *packet = m_handles->packet.get();
    // The packet owns nothing, so libavcodec copies it into a padded one.
    packet->data = const_cast<uint8_t *>(reinterpret_cast<const uint8_t *>(bytes.data()));
    packet->size = int(bytes.size());
    if (packet->size > 0)
        avcodec_send_packet(m_handles->codec.get(), packet);
    packet->data = nullptr;
    packet->size = 0;
}

void AudioDecoder::reset() { avcodec_flush_buffers(m_handles->codec.get()); }

const AVFrame *AudioDecoder::nextFrame()
{
    while (true) {
        const int result = avcodec_receive_frame(m_handles->codec.get(), m_handles->frame.get());
        const AVFrame *frame = m_handles->frame.get();
        if (result == AVERROR_INVALIDDATA)
            continue; // the packet's own failure; what comes next is whatever it left
        if (result < 0)
            return nullptr;
        if (frame->nb_samples > 0 && frame->sample_rate > 0 && frame->ch_layout.nb_channels > 0)
            return frame;
    }
}

} // namespace orvel
