#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <QByteArrayView>
#include <memory>

struct AVFrame;

namespace orvel {

// Decodes packets to frames of PCM (libavcodec). None of the decoders holds frames back: a packet's frames
// come before the next packet. One thread at a time.
class AudioDecoder
{
public:
    // Returns nullptr when there is no decoder for the format. The cookie is the codec's out-of-band
    // configuration, an AudioSpecificConfig or an ALACSpecificConfig; empty when there is none, or none
    // yet.
    static std::unique_ptr<AudioDecoder> make(const AudioStreamBasicDescription &format,
                                              const QByteArray &cookie = {});
    ~AudioDecoder();

    // Skips packets that the decoder rejects. All frames must be taken before the next packet.
    void decode(QByteArrayView packet);
    // Returns the next decoded frame, valid until the next call; nullptr when there is none.
    const AVFrame *nextFrame();
    // Forgets the packets so far.
    void reset();

private:
    struct Handles;
    explicit AudioDecoder(std::unique_ptr<Handles> handles);
    std::unique_ptr<Handles> m_handles;
};

} // namespace orvel
