#pragma once

#include "platform/media/parse/AudioFileStream.h"

namespace orvel {

// Opens a file: MP3, ADTS, WAVE, AIFF, AIFC, CAF, M4A and MPEG-4. The hint says which, unless the first bytes
// show plainly another. No hint stands for MP3. Returns nullptr for a hint at a type that is not known.
std::unique_ptr<AudioFileStream> openAudioFileStream(AudioFileStreamClient &client, AudioFileType hint);

} // namespace orvel
