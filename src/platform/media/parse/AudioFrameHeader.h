#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArrayView>
#include <optional>

namespace orvel {

// The header in front of a compressed frame.
struct AudioFrameHeader
{
    quint32 key = 0;  // the bits that all frames of one stream share
    quint32 size = 0; // bytes, with the header
    quint32 sampleRate = 0;
    quint32 channels = 0; // 0 in ADTS when only the frame itself says it
    quint32 framesPerPacket = 0;
    AudioFormat format = AudioFormat::none;
};

inline constexpr quint32 maxAdtsFrameBytes = 8191; // as many as its header can say
// Bytes that readAudioFrameHeader needs.
inline constexpr qsizetype audioFrameHeaderBytes = 7;

// Returns the MPEG 1, 2 or 2.5 layer III header or the ADTS header at the front of `bytes`. nullopt when
// there is none, when it can't be true, or when it leaves the frame's size open (free format).
std::optional<AudioFrameHeader> readAudioFrameHeader(QByteArrayView bytes);

} // namespace orvel
