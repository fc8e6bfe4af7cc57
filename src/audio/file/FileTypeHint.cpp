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

AudioFileType fileTypeOf(QByteArrayView firstBytes, AudioFileType hint)
{
    const auto stands = [&](qsizetype at, QByteArrayView code) {
        return firstBytes.size() >= at + 4 && firstBytes.sliced(at, 4) == code;
    };
    if ((stands(0, "RIFF") || stands(0, "RF64")) && stands(8, "WAVE"))
        return kAudioFileWAVEType;
    if (stands(0, "FORM") && stands(8, "AIFF"))
        return kAudioFileAIFFType;
    if (stands(0, "FORM") && stands(8, "AIFC"))
        return kAudioFileAIFCType;
    if (stands(0, "caff"))
        return kAudioFileCAFType;
    if (stands(4, "ftyp"))
        return stands(8, "M4A ") ? kAudioFileM4AType : kAudioFileMPEG4Type;
    return hint;
}

bool isFramed(AudioFileType type) { return type == kAudioFileMP3Type || type == kAudioFileAAC_ADTSType; }

qint64 id3TagSize(QByteArrayView firstBytes)
{
    constexpr qsizetype head = 10;
    if (firstBytes.size() < head || !firstBytes.startsWith("ID3"))
        return 0;
    qint64 size = 0; // in four bytes of seven bits
    for (const char byte : firstBytes.sliced(6, 4))
        size = size << 7 | (byte & 0x7F);
    const bool hasFooter = (firstBytes[5] & 0x10) != 0;
    return size + (hasFooter ? 2 * head : head);
}

} // namespace orvel
