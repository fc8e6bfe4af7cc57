#include "support/EncodedTone.h"

#include "platform/media/codec/FfmpegHandles.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <random>

namespace orvel::test {

namespace {

QByteArray adtsHeader(const ToneRequest &request, qsizetype payload)
{
    static constexpr std::array rates = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                         22050, 16000, 12000, 11025, 8000,  7350};
    const auto rate = std::find(rates.begin(), rates.end(), request.sampleRate) - rates.begin();
    const qsizetype size = payload + 7;
    QByteArray header("\xFF\xF1", 2);
    header += char(1 << 6 | rate << 2 | request.channels >> 2);
    header += char((request.channels & 3) << 6 | size >> 11);
    header += char(size >> 3);
    header += char(size << 5 | 0x1F);
    header += '\xFC';
    return header;
}

void append(EncodedTone &tone, QByteArrayView packet)
{
    tone.packets.push_back({.startOffset = tone.bytes.size(), .dataByteSize = quint32(packet.size())});
    tone.bytes += packet;
}

void fill(AVFrame &frame, qint64 start, int rate)
{
    static std::minstd_rand random(1);
    for (int i = 0; i < frame.nb_samples; ++i) {
        const double t = double(start + i) / rate;
        const double noise = double(random()) / double(std::minstd_rand::max()) - 0.5;
        for (int c = 0; c < frame.ch_layout.nb_channels; ++c)
            reinterpret_cast<float *>(frame.extended_data[c])[i] =
                float(0.4 * std::sin(2 * M_PI * t * (220 + 110 * c + 40 * t)) + 0.1 * noise);
    }
}

} // namespace

EncodedTone encodeTone(const ToneRequest &request)
{
    av_log_set_level(AV_LOG_QUIET); // the AAC encoder tells its mean quality
    const bool mp3 = request.format == AudioFormat::mpegLayer3;
    const AVCodec *codec = avcodec_find_encoder(mp3 ? AV_CODEC_ID_MP3 : AV_CODEC_ID_AAC);
    const CodecContext context(avcodec_alloc_context3(codec));
    context->sample_rate = request.sampleRate;
    context->sample_fmt = AV_SAMPLE_FMT_FLTP;
    context->bit_rate = request.bitrate;
    av_channel_layout_default(&context->ch_layout, request.channels);
    if (avcodec_open2(context.get(), codec, nullptr) < 0)
        qFatal("No encoder for the test's tone");

    EncodedTone tone{.format = {.sampleRate = double(request.sampleRate),
                                .format = request.format,
                                .framesPerPacket = quint32(context->frame_size),
                                .channelsPerFrame = quint32(request.channels)}};
    const Packet packet(av_packet_alloc());
    const auto collect = [&] {
        while (avcodec_receive_packet(context.get(), packet.get()) == 0) {
            const QByteArrayView bytes(packet->data, packet->size);
            append(tone, mp3 ? bytes.toByteArray() : adtsHeader(request, bytes.size()) + bytes.toByteArray());
            av_packet_unref(packet.get());
        }
    };
    const auto total = qint64(request.seconds * request.sampleRate);
    for (qint64 start = 0; start < total; start += context->frame_size) {
        const Frame frame(av_frame_alloc());
        frame->nb_samples = context->frame_size;
        frame->format = AV_SAMPLE_FMT_FLTP;
        frame->sample_rate = request.sampleRate;
        frame->pts = start;
        av_channel_layout_default(&frame->ch_layout, request.channels);
        av_frame_get_buffer(frame.get(), 0);
        fill(*frame, start, request.sampleRate);
        avcodec_send_frame(context.get(), frame.get());
        collect();
    }
    avcodec_send_frame(context.get(), nullptr);
    collect();
    return tone;
}

EncodedTone withBandReplication(const EncodedTone &core)
{
    EncodedTone result{.format = core.format};
    const ToneRequest request{.format = core.format.format,
                              .sampleRate = int(core.format.sampleRate),
                              .channels = int(core.format.channelsPerFrame)};
    for (const AudioStreamPacketDescription &packet : core.packets) {
        const QByteArrayView frame =
            QByteArrayView(core.bytes).sliced(packet.startOffset, packet.dataByteSize);
        // A raw block ends with the three set bits of the end element and zero bits up to the byte's end.
        QByteArray block = frame.sliced(7).toByteArray();
        while (block.endsWith('\0'))
            block.chop(1);
        std::vector<bool> bits;
        for (const char byte : block)
            for (int bit = 7; bit >= 0; --bit)
                bits.push_back(byte >> bit & 1);
        bits.resize(bits.size() - std::size_t(std::countr_zero(quint8(block.back()))) - 3);
        const auto put = [&bits](quint32 value, int width) {
            while (width-- > 0)
                bits.push_back(value >> width & 1);
        };
        constexpr quint32 payloadBytes = 14;
        put(6, 3); // fill element
        put(payloadBytes, 4);
        put(0xD, 4); // band replication data
        put(1, 1);   // with its header:
        put(0, 1);   // amplitude resolution,
        put(5, 4);   // start and stop frequency
        put(9, 4);
        put(0, 3 + 2 + 1 + 1);
        for (quint32 used = 4 + 1 + 1 + 4 + 4 + 7; used < 8 * payloadBytes; ++used)
            put(0, 1);
        put(7, 3); // end element
        QByteArray packed((qsizetype(bits.size()) + 7) / 8, '\0');
        for (std::size_t i = 0; i < bits.size(); ++i)
            if (bits[i])
                packed[qsizetype(i / 8)] = char(packed[qsizetype(i / 8)] | 0x80 >> i % 8);
        append(result, adtsHeader(request, packed.size()) + packed);
    }
    return result;
}

std::vector<float> decoded(const EncodedTone &tone)
{
    const bool mp3 = tone.format.format == AudioFormat::mpegLayer3;
    const AVCodec *codec = avcodec_find_decoder(mp3 ? AV_CODEC_ID_MP3 : AV_CODEC_ID_AAC);
    const CodecContext context(avcodec_alloc_context3(codec));
    avcodec_open2(context.get(), codec, nullptr);
    const Packet packet(av_packet_alloc());
    const Frame frame(av_frame_alloc());
    std::vector<float> samples;
    for (const AudioStreamPacketDescription &description : tone.packets) {
        av_new_packet(packet.get(), int(description.dataByteSize));
        std::copy_n(tone.bytes.constData() + description.startOffset, description.dataByteSize, packet->data);
        avcodec_send_packet(context.get(), packet.get());
        av_packet_unref(packet.get());
        while (avcodec_receive_frame(context.get(), frame.get()) == 0)
            for (int i = 0; i < frame->nb_samples; ++i)
                for (int c = 0; c < frame->ch_layout.nb_channels; ++c)
                    samples.push_back(reinterpret_cast<const float *>(frame->extended_data[c])[i]);
    }
    return samples;
}

} // namespace orvel::test
