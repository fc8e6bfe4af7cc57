#include "audio/icy/StreamFileType.h"

#include "platform/foundation/ByteText.h"

#include <algorithm>
#include <array>

namespace orvel {

namespace {

using enum AudioFileType;

struct Row
{
    QLatin1String contentType;
    const char *fileExtension;
    AudioFileType hint;
};

constexpr std::array rows{
    Row{QLatin1String("audio/mp3"), "mp3", kAudioFileMP3Type},
    Row{QLatin1String("audio/mpg"), "mp3", kAudioFileMP3Type},
    Row{QLatin1String("audio/mpeg"), "mp3", kAudioFileMP3Type},
    Row{QLatin1String("audio/aacp"), "aac", kAudioFileAAC_ADTSType},
    Row{QLatin1String("audio/aac"), "aac", kAudioFileAAC_ADTSType},
    Row{QLatin1String("audio/ac3"), "ac3", kAudioFileAC3Type},
    Row{QLatin1String("audio/wav"), "wav", kAudioFileWAVEType},
    Row{QLatin1String("audio/x-wav"), "wav", kAudioFileWAVEType},
    Row{QLatin1String("audio/aifc"), "aifc", kAudioFileAIFCType},
    Row{QLatin1String("audio/x-aifc"), "aifc", kAudioFileAIFCType},
    Row{QLatin1String("audio/aiff"), "aiff", kAudioFileAIFFType},
    Row{QLatin1String("audio/x-aiff"), "aiff", kAudioFileAIFFType},
    Row{QLatin1String("audio/x-m4a"), "m4a", kAudioFileM4AType},
    Row{QLatin1String("audio/m4a"), "m4a", kAudioFileM4AType},
    Row{QLatin1String("audio/x-mp4"), "mp4", kAudioFileMPEG4Type},
    Row{QLatin1String("audio/mp4"), "mp4", kAudioFileMPEG4Type},
    Row{QLatin1String("audio/caf"), "caf", kAudioFileCAFType},
    Row{QLatin1String("audio/x-caf"), "caf", kAudioFileCAFType},
    Row{QLatin1String("audio/3gp"), "3gp", kAudioFile3GPType},
    Row{QLatin1String("audio/3gpp"), "3gp", kAudioFile3GPType},
    Row{QLatin1String("audio/3gpp2"), "3gp", kAudioFile3GP2Type},
    Row{QLatin1String("audio/ogg"), "ogg", none},
    Row{QLatin1String("application/ogg"), "ogg", none},
    Row{QLatin1String("application/octet-stream"), "mp3", kAudioFileMP3Type},
};

} // namespace

StreamFileType streamFileType(QStringView contentType)
{
    const auto *const row =
        std::find_if(rows.begin(), rows.end(), [&](const Row &it) { return it.contentType == contentType; });
    if (row == rows.end())
        return {};
    return {QString::fromLatin1(row->fileExtension), row->hint};
}

AudioFileType fileTypeHint(QStringView contentType)
{
    if (equalsIgnoringCase(contentType, u"audio/mpeg"))
        return kAudioFileMP3Type;
    if (equalsIgnoringCase(contentType, u"audio/aac") || equalsIgnoringCase(contentType, u"audio/aacp"))
        return kAudioFileAAC_ADTSType;
    return none;
}

} // namespace orvel
