#pragma once

#include "platform/media/parse/AudioFileStream.h"

namespace orvel {

// Opens a file. Returns nullptr for a hint at a type that is not known.
std::unique_ptr<AudioFileStream> openAudioFileStream(AudioFileStreamClient &client, AudioFileType hint);

} // namespace orvel
