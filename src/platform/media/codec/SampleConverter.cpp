#include "platform/media/codec/SampleConverter.h"

#include "platform/media/codec/FfmpegHandles.h"

#include <algorithm>

namespace orvel {

struct SampleConverter::Handles
{
    Resampler resampler;
    // What it was made for.
    int sampleRate = 0;
    int format = AV_SAMPLE_FMT_NONE;
    int channels = 0;
};

SampleConverter::SampleConverter(int sampleRate, int channels)
    : m_sampleRate(sampleRate), m_channels(channels), m_handles(std::make_unique<Handles>())
{
}
SampleConverter::~SampleConverter() = default;

void SampleConverter::convert(const AVFrame &frame, Part part, std::vector<float> &samples)
{
    if (!isFor(frame)) {
        drain(samples);
        if (!makeFor(frame))
            return;
    }
    run(&frame, part, samples);
}

void SampleConverter::drain(std::vector<float> &samples)
{
    if (m_handles->resampler)
        run(nullptr, {}, samples);
    m_handles->resampler.reset(); // libswresample takes nothing more after that
}

bool SampleConverter::isFor(const AVFrame &frame) const
{
    return m_handles->resampler && m_handles->sampleRate == frame.sample_rate &&
           m_handles->format == frame.format && m_handles->channels == frame.ch_layout.nb_channels;
}

bool SampleConverter::makeFor(const AVFrame &frame)
{
    AVChannelLayout in = frame.ch_layout;
    if (in.order != AV_CHANNEL_ORDER_NATIVE)
        av_channel_layout_default(&in, frame.ch_layout.nb_channels);
    AVChannelLayout out;
    av_channel_layout_default(&out, m_channels);
    SwrContext *context = nullptr;
    const int made = swr_alloc_set_opts2(&context, &out, AV_SAMPLE_FMT_FLT, m_sampleRate, &in,
                                         AVSampleFormat(frame.format), frame.sample_rate, 0, nullptr);
    m_handles->resampler.reset(context);
    if (made < 0 || swr_init(context) < 0) {
        m_handles->resampler.reset();
        return false;
    }
    m_handles->sampleRate = frame.sample_rate;
    m_handles->format = frame.format;
    m_handles->channels = frame.ch_layout.nb_channels;
    return true;
}

void SampleConverter::run(const AVFrame *frame, Part part, std::vector<float> &samples)
{
    SwrContext *context = m_handles->resampler.get();
    const int room = swr_get_out_samples(context, part.count);
    if (room <= 0)
        return;
    const std::size_t before = samples.size();
    samples.resize(before + std::size_t(room) * std::size_t(m_channels));
    auto *out = reinterpret_cast<uint8_t *>(samples.data() + before);
    std::vector<const uint8_t *> planes;
    if (frame) {
        const auto format = AVSampleFormat(frame->format);
        const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
        const int channels = frame->ch_layout.nb_channels;
        const int bytes = av_get_bytes_per_sample(format) * (isPlanar ? 1 : channels);
        for (int plane = 0; plane < (isPlanar ? channels : 1); ++plane)
            planes.push_back(frame->extended_data[plane] + std::ptrdiff_t(part.first) * bytes);
    }
    const int got = swr_convert(context, &out, room, frame ? planes.data() : nullptr, part.count);
    samples.resize(before + std::size_t(std::max(got, 0)) * std::size_t(m_channels));
}

} // namespace orvel
