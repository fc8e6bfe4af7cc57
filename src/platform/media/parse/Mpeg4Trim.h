#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArrayView>

namespace orvel {

// Returns where a track's sound begins and ends, by its edit list and by the file's note of the priming
// frames ("iTunSMPB"), which is believed first. In frames at `mediaRate`, the track's units a second;
// `movieRate` is the whole file's. The packet in which the sound ends is heard whole. nullopt when neither
// says anything.
std::optional<AudioTrim> readMpeg4Trim(QByteArrayView movie, QByteArrayView track, quint32 movieRate,
                                       quint32 mediaRate, double packetUnits);

} // namespace orvel
