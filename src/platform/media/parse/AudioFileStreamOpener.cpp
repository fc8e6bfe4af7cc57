#include "platform/media/parse/AudioFileStreamOpener.h"

#include "platform/media/parse/AiffReader.h"
#include "platform/media/parse/CafReader.h"
#include "platform/media/parse/ContainerStream.h"
#include "platform/media/parse/FramedAudioFileStream.h"
#include "platform/media/parse/Mpeg4Reader.h"
#include "platform/media/parse/WaveReader.h"

#include <utility>

namespace orvel {

namespace {

using enum AudioFileType;

constexpr qsizetype markBytes = 8;

// Returns the type that a file's first bytes show; nullopt when they may be anything.
std::optional<AudioFileType> markedType(QByteArrayView bytes)
{
    if (bytes.startsWith("RIFF") || bytes.startsWith("RF64"))
        return kAudioFileWAVEType;
    if (bytes.startsWith("FORM"))
        return kAudioFileAIFFType;
    if (bytes.startsWith("caff"))
        return kAudioFileCAFType;
    if (bytes.size() >= markBytes && bytes.sliced(4).startsWith("ftyp"))
        return kAudioFileMPEG4Type;
    return std::nullopt;
}

std::unique_ptr<AudioFileStream> makeStream(AudioFileStreamClient &client, AudioFileType type)
{
    switch (type) {
    case kAudioFileWAVEType:
        return std::make_unique<ContainerStream>(client, std::make_unique<WaveReader>());
    case kAudioFileAIFFType:
    case kAudioFileAIFCType:
        return std::make_unique<ContainerStream>(client, std::make_unique<AiffReader>());
    case kAudioFileCAFType:
        return std::make_unique<ContainerStream>(client, std::make_unique<CafReader>());
    case kAudioFileM4AType:
    case kAudioFileMPEG4Type:
    case kAudioFile3GPType:
    case kAudioFile3GP2Type:
        return std::make_unique<ContainerStream>(client, std::make_unique<Mpeg4Reader>());
    default:
        return openFramedAudioFileStream(client, type);
    }
}

// Becomes the stream of another type when the first bytes show it.
class HintedAudioFileStream final : public AudioFileStream
{
public:
    HintedAudioFileStream(AudioFileStreamClient &client, std::unique_ptr<AudioFileStream> hinted)
        : m_client(client), m_stream(std::move(hinted))
    {
    }

    bool parseBytes(QByteArrayView bytes) override
    {
        if (m_isDecided)
            return m_stream->parseBytes(bytes);
        m_mark.append(bytes);
        return m_mark.size() < markBytes || decide();
    }
    void finish() override
    {
        if (!m_isDecided)
            decide();
        m_stream->finish();
    }
    void continueAt(qint64 fileOffset) override { m_stream->continueAt(fileOffset); }

    std::optional<AudioFileStreamSeek> seek(qint64 packet) const override { return m_stream->seek(packet); }
    std::optional<qint64> wantedOffset() const override { return m_stream->wantedOffset(); }
    std::optional<AudioStreamBasicDescription> dataFormat() const override { return m_stream->dataFormat(); }
    std::vector<AudioStreamBasicDescription> formatList() const override { return m_stream->formatList(); }
    std::optional<qint64> dataOffset() const override { return m_stream->dataOffset(); }
    std::optional<quint64> audioDataByteCount() const override { return m_stream->audioDataByteCount(); }
    std::optional<quint32> packetSizeUpperBound() const override { return m_stream->packetSizeUpperBound(); }
    std::optional<quint32> maximumPacketSize() const override { return m_stream->maximumPacketSize(); }
    QByteArray magicCookie() const override { return m_stream->magicCookie(); }
    std::optional<AudioTrim> trim() const override { return m_stream->trim(); }

private:
    bool decide()
    {
        m_isDecided = true;
        if (const auto type = markedType(m_mark))
            m_stream = makeStream(m_client, *type);
        return m_stream->parseBytes(std::exchange(m_mark, {}));
    }

    AudioFileStreamClient &m_client;
    std::unique_ptr<AudioFileStream> m_stream;
    bool m_isDecided = false;
    QByteArray m_mark; // what has come of it
};

} // namespace

std::unique_ptr<AudioFileStream> openAudioFileStream(AudioFileStreamClient &client, AudioFileType hint)
{
    auto hinted = makeStream(client, hint);
    return hinted ? std::make_unique<HintedAudioFileStream>(client, std::move(hinted)) : nullptr;
}

} // namespace orvel
