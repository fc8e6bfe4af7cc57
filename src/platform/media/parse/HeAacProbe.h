#pragma once

#include "platform/media/codec/AudioDecoder.h"
#include "platform/media/parse/AudioFrameHeader.h"

#include <optional>

namespace orvel {

// Whether an ADTS stream is HE-AAC: its headers tell only the core's sample rate and channels, the decoded
// frames show the doubled rate. A stream joined in the middle may need some frames to show it.
class HeAacProbe
{
public:
    // Whether such headers leave the question open. Cores above 24 kHz are plain AAC.
    static bool isNeededFor(const AudioFrameHeader &header);

    explicit HeAacProbe(const AudioFrameHeader &header);
    // True when the question is answered, at the latest after some frames.
    bool feed(QByteArrayView packet);
    // The format of the decoded frames, when it is HE-AAC.
    const std::optional<AudioStreamBasicDescription> &highQualityFormat() const { return m_format; }

private:
    AudioFrameHeader m_header;
    std::unique_ptr<AudioDecoder> m_decoder;
    int m_frames = 0;
    std::optional<AudioStreamBasicDescription> m_format;
};

} // namespace orvel
