#pragma once

#include "platform/media/codec/AudioDecoder.h"

#include <optional>

namespace orvel {

// Finds out whether AAC is HE-AAC. ADTS headers say only the core's sample rate and channels, as do many
// cookies; the decoded packets show the doubled rate. A stream joined in the middle may need some packets to
// show it.
class HeAacProbe
{
public:
    // Returns whether the core's format leaves the question open. Cores above 24 kHz are plain AAC.
    static bool isNeededFor(const AudioStreamBasicDescription &format);

    HeAacProbe(const AudioStreamBasicDescription &format, const QByteArray &cookie);
    // Returns true when the question is answered, at the latest after some packets.
    bool feed(QByteArrayView packet);
    // The format of the decoded packets; nullopt unless it is HE-AAC.
    const std::optional<AudioStreamBasicDescription> &highQualityFormat() const
    {
        return m_highQualityFormat;
    }

private:
    AudioStreamBasicDescription m_format;
    std::unique_ptr<AudioDecoder> m_decoder;
    int m_packets = 0;
    std::optional<AudioStreamBasicDescription> m_highQualityFormat;
};

} // namespace orvel
