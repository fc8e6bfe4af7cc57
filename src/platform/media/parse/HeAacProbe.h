#pragma once

#include "platform/media/codec/AudioDecoder.h"
#include "platform/media/parse/AudioFrameHeader.h"

#include <optional>

namespace orvel {

// Finds out whether an ADTS stream is HE-AAC. The headers say only the core's sample rate and channels; the
// decoded frames show the doubled rate. A stream joined in the middle may need some frames to show it.
class HeAacProbe
{
public:
    // Returns whether the header leaves the question open. Cores above 24 kHz are plain AAC.
    static bool isNeededFor(const AudioFrameHeader &header);

    explicit HeAacProbe(const AudioFrameHeader &header);
    // Returns true when the question is answered, at the latest after some frames.
    bool feed(QByteArrayView packet);
    // The format of the decoded frames; nullopt unless it is HE-AAC.
    const std::optional<AudioStreamBasicDescription> &highQualityFormat() const { return m_format; }

private:
    AudioFrameHeader m_header;
    std::unique_ptr<AudioDecoder> m_decoder;
    int m_frames = 0;
    std::optional<AudioStreamBasicDescription> m_format;
};

} // namespace orvel
