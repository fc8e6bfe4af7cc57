#include "platform/media/parse/FramedAudioFileStream.h"

#include "platform/media/parse/FrameScanner.h"
#include "platform/media/parse/PacketMean.h"
#include "platform/media/parse/PacketOutlet.h"
#include "platform/media/parse/XingHeader.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr qint64 maxBytesWithoutFrame = 256 * 1024;

class FramedAudioFileStream final : public AudioFileStream
{
public:
    explicit FramedAudioFileStream(AudioFileStreamClient &client) : m_outlet(*this, client) {}

    bool parseBytes(QByteArrayView bytes) override
    {
        static constexpr qsizetype slice = 64 * 1024; // bounds what is copied behind an unfinished frame
        while (!bytes.isEmpty()) {
            const QByteArrayView part = bytes.first(std::min(slice, bytes.size()));
            bytes = bytes.sliced(part.size());
            parsePart(part, false);
        }
        return m_scanner.firstHeader() || m_position - m_scanner.tagBytes() <= maxBytesWithoutFrame;
    }

    void finish() override
    {
        parsePart({}, true);
        m_outlet.finish();
    }

    std::optional<AudioFileStreamSeek> seek(qint64 packet) const override { return m_mean.seek(packet); }

    void continueAt(qint64 fileOffset) override
    {
        if (fileOffset == m_position)
            return;
        m_position = fileOffset;
        m_scanner.restart();
        m_unfinished.clear();
    }

    std::optional<AudioStreamBasicDescription> dataFormat() const override { return m_outlet.format(); }
    std::vector<AudioStreamBasicDescription> formatList() const override { return m_outlet.formatList(); }
    std::optional<qint64> dataOffset() const override { return m_dataOffset; }
    std::optional<quint64> audioDataByteCount() const override { return m_byteCount; }
    std::optional<quint32> maximumPacketSize() const override
    {
        // A frame of two channels has less than 2,048 bytes.
        const bool isBig = m_outlet.isOpen() && m_outlet.format()->channelsPerFrame > 2;
        return isBig ? std::optional(maxAdtsFrameBytes) : std::nullopt;
    }
    std::optional<AudioTrim> trim() const override { return m_trim; }

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
        if (!m_outlet.isOpen())
            open(bytes);
        handOn(bytes);
        if (m_unfinished.empty())
            m_unfinished.assign(bytes.begin() + done, bytes.end());
        else
            m_unfinished.erase(m_unfinished.begin(), m_unfinished.begin() + done);
    }

    // Opens the outlet with the first frame of sound.
    void open(QByteArrayView bytes)
    {
        if (m_frames.empty())
            return;
        const AudioFrameHeader &header = *m_scanner.firstHeader();
        if (!m_hasSeenFirstFrame) {
            m_hasSeenFirstFrame = true;
            const AudioStreamPacketDescription first = m_frames.front();
            const QByteArrayView frame = bytes.sliced(first.startOffset, first.dataByteSize);
            if (const auto xing = readXingHeader(frame, header)) {
                m_trim = xing->trim;
                if (xing->byteCount > first.dataByteSize)
                    m_byteCount = *xing->byteCount - first.dataByteSize;
                m_frames.erase(m_frames.begin());
            }
        }
        if (m_frames.empty())
            return;
        m_dataOffset = m_position - bytes.size() + m_frames.front().startOffset;
        m_outlet.open({.sampleRate = double(header.sampleRate),
                       .format = header.format,
                       .framesPerPacket = header.framesPerPacket,
                       .channelsPerFrame = std::max(header.channels, 1u)},
                      {});
    }

    void handOn(QByteArrayView bytes)
    {
        for (const AudioStreamPacketDescription &frame : m_frames)
            m_mean.add(1, frame.dataByteSize);
        m_outlet.take(bytes, m_frames);
    }

    PacketOutlet m_outlet;
    FrameScanner m_scanner;
    std::vector<char> m_unfinished; // what the scanner wants to see again: less than a frame and a header
    std::vector<AudioStreamPacketDescription> m_frames;
    qint64 m_position = 0; // in the file, of the next byte that is pushed
    bool m_hasSeenFirstFrame = false;
    std::optional<qint64> m_dataOffset;
    std::optional<quint64> m_byteCount;
    std::optional<AudioTrim> m_trim;
    PacketMean m_mean;
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
