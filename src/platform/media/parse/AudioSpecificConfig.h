#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArrayView>

namespace orvel {

// Returns the AudioSpecificConfig within an elementary stream descriptor (ISO/IEC 14496-1); empty when there
// is none, or when the stream is not AAC.
QByteArrayView audioSpecificConfigIn(QByteArrayView elementaryStreamDescriptor);

// Returns the format of the AAC core that an AudioSpecificConfig (ISO/IEC 14496-3) describes. nullopt when it
// can't be true. `channels` is taken where the config leaves it to the packets.
std::optional<AudioStreamBasicDescription> aacFormat(QByteArrayView config, quint32 channels);

} // namespace orvel
