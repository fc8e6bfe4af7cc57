#include "audio/icy/StreamFileType.h"

#include <gtest/gtest.h>

using namespace orvel;

// A live player's hint knows two types in any case.
TEST(StreamFileTypeTest, ComparesContentTypesExactly)
{
    using enum AudioFileType;
    const std::tuple<QString, QString, AudioFileType, AudioFileType> cases[] = {
        {"application/octet-stream", "mp3", kAudioFileMP3Type, none},
        {"audio/3gpp2", "3gp", kAudioFile3GP2Type, none},
        {"application/ogg", "ogg", none, none},
        {"audio/mp3", "mp3", kAudioFileMP3Type, none},
        {"Audio/MPEG", {}, none, kAudioFileMP3Type},
        {"AUDIO/AACP", {}, none, kAudioFileAAC_ADTSType},
        {"audio/aac", "aac", kAudioFileAAC_ADTSType, kAudioFileAAC_ADTSType},
        {"audio/mpeg;", {}, none, none},
        {"", {}, none, none}};
    for (const auto &[type, extension, hint, liveHint] : cases) {
        EXPECT_EQ(streamFileType(type).fileExtension, extension);
        EXPECT_EQ(streamFileType(type).hint, hint);
        EXPECT_EQ(fileTypeHint(type), liveHint);
    }
}
