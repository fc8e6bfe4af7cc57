#pragma once

#include "platform/media/parse/AudioFileStreamOpener.h"

#include <QByteArrayList>

namespace orvel::test {

// What a stream tells of a file.
class ParsedFile final : public AudioFileStreamClient
{
public:
    explicit ParsedFile(AudioFileType hint = AudioFileType::none) : stream(openAudioFileStream(*this, hint))
    {
    }
    // Of a whole file.
    ParsedFile(QByteArrayView file, qsizetype chunk, AudioFileType hint = AudioFileType::none)
        : ParsedFile(hint)
    {
        push(file, chunk).stream->finish();
    }

    // Pushes bytes in chunks of one size.
    ParsedFile &push(QByteArrayView bytes, qsizetype chunk)
    {
        for (; !bytes.isEmpty() && isUnderstood; bytes = bytes.sliced(std::min(chunk, bytes.size())))
            isUnderstood = stream->parseBytes(bytes.first(std::min(chunk, bytes.size())));
        return *this;
    }
    // Pushes a file's bytes from this offset on.
    ParsedFile &jump(QByteArrayView file, qint64 offset, qsizetype chunk = 1000)
    {
        packets.clear();
        stream->continueAt(offset);
        return push(file.sliced(offset), chunk);
    }

    // The packets, and behind them the decoder's frames of all, interleaved, trimmed. Ends the stream.
    std::vector<float> decoded();

    std::vector<AudioFileStreamProperty> properties;
    QByteArrayList packets;
    bool isUnderstood = true;
    std::unique_ptr<AudioFileStream> stream;

private:
    void handlePropertyChange(AudioFileStream &, AudioFileStreamProperty property) override
    {
        properties.push_back(property);
    }
    void handlePacket(AudioFileStream &parser, quint32 count, QByteArrayView bytes,
                      std::span<const AudioStreamPacketDescription> descriptions) override;
};

} // namespace orvel::test
