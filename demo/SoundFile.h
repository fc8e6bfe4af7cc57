#pragma once

#include "demo/StationContent.h"

namespace orvel::demo {

// Returns a file of the programme's music, half a minute long: "mp3", "aac" (ADTS), "m4a" (index first),
// "wav" or "aiff". Empty for another type, and when the codec library lacks the encoder.
QByteArray soundFile(const Programme &programme, const QString &type);

} // namespace orvel::demo
