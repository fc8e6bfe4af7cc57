#include "audio/file/FileTypeHint.h"
#include "audio/file/AudioStreamerError.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace orvel;
using enum AudioFileType;

TEST(FileTypeHintTest, ComparesExtensionsExactly)
{
    const std::pair<const char16_t *, AudioFileType> cases[] = {
        {u"mp3", kAudioFileMP3Type},   {u"wav", kAudioFileWAVEType},     {u"aifc", kAudioFileAIFCType},
        {u"aiff", kAudioFileAIFFType}, {u"m4a", kAudioFileM4AType},      {u"mp4", kAudioFileMPEG4Type},
        {u"caf", kAudioFileCAFType},   {u"aac", kAudioFileAAC_ADTSType}, {u"WAV", kAudioFileMP3Type},
        {u"", kAudioFileMP3Type},      {u"ogg", kAudioFileMP3Type},
    };
    for (const auto &[extension, type] : cases)
        EXPECT_EQ(hintForFileExtension(extension), type) << QString::fromUtf16(extension).toStdString();
}

TEST(AudioStreamerErrorTest, HasATextForEachCode)
{
    QStringList texts;
    for (int code = 0; code <= 22; ++code)
        texts << stringForErrorCode(AudioStreamerErrorCode(code));
    EXPECT_EQ(texts[0], "No error.");
    EXPECT_EQ(texts[1], "Network connection failed");
    EXPECT_EQ(texts[7], "No audio data found.");
    EXPECT_EQ(texts[14], "Audio queue dispose failed.");
    EXPECT_EQ(texts[16], texts[14]);
    EXPECT_EQ(texts[19], "Audio playback failed");
    EXPECT_EQ(texts[21], "Audio packets are larger than kAQDefaultBufSize.");
    EXPECT_EQ(texts[22], texts[19]);
    texts.removeDuplicates();
    EXPECT_EQ(texts.size(), 21);
    EXPECT_EQ(failureText(AudioStreamerErrorFileStreamParseBytes, 0), "Parse bytes failed.");
    EXPECT_EQ(failureText(AudioStreamerErrorFileStreamOpen, 0x7479703F),
              "Open audio file stream failed. err: typ? 1954115647\n");
}
