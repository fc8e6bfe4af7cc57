#pragma once

#include "platform/media/codec/AudioDecoder.h"
#include "platform/media/codec/SampleConverter.h"
#include "platform/media/device/AudioDevice.h"
#include "platform/media/output/FrameTrim.h"
#include "platform/media/output/OutputQueue.h"

#include <chrono>
#include <deque>
#include <optional>
#include <vector>

namespace orvel {

// What a line is given to play: a buffer's packets or, without a buffer, what the converter holds back.
struct RenderItem
{
    OutputBuffer *buffer = nullptr;
    std::vector<AudioStreamPacketDescription> packets;
};

// The way from a queue's buffers to its device: decodes, converts, writes, and knows which buffers have been
// played. Opens the device with the first decoded frame, whose rate and channels are the true ones. One
// thread.
class RenderLine
{
public:
    RenderLine(const AudioStreamBasicDescription &format, std::unique_ptr<AudioDecoder> decoder,
               const std::atomic<float> &volume, std::function<void()> wantsData,
               const OutputQueueOptions &options);

    void setMagicCookie(const QByteArray &cookie);
    void setTrim(const std::optional<AudioTrim> &trim) { m_trim.set(trim); }
    void setMediaName(const QString &name);
    void followVolume();

    // Decodes ahead as far as the device takes it. Returns true when everything given is used up and the
    // device takes more.
    bool fill();
    // Only after fill() has returned true.
    void give(RenderItem item) { m_item = std::move(item); }
    void setPlaying(bool playing);

    // Returns the next buffer that its user may have back; nullptr when there is none.
    OutputBuffer *takeReturned();
    // Whether all that was given has been played.
    bool isDry() const;
    // Returns the time after which a buffer may have been played or the device takes more; nullopt when only
    // new data or orders make a difference.
    std::optional<std::chrono::milliseconds> nextLook() const;
    // Seconds of sound since the last reset.
    double playedSeconds() const;
    // Seconds that the device goes on to play if nothing more is given.
    double secondsAhead() const;

    // Ends the sound at once and forgets what was given. Returns its buffers, in their order.
    std::vector<OutputBuffer *> reset();
    // Closes the device of the sound that has ended, which may take a while.
    void closeEndedDevice() { m_endedDevice.reset(); }

private:
    struct Mark
    {
        OutputBuffer *buffer;
        qint64 end; // of its sound, as the device counts
    };

    bool writeOut();
    bool decodeNext();
    void convert(const AVFrame &frame);
    void finishItem();
    qint64 level() const { return m_device->written() - m_device->consumed(); }

    const AudioStreamBasicDescription m_format;
    const std::atomic<float> &m_volume;
    const std::function<void()> m_wantsData;
    OutputQueueOptions m_options;
    std::unique_ptr<AudioDecoder> m_decoder;
    FrameTrim m_trim;
    std::unique_ptr<AudioDevice> m_device;
    std::unique_ptr<AudioDevice> m_endedDevice;
    std::optional<SampleConverter> m_converter;
    bool m_isPlaying = false;

    std::optional<RenderItem> m_item;
    std::size_t m_nextPacket = 0;
    std::vector<float> m_samples; // decoded, not yet written
    std::size_t m_samplesWritten = 0;
    std::deque<Mark> m_marks;
};

} // namespace orvel
