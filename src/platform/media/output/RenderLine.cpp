#include "platform/media/output/RenderLine.h"

#include "platform/media/codec/FfmpegHandles.h"
#include "platform/media/device/AudioDeviceChoice.h"
#include "platform/media/output/AudioSession.h"

#include <algorithm>

namespace orvel {

RenderLine::RenderLine(const AudioStreamBasicDescription &format, std::unique_ptr<AudioDecoder> decoder,
                       const std::atomic<float> &volume, std::function<void()> wantsData,
                       const OutputQueueOptions &options)
    : m_format(format)
    , m_volume(volume)
    , m_wantsData(std::move(wantsData))
    , m_options(options)
    , m_decoder(std::move(decoder))
{
}

void RenderLine::setMagicCookie(const QByteArray &cookie)
{
    if (auto decoder = AudioDecoder::make(m_format, cookie))
        m_decoder = std::move(decoder);
}

void RenderLine::setMediaName(const QString &name)
{
    m_options.mediaName = name;
    if (m_device)
        m_device->setMediaName(name);
}

void RenderLine::followVolume()
{
    if (m_device)
        m_device->followVolume();
}

bool RenderLine::fill()
{
    while (writeOut()) {
        if (const AVFrame *frame = m_decoder->nextFrame())
            convert(*frame);
        else if (!m_item)
            return true;
        else if (!decodeNext())
            finishItem();
    }
    return false;
}

bool RenderLine::writeOut()
{
    if (m_samplesWritten < m_samples.size()) {
        const auto channels = std::size_t(m_device->channels());
        const auto frames = qint64((m_samples.size() - m_samplesWritten) / channels);
        const qint64 taken = m_device->write(m_samples.data() + m_samplesWritten, frames);
        m_samplesWritten += std::size_t(taken) * channels;
        if (taken < frames)
            return false;
    }
    m_samples.clear();
    m_samplesWritten = 0;
    return true;
}

bool RenderLine::decodeNext()
{
    if (m_nextPacket >= m_item->packets.size())
        return false;
    const AudioStreamPacketDescription &packet = m_item->packets[m_nextPacket++];
    m_decoder->decode(QByteArrayView(m_item->buffer->data).sliced(packet.startOffset, packet.dataByteSize));
    return true;
}

void RenderLine::convert(const AVFrame &frame)
{
    if (!m_device) {
        // A high-efficiency stream may begin with frames of its core alone.
        const int rate = std::max(frame.sample_rate, int(m_format.sampleRate));
        const int channels = std::max(frame.ch_layout.nb_channels, int(m_format.channelsPerFrame));
        m_device = openAudioDevice({.sampleRate = rate,
                                    .channels = std::min(channels, 2),
                                    .volume = &m_volume,
                                    .wantsData = m_wantsData,
                                    .ringSeconds = m_options.ringSeconds,
                                    .mediaName = m_options.mediaName,
                                    .standingSeconds = m_options.standingSeconds,
                                    .interrupted = [](bool begins) {
                                        AudioSession::interrupt(begins ? InterruptionState::Begin
                                                                       : InterruptionState::End);
                                    }});
        m_converter.emplace(m_device->sampleRate(), m_device->channels());
    }
    m_converter->convert(frame, m_trim.part(frame), m_samples);
}

void RenderLine::finishItem()
{
    if (m_item->buffer)
        m_marks.push_back({m_item->buffer, m_device ? m_device->written() : 0});
    else if (m_converter)
        m_converter->drain(m_samples);
    m_item.reset();
    m_nextPacket = 0;
}

void RenderLine::setPlaying(bool playing)
{
    m_isPlaying = playing;
    if (m_device)
        m_device->setPlaying(playing);
}

OutputBuffer *RenderLine::takeReturned()
{
    if (m_marks.empty())
        return nullptr;
    const bool isLast = m_marks.size() == 1 && !(m_item && m_item->buffer);
    const bool isTaken = m_options.bufferReturn == BufferReturn::WhenTaken && !isLast;
    if (!isTaken && m_device && m_marks.front().end > m_device->consumed())
        return nullptr;
    OutputBuffer *buffer = m_marks.front().buffer;
    m_marks.pop_front();
    return buffer;
}

bool RenderLine::isDry() const
{
    return !m_item && m_marks.empty() && m_samples.empty() && (!m_device || level() == 0);
}

std::optional<std::chrono::milliseconds> RenderLine::nextLook() const
{
    if (!m_device || !m_isPlaying || isDry())
        return std::nullopt;
    const qint64 toMark = m_marks.empty() ? level() : m_marks.front().end - m_device->consumed();
    const bool hasMore = m_item || !m_samples.empty();
    const qint64 toRefill = hasMore ? m_device->framesUntilRefill().value_or(toMark) : toMark;
    const qint64 milliseconds = std::min(toMark, toRefill) * 1000 / m_device->sampleRate() + 1;
    return std::chrono::milliseconds(std::clamp<qint64>(milliseconds, 10, 1000));
}

double RenderLine::playedSeconds() const
{
    return m_device ? double(m_device->consumed()) / m_device->sampleRate() : 0;
}

double RenderLine::secondsAhead() const
{
    const bool isRunning = m_device && m_isPlaying && !m_device->isStanding();
    return isRunning ? double(level()) / m_device->sampleRate() : 0;
}

std::vector<OutputBuffer *> RenderLine::reset()
{
    std::vector<OutputBuffer *> buffers;
    for (const Mark &mark : m_marks)
        buffers.push_back(mark.buffer);
    if (m_item && m_item->buffer)
        buffers.push_back(m_item->buffer);
    m_marks.clear();
    m_item.reset();
    m_nextPacket = 0;
    m_samples.clear();
    m_samplesWritten = 0;
    if (m_device) {
        m_device->setPlaying(false);
        m_endedDevice = std::move(m_device);
    }
    m_converter.reset();
    m_trim.restart();
    m_isPlaying = false;
    m_decoder->reset();
    return buffers;
}

} // namespace orvel
