#include "audio/file/FileTypeHint.h"

#include <algorithm>
#include <array>

namespace orvel {

namespace {

using enum AudioFileType;

struct Row
{
    QLatin1String fileExtension;
    AudioFileType hint;
};

constexpr std::array rows{
    Row{QLatin1String("mp3"), kAudioFileMP3Type},   Row{QLatin1String("wav"), kAudioFileWAVEType},
    Row{QLatin1String("aifc"), kAudioFileAIFCType}, Row{QLatin1String("aiff"), kAudioFileAIFFType},
    Row{QLatin1String("m4a"), kAudioFileM4AType},   Row{QLatin1String("mp4"), kAudioFileMPEG4Type},
    Row{QLatin1String("caf"), kAudioFileCAFType},   Row{QLatin1String("aac"), kAudioFileAAC_ADTSType},
};

} // namespace

AudioFileType hintForFileExtension(QStringView fileExtension)
{
    const auto *const row = std::find_if(rows.begin(), rows.end(),
                                         [&](const Row &it) { return it.fileExtension == fileExtension; });
    return row == rows.end() ? kAudioFileMP3Type : row->hint;
}

} // namespace orvel
