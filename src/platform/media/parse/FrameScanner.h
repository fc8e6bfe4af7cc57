#pragma once

#include "platform/media/parse/AudioFrameHeader.h"

#include <optional>
#include <vector>

namespace orvel {

// Finds the frames of one MP3 or ADTS stream, whatever the chunks in which its bytes come. In step it goes
// from header to header; out of step it looks for a header that the next frame's confirms. ID3 tags at the
// start and between frames are skipped by their size; a frame of another kind than the first is garbage.
class FrameScanner
{
public:
    // Appends the whole frames in `bytes`, with offsets into it, and returns how many bytes are done with.
    // The rest, less than one frame and a header, must come again in front of what follows.
    qsizetype scan(QByteArrayView bytes, std::vector<AudioStreamPacketDescription> &frames);

    // The header of the first frame; nothing before one was found.
    const std::optional<AudioFrameHeader> &firstHeader() const { return m_first; }

private:
    enum class State { AtStart, InStep, Searching };
    enum class Step { Further, NeedsMore };

    Step takeFrame(QByteArrayView bytes, qsizetype &at, std::vector<AudioStreamPacketDescription> &frames);
    Step passTag(QByteArrayView rest);
    Step search(QByteArrayView bytes, qsizetype &at);

    State m_state = State::AtStart;
    quint32 m_key = 0;
    qint64 m_skip = 0; // bytes of a tag still to come
    std::optional<AudioFrameHeader> m_first;
};

} // namespace orvel
