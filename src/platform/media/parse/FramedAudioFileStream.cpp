#include "platform/media/parse/FramedAudioFileStream.h"

#include "platform/media/parse/FrameScanner.h"
#include "platform/media/parse/HeAacProbe.h"

#include <algorithm>
#include <utility>

namespace orvel {

namespace {

class FramedAudioFileStream final : public AudioFileStream
{
public:
    explicit FramedAudioFileStream(AudioFileStreamClient &client) : m_client(client) {}

    bool parseBytes(QByteArrayView bytes) override
    {
        static constexpr qsizetype slice = 64 * 1024; // bounds what is copied behind an unfinished frame
        while (!bytes.isEmpty()) {
            const QByteArrayView part = bytes.first(std::min(slice, bytes.size()));
            bytes = bytes.sliced(part.size());
            parsePart(part, false);
        }
        return true;
    }

    void finish() override { parsePart({}, true); }

    std::optional<AudioFileStreamSeek> seek(qint64 packet) const override
    {
        if (m_packets == 0)
            return std::nullopt;
        const double mean = double(m_packetBytes) / double(m_packets);
        return AudioFileStreamSeek{.byteOffset = qint64(double(packet) * mean)};
    }

    void continueAt(qint64 fileOffset) override
    {
        if (fileOffset == m_position)
            return;
        m_position = fileOffset;
        m_scanner.restart();
        m_unfinished.clear();
    }

    std::optional<AudioStreamBasicDescription> dataFormat() const override
    {
        const auto &header = m_scanner.firstHeader();
        if (!header)
            return std::nullopt;
        return AudioStreamBasicDescription{.sampleRate = double(header->sampleRate),
                                           .format = header->format,
                                           .framesPerPacket = header->framesPerPacket,
                                           .channelsPerFrame = std::max(header->channels, 1u)};
    }

    std::vector<AudioStreamBasicDescription> formatList() const override
    {
        if (!m_highQualityFormat)
            return {};
        return {*m_highQualityFormat, *dataFormat()};
    }

    std::optional<qint64> dataOffset() const override { return m_dataOffset; }

private:
    void parsePart(QByteArrayView part, bool isEnd)
    {
        m_position += part.size();
        QByteArrayView bytes = part;
        if (!m_unfinished.empty()) {
            m_unfinished.insert(m_unfinished.end(), part.begin(), part.end());
            bytes = QByteArrayView(m_unfinished.data(), qsizetype(m_unfinished.size()));
        }
        m_frames.clear();
        const qsizetype done = m_scanner.scan(bytes, m_frames, isEnd);
        if (!m_dataOffset && !m_frames.empty())
            m_dataOffset = m_position - bytes.size() + m_frames.front().startOffset;
        if (m_dataOffset)
            handOn(bytes, isEnd);
        if (m_unfinished.empty())
            m_unfinished.assign(bytes.begin() + done, bytes.end());
        else
            m_unfinished.erase(m_unfinished.begin(), m_unfinished.begin() + done);
    }

    void handOn(QByteArrayView bytes, bool isEnd)
    {
        if (!m_isReady) {
            if (!isFormatKnown(bytes) && !isEnd) {
                hold(bytes);
                return;
            }
            tellProperties();
            deliver(std::exchange(m_heldBytes, {}), std::exchange(m_heldFrames, {}));
        }
        deliver(bytes, m_frames);
    }

    void tellProperties()
    {
        m_isReady = true;
        m_client.handlePropertyChange(*this, AudioFileStreamProperty::DataFormat);
        if (m_highQualityFormat)
            m_client.handlePropertyChange(*this, AudioFileStreamProperty::FormatList);
        m_client.handlePropertyChange(*this, AudioFileStreamProperty::DataOffset);
        m_client.handlePropertyChange(*this, AudioFileStreamProperty::ReadyToProducePackets);
    }

    void deliver(QByteArrayView bytes, const std::vector<AudioStreamPacketDescription> &frames)
    {
        if (frames.empty())
            return;
        m_packets += qint64(frames.size());
        for (const AudioStreamPacketDescription &frame : frames)
            m_packetBytes += frame.dataByteSize;
        m_client.handlePacket(*this, quint32(frames.size()), bytes, frames);
    }

    // Decodes the new frames until they show whether the stream is HE-AAC.
    bool isFormatKnown(QByteArrayView bytes)
    {
        const AudioFrameHeader &header = *m_scanner.firstHeader();
        if (!HeAacProbe::isNeededFor(header))
            return true;
        if (!m_probe)
            m_probe = std::make_unique<HeAacProbe>(header);
        for (const AudioStreamPacketDescription &frame : m_frames) {
            if (m_probe->feed(bytes.sliced(frame.startOffset, frame.dataByteSize))) {
                m_highQualityFormat = m_probe->highQualityFormat();
                m_probe.reset();
                return true;
            }
        }
        return false;
    }

    void hold(QByteArrayView bytes)
    {
        for (AudioStreamPacketDescription frame : m_frames) {
            const QByteArrayView packet = bytes.sliced(frame.startOffset, frame.dataByteSize);
            frame.startOffset = m_heldBytes.size();
            m_heldFrames.push_back(frame);
            m_heldBytes.append(packet);
        }
    }

    AudioFileStreamClient &m_client;
    FrameScanner m_scanner;
    std::vector<char> m_unfinished; // what the scanner wants to see again: less than a frame and a header
    std::vector<AudioStreamPacketDescription> m_frames;
    qint64 m_position = 0; // in the file, of the next byte that is pushed
    std::optional<qint64> m_dataOffset;
    bool m_isReady = false;
    std::unique_ptr<HeAacProbe> m_probe;
    std::optional<AudioStreamBasicDescription> m_highQualityFormat;
    // Frames found before the probe has answered.
    QByteArray m_heldBytes;
    std::vector<AudioStreamPacketDescription> m_heldFrames;
    // Handed on so far.
    qint64 m_packets = 0;
    qint64 m_packetBytes = 0;
};

} // namespace

std::unique_ptr<AudioFileStream> openFramedAudioFileStream(AudioFileStreamClient &client, AudioFileType hint)
{
    switch (hint) {
    case AudioFileType::none:
    case AudioFileType::kAudioFileMP3Type:
    case AudioFileType::kAudioFileAAC_ADTSType:
        return std::make_unique<FramedAudioFileStream>(client);
    default:
        return nullptr;
    }
}

} // namespace orvel
