#include "audio/icy/StreamFileType.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(StreamFileTypeTest, ComparesContentTypesExactly)
{
    using enum AudioFileType;
    const std::tuple<QStringView, QString, AudioFileType> cases[] = {
        {u"application/octet-stream", "mp3", kAudioFileMP3Type},
        {u"audio/3gpp2", "3gp", kAudioFile3GP2Type},
        {u"application/ogg", "ogg", none},
        {u"Audio/MPEG", {}, none},
        {u"audio/mpeg;", {}, none}};
    for (const auto &[type, extension, hint] : cases) {
        EXPECT_EQ(streamFileType(type).fileExtension, extension);
        EXPECT_EQ(streamFileType(type).hint, hint);
    }
}

TEST(StreamFileTypeTest, HintsAtTwoTypesInAnyCase)
{
    EXPECT_EQ(fileTypeHint(u"Audio/MPEG"), AudioFileType::kAudioFileMP3Type);
    for (const QString type : {"AUDIO/AACP", "audio/aac"})
        EXPECT_EQ(fileTypeHint(type), AudioFileType::kAudioFileAAC_ADTSType);
    for (const QString type : {"audio/mpeg; x", "audio/mp3", "text/html", ""})
        EXPECT_EQ(fileTypeHint(type), AudioFileType::none);
}
