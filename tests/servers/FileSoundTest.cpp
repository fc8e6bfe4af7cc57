#include "servers/FilePlayer.h"
#include "servers/FileServer.h"
#include "support/EncodedTone.h"
#include "support/SoundComparison.h"

#include <QFile>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

constexpr float bound = 1.0F / 32768; // of full scale

struct FileKind
{
    const char *name;
    const char *options; // of ffmpeg; nullptr: the test makes it
    bool isExact = true; // a seek goes to a packet, not about there
    int warmUp = 1;      // packets after a seek that a decoder may get wrong
    double overhead = 0; // seconds by which other bytes lengthen the estimated duration
};

std::ostream &operator<<(std::ostream &stream, const FileKind &kind) { return stream << kind.name; }

// What ffmpeg decodes: samples, interleaved.
std::vector<float> decodedByFfmpeg(const QString &path)
{
    QProcess process;
    process.startCommand("ffmpeg -hide_banner -nostdin -loglevel error -i " + path + " -map 0:a -f f32le -");
    process.waitForFinished(60'000);
    const QByteArray bytes = process.readAllStandardOutput();
    std::vector<float> samples(std::size_t(bytes.size()) / sizeof(float));
    std::memcpy(samples.data(), bytes.constData(), samples.size() * sizeof(float));
    return samples;
}

bool isSame(float a, float b) { return std::abs(a - b) <= bound; }

// Where the part's first second stands in the whole; nullopt when it does not.
std::optional<std::size_t> placeOf(std::span<const float> part, const std::vector<float> &whole)
{
    const auto window = part.first(std::min<std::size_t>(part.size(), 20'000));
    const auto found = std::search(whole.begin(), whole.end(), window.begin(), window.end(), isSame);
    return found == whole.end() ? std::nullopt : std::optional(std::size_t(found - whole.begin()));
}

struct FileSoundTest : testing::TestWithParam<FileKind>
{
    static void SetUpTestSuite()
    {
        server = new FileServer;
        ASSERT_EQ(server->start().toStdString(), "");
    }
    static void TearDownTestSuite() { delete std::exchange(server, nullptr); }

    static FileServer *server;
};

FileServer *FileSoundTest::server = nullptr;

// Plain AAC becomes HE-AAC in the hands of a test; ffmpeg puts it into a file.
bool makeHighEfficiency(const FileServer &server, const QString &name)
{
    QFile file(server.path("he.aac"));
    file.open(QIODevice::WriteOnly);
    file.write(withBandReplication(encodeTone({AudioFormat::mpeg4Aac, 22050, 2, 64000, 10})).bytes);
    file.close();
    QProcess process;
    process.startCommand("ffmpeg -hide_banner -nostdin -loglevel error -y -i " + file.fileName() +
                         " -c copy " + server.path(name));
    return process.waitForFinished() && process.exitCode() == 0;
}

} // namespace

TEST_P(FileSoundTest, IsWhatFfmpegDecodes)
{
    const FileKind &kind = GetParam();
    ASSERT_TRUE(kind.options ? server->make(kind.name, kind.options)
                             : makeHighEfficiency(*server, kind.name));
    const std::vector<float> expected = decodedByFfmpeg(server->path(kind.name));
    {
        FilePlayer player(server->url(kind.name));
        ASSERT_TRUE(player.begins());
        EXPECT_NEAR(player->duration(), 10 + kind.overhead, 0.5);
        ASSERT_TRUE(player.ends());
        EXPECT_EQ(player->errorCode(), 0);
        const std::vector<float> whole = player.sound();
        const std::vector<float> heard = withoutSilence(whole), wanted = withoutSilence(expected);
        EXPECT_EQ(heard.size(), wanted.size());
        EXPECT_TRUE(std::ranges::equal(heard, wanted, isSame))
            << soundDifference(whole, expected).toStdString();
    }
    if (!kind.options)
        return; // the noise of a high-efficiency decoder goes on as it began
    const double samplesASecond = double(expected.size()) / 10;
    for (const double target : {3.3, 0.0, 7.77}) {
        SCOPED_TRACE(target);
        FilePlayer player(server->url(kind.name));
        ASSERT_TRUE(player.begins());
        player->seekToTime(target);
        ASSERT_TRUE(player.ends());
        EXPECT_EQ(player->errorCode(), 0);
        const std::vector<float> heard = withoutSilence(player.sound());
        const auto warmUp = std::size_t(kind.warmUp) * std::max(player.packetFrames.load(), 1u) * 2;
        ASSERT_GT(heard.size(), warmUp + 20'000);
        const auto part = std::span(heard).subspan(warmUp);
        const std::optional<std::size_t> place = placeOf(part, expected);
        ASSERT_TRUE(place);
        const double begin = (double(*place) - double(warmUp)) / samplesASecond;
        EXPECT_NEAR(begin, target, kind.isExact ? 0.1 : 1);
        const std::size_t rest = expected.size() - *place;
        EXPECT_GE(part.size() + 2, rest); // to the end, but for a last zero
        EXPECT_TRUE(std::ranges::equal(part.first(std::min(rest, part.size())),
                                       std::span(expected).subspan(*place, std::min(rest, part.size())),
                                       isSame));
    }
}

INSTANTIATE_TEST_SUITE_P(
    , FileSoundTest,
    testing::Values(
        FileKind{"constant.mp3", "-c:a libmp3lame -b:a 128k", false, 10},
        FileKind{"variable.mp3", "-c:a libmp3lame -q:a 2 -ar 48000", false, 10},
        FileKind{"plain.aac", "-c:a aac -aac_pns 0 -b:a 96k", false, 2},
        FileKind{"first.m4a", "-c:a aac -aac_pns 0 -b:a 128k -movflags +faststart"},
        FileKind{"last.m4a", "-c:a aac -aac_pns 0 -b:a 64k"},
        FileKind{
            "fragments.mp4",
            "-c:a aac -aac_pns 0 -movflags +frag_keyframe+empty_moov+default_base_moof -frag_duration 500000",
            false, 1, 0.3},
        FileKind{"video.mp4",
                 "-f lavfi -i testsrc=size=64x64:rate=10:duration=10 -c:v mpeg4 -c:a aac -aac_pns 0", true, 1,
                 3.3},
        FileKind{"lossless.m4a", "-c:a alac"}, FileKind{"he.m4a", nullptr},
        FileKind{"short.wav", "-c:a pcm_s16le"}, FileKind{"three.wav", "-c:a pcm_s24le -ar 48000"},
        FileKind{"float.wav", "-c:a pcm_f32le"}, FileKind{"a.wav", "-c:a pcm_alaw"},
        FileKind{"mu.wav", "-c:a pcm_mulaw"}, FileKind{"byte.wav", "-c:a pcm_u8"},
        FileKind{"long.wav", "-c:a pcm_s32le -rf64 always"}, FileKind{"short.aiff", "-c:a pcm_s16be"},
        FileKind{"sowt.aifc", "-c:a pcm_s16le -f aiff"}, FileKind{"float.aifc", "-c:a pcm_f32be -f aiff"},
        FileKind{"short.caf", "-c:a pcm_s16le"}, FileKind{"lossless.caf", "-c:a alac"}),
    [](const auto &kind) {
        std::string name = kind.param.name;
        std::ranges::replace(name, '.', '_');
        return name;
    });
