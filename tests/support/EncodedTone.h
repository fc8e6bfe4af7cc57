#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <vector>

namespace orvel::test {

// A sweep with a little noise, one after another encoded frame as they lie in a stream.
struct EncodedTone
{
    AudioStreamBasicDescription format;
    QByteArray bytes = {};
    std::vector<AudioStreamPacketDescription> packets = {};
};

struct ToneRequest
{
    AudioFormat format = AudioFormat::mpegLayer3; // or mpeg4Aac, framed as ADTS
    int sampleRate = 44100;
    int channels = 2;
    int bitrate = 128000;
    double seconds = 2;
};

EncodedTone encodeTone(const ToneRequest &request);

// The same AAC frames with a spectral band replication element in each: an HE-AAC stream, of the second
// version when its core is mono.
EncodedTone withBandReplication(const EncodedTone &core);

// What libavcodec's own decoder makes of the tone's packets, from a fresh start: samples, interleaved.
std::vector<float> decoded(const EncodedTone &tone);

} // namespace orvel::test
