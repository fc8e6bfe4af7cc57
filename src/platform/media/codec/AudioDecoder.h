#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <QByteArrayView>
#include <memory>

struct AVFrame;

namespace orvel {

// Packets in, frames of PCM out (libavcodec). None of the decoders holds frames back: a packet's frames come
// before the next packet. One thread at a time.
class AudioDecoder
{
public:
    // Nothing when there is no decoder for the format. The cookie is the codec's out-of-band configuration,
    // if any.
    static std::unique_ptr<AudioDecoder> make(const AudioStreamBasicDescription &format,
                                              const QByteArray &cookie = {});
    ~AudioDecoder();

    // A packet that is no sense to the decoder is passed over. Take all frames before the next packet.
    void decode(QByteArrayView packet);
    // The next decoded frame, valid until the next call; null when there is none.
    const AVFrame *nextFrame();
    // Forgets what went in so far.
    void reset();

private:
    struct Handles;
    explicit AudioDecoder(std::unique_ptr<Handles> handles);
    std::unique_ptr<Handles> m_handles;
};

} // namespace orvel
