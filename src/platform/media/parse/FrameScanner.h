#pragma once

#include "platform/media/parse/AudioFrameHeader.h"

#include <optional>
#include <vector>

namespace orvel {

// Finds the frames of one MP3 or ADTS stream, the same ones whatever the chunks in which its bytes come. In
// step it goes from header to header. Out of step it takes the header that is confirmed first, by the next
// frame's header or by an ID3 tag behind the frame. Skips ID3 tags at the start and between frames by their
// size. Frames of another format than the first one's are garbage.
class FrameScanner
{
public:
    // Appends the whole frames in `bytes`, with offsets into it. Returns the number of bytes that are done
    // with. The rest, less than one frame and a header, must come again in front of what follows. With
    // `isEnd` nothing follows: the end of the bytes, too, confirms a frame.
    qsizetype scan(QByteArrayView bytes, std::vector<AudioStreamPacketDescription> &frames,
                   bool isEnd = false);
    // The next bytes come from another place of the stream.
    void restart();

    // The header of the first frame; nullopt before one was found.
    const std::optional<AudioFrameHeader> &firstHeader() const { return m_first; }
    // Bytes of tags skipped so far.
    qint64 tagBytes() const { return m_tagBytes; }

private:
    enum class State { AtStart, InStep, Searching };
    enum class Step { Further, NeedsMore };

    Step takeFrame(QByteArrayView bytes, qsizetype &at, std::vector<AudioStreamPacketDescription> &frames);
    Step passTag(QByteArrayView rest);
    Step search(QByteArrayView bytes, qsizetype &at, bool isEnd);

    State m_state = State::AtStart;
    quint32 m_key = 0;
    qint64 m_skip = 0; // bytes of a tag still to come
    qint64 m_tagBytes = 0;
    std::optional<AudioFrameHeader> m_first;
};

} // namespace orvel
