#pragma once

#include "demo/StationContent.h"
#include "demo/Synth.h"

#include <QByteArray>

#include <memory>

struct AVCodecContext;
struct AVFrame;
struct AVPacket;

namespace orvel::demo {

// One whole MP3 or ADTS frame, which a decoder can start with.
struct Frame
{
    QByteArray bytes;
    QByteArray title; // what plays, as UTF-8
    double seconds = 0;
};

// Encodes a programme's endless sound to frames, as fast as they are asked for.
class Encoder
{
public:
    // Returns nullptr when the codec library lacks the encoder.
    static std::unique_ptr<Encoder> open(const Programme &programme, int firstSong);
    ~Encoder();

    Frame next();

private:
    struct FreeContext
    {
        void operator()(AVCodecContext *context) const;
    };
    struct FreeFrame
    {
        void operator()(AVFrame *frame) const;
    };
    struct FreePacket
    {
        void operator()(AVPacket *packet) const;
    };

    Encoder(const Programme &programme, int firstSong);
    bool openCodec();
    bool feed();
    QByteArray packetBytes() const;

    const Programme &m_programme;
    Synth m_synth;
    int m_song = 0;
    std::unique_ptr<AVCodecContext, FreeContext> m_context;
    std::unique_ptr<AVFrame, FreeFrame> m_frame;
    std::unique_ptr<AVPacket, FreePacket> m_packet;
};

} // namespace orvel::demo
