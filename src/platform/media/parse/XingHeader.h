#pragma once

#include "platform/media/parse/AudioFrameHeader.h"

namespace orvel {

// What an MP3 file's first frame says of the file, in place of sound ("Xing" or "Info").
struct XingHeader
{
    std::optional<quint32> byteCount; // with this frame
    std::optional<AudioTrim> trim;
};

// Returns nullopt when the frame, whose header is `header`, is sound.
std::optional<XingHeader> readXingHeader(QByteArrayView frame, const AudioFrameHeader &header);

} // namespace orvel
