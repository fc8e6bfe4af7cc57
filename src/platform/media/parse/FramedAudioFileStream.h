#pragma once

#include "platform/media/parse/AudioFileStream.h"

namespace orvel {

// Opens MPEG 1, 2 and 2.5 layer III (ISO/IEC 11172-3, 13818-3) and AAC in ADTS (ISO/IEC 13818-7, 14496-3),
// from a file or from a stream without an end. Returns nullptr for a hint at any other type. Frames are found
// by their sync words, which can't be mistaken for each other, so a server's wrong content type does no harm.
// ID3 tags and garbage are skipped, and a first frame that says how long an MP3 file is. No frame in 256 KiB,
// tags not counted, is a failure, after which the bytes are still searched. The first frame, and the first
// one after garbage, is handed on when what follows it confirms it, the others as soon as they are whole. An
// AAC packet is a whole ADTS frame with its header, so there is no magic cookie. Seeks are estimates from the
// mean size of the packets so far.
std::unique_ptr<AudioFileStream> openFramedAudioFileStream(AudioFileStreamClient &client, AudioFileType hint);

} // namespace orvel
