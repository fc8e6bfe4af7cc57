#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArray>
#include <QByteArrayView>

namespace orvel {

// What a track's sound is encoded in.
struct Mpeg4SampleEntry
{
    AudioStreamBasicDescription format;
    QByteArray cookie;
};

// Reads the first entry of a sample description ("stsd"). nullopt unless it is AAC or ALAC.
std::optional<Mpeg4SampleEntry> readMpeg4SampleEntry(QByteArrayView sampleDescription);

} // namespace orvel
