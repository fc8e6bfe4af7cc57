#include "platform/media/parse/AudioFileStreamOpener.h"

#include "platform/media/parse/FramedAudioFileStream.h"

namespace orvel {

std::unique_ptr<AudioFileStream> openAudioFileStream(AudioFileStreamClient &client, AudioFileType hint)
{
    return openFramedAudioFileStream(client, hint);
}

} // namespace orvel
