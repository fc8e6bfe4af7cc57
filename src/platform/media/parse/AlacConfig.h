#pragma once

#include "platform/media/codec/AudioTypes.h"

#include <QByteArrayView>

namespace orvel {

inline constexpr qsizetype alacConfigBytes = 24;

// Returns the format that an ALAC decoder's configuration (the codec's magic cookie) describes. nullopt when
// it can't be true.
std::optional<AudioStreamBasicDescription> alacFormat(QByteArrayView config);

} // namespace orvel
