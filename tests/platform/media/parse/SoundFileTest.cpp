#include "support/SoundFile.h"
#include "ParsedFile.h"
#include "platform/media/codec/AudioDecoder.h"
#include "support/EncodedTone.h"

#include <QtEndian>
#include <cmath>
#include <gtest/gtest.h>

using namespace orvel;
using orvel::test::decodedByFfmpeg;
using orvel::test::encodeTone;
using orvel::test::ParsedFile;
using orvel::test::soundFile;
using enum AudioFileStreamProperty;

namespace {

enum class Seeks { Exact, Estimated, ByFragment };

struct Kind
{
    const char *name;
    const char *arguments; // to ffmpeg
    AudioFormat format;
    bool hasByteCount = true;
    Seeks seeks = Seeks::Exact;
};

// What a test is about, and what it is told of when it fails.
std::ostream &operator<<(std::ostream &out, const Kind &kind)
{
    return out << kind.name << ' ' << kind.arguments;
}

using enum AudioFormat;

const Kind kinds[] = {
    {"a.wav", "-c:a pcm_u8", linearPcm},
    {"a.wav", "-c:a pcm_s16le", linearPcm},
    {"a.wav", "-c:a pcm_s24le", linearPcm}, // extensible
    {"a.wav", "-c:a pcm_s32le -ac 1", linearPcm},
    {"a.wav", "-c:a pcm_f32le", linearPcm},
    {"a.wav", "-c:a pcm_alaw", aLaw},
    {"a.wav", "-c:a pcm_mulaw -ac 1", muLaw},
    {"a.wav", "-c:a pcm_s16le -rf64 always", linearPcm},
    {"a.aiff", "-c:a pcm_s16be", linearPcm},
    {"a.aiff", "-c:a pcm_s24be -ac 1", linearPcm},
    {"a.aifc", "-f aiff -c:a pcm_s16le", linearPcm}, // sowt
    {"a.aifc", "-f aiff -c:a pcm_f32be", linearPcm}, // fl32
    {"a.caf", "-c:a pcm_s16be", linearPcm},
    {"a.caf", "-c:a pcm_f32le", linearPcm},
    {"a.caf", "-c:a alac", appleLossless}, // table behind
    {"a.m4a", "-c:a aac", mpeg4Aac},       // index behind
    {"a.m4a", "-c:a aac -movflags +faststart", mpeg4Aac},
    {"a.m4a", "-c:a alac", appleLossless},
    {"a.mp4", "-f lavfi -i testsrc=s=64x48:d=1.3 -c:v mpeg4 -c:a aac -movflags +faststart", mpeg4Aac},
    {"a.mp4", "-c:a aac -frag_duration 300000 -movflags +frag_keyframe+empty_moov", mpeg4Aac, false,
     Seeks::ByFragment},
    {"a.mp4", "-c:a alac -frag_duration 300000 -movflags +dash+delay_moov", appleLossless, false,
     Seeks::ByFragment},
    {"a.mp4",
     "-f lavfi -i testsrc=s=64x48:d=1.3 -map 1 -map 0 -c:v mpeg4 -c:a aac -movflags "
     "+frag_keyframe+empty_moov+omit_tfhd_offset",
     mpeg4Aac, false, Seeks::ByFragment},
    {"a.mp3", "-metadata title=x", mpegLayer3, true, Seeks::Estimated},
    {"a.mp3", "-q:a 4 -ac 1 -ar 22050", mpegLayer3, true, Seeks::Estimated},
    {"a.mp3", "-write_xing 0", mpegLayer3, false, Seeks::Estimated},
    {"a.aac", "-c:a aac", mpeg4Aac, false, Seeks::Estimated},
    {"a.wav", "-c:a pcm_f64le", linearPcm},
    {"a.caf", "-c:a pcm_s32be", linearPcm},
};

class SoundFileTest : public testing::TestWithParam<Kind>
{
};

void expectSame(const std::vector<float> &heard, const std::vector<float> &expected)
{
    ASSERT_EQ(heard.size(), expected.size());
    ASSERT_GT(heard.size(), 10000u);
    for (std::size_t i = 0; i < heard.size(); ++i)
        ASSERT_NEAR(heard[i], expected[i], std::ldexp(1, -15)) << i;
}

bool isTail(const QByteArrayList &tail, const QByteArrayList &all)
{
    return !tail.isEmpty() && tail.size() <= all.size() && tail == all.last(tail.size());
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Kinds, SoundFileTest, testing::ValuesIn(kinds));

TEST_P(SoundFileTest, IsHeardAsFfmpegHearsIt)
{
    const Kind &kind = GetParam();
    const QByteArray file = soundFile(kind.name, QString(kind.arguments).split(' '));
    ParsedFile whole;
    expectSame(whole.push(file, file.size()).decoded(), decodedByFfmpeg(file));
    std::vector expected{DataFormat, DataOffset, AudioDataByteCount, ReadyToProducePackets};
    if (!kind.hasByteCount)
        expected.erase(expected.begin() + 2);
    EXPECT_EQ(whole.properties, expected);
    EXPECT_EQ(whole.stream->dataFormat()->format, kind.format);
    EXPECT_TRUE(AudioDecoder::make(*whole.stream->dataFormat())); // the cookie comes later
    const auto dataOffset = whole.stream->dataOffset();
    ASSERT_TRUE(dataOffset);
    EXPECT_TRUE(QByteArrayView(file).sliced(*dataOffset).startsWith(whole.packets.front()));
    if (const auto count = whole.stream->audioDataByteCount()) {
        EXPECT_TRUE(QByteArrayView(file).first(*dataOffset + qint64(*count)).endsWith(whole.packets.back()));
    }

    for (const qsizetype chunk : {1, 7, 2048}) {
        const ParsedFile parsed(file, chunk, AudioFileType::kAudioFileMP3Type); // the first bytes say another
        EXPECT_TRUE(parsed.packets == whole.packets) << chunk;
        EXPECT_EQ(parsed.properties, whole.properties);
        EXPECT_EQ(parsed.stream->trim(), whole.stream->trim());
    }

    const qint64 last = whole.packets.size() - 1;
    for (const qint64 packet : {qint64(0), qint64(1), last / 2, last, last + 1000}) {
        ParsedFile parsed;
        parsed.push(QByteArrayView(file).first(file.size() / 2), 2048);
        if (parsed.packets.isEmpty())
            parsed.push(QByteArrayView(file).sliced(file.size() / 2), 2048); // the index was behind
        const auto seek = parsed.stream->seek(packet);
        ASSERT_TRUE(seek);
        // What the first fragment has is known.
        EXPECT_EQ(seek->isEstimated,
                  kind.seeks == Seeks::Estimated || (kind.seeks == Seeks::ByFragment && packet > 1));
        const qint64 offset = std::min<qint64>(*dataOffset + seek->byteOffset, file.size() - 1);
        parsed.jump(file, offset).stream->finish();
        if (!seek->isEstimated) {
            EXPECT_TRUE(parsed.packets == whole.packets.sliced(std::min(packet, last))) << packet;
        } else if (packet <= last / 2) {
            EXPECT_TRUE(isTail(parsed.packets, whole.packets)) << packet;
        }
        // Amid a packet.
        parsed.jump(file, *dataOffset + (file.size() - *dataOffset) / 3 + 1).stream->finish();
        EXPECT_TRUE(isTail(parsed.packets, whole.packets)) << packet;
        EXPECT_GT(parsed.packets.size(), last / 5);
    }
}

namespace {

QByteArray bigEndian(quint64 value, int bytes)
{
    QByteArray text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += char(value >> shift);
    return text;
}

// `bytes` replace what stands `behind` bytes after the mark.
QByteArray patched(QByteArray file, QByteArrayView mark, qsizetype behind, const QByteArray &bytes)
{
    return file.replace(file.indexOf(mark) + mark.size() + behind, bytes.size(), bytes);
}

QByteArray box(const char *type, const QByteArray &body)
{
    return bigEndian(8 + quint64(body.size()), 4) + type + body;
}

// A CAF file of these AAC packets, its table behind them.
QByteArray cafWithAac(const QByteArrayList &packets, const QByteArray &config, quint32 priming)
{
    const auto chunk = [](const char *type, const QByteArray &body) {
        return type + bigEndian(quint64(body.size()), 8) + body;
    };
    const auto descriptor = [](char tag, const QByteArray &body) {
        return tag + bigEndian(quint64(body.size()), 1) + body;
    };
    const QByteArray cookie = descriptor(
        3, QByteArray(3, '\0') + descriptor(4, '\x40' + QByteArray(12, '\0') + descriptor(5, config)));
    QByteArray table = bigEndian(quint64(packets.size()), 8) +
                       bigEndian(quint64(packets.size() * 1024 - priming), 8) +
                       bigEndian(quint64(priming), 4) + bigEndian(0, 4);
    for (const QByteArray &packet : packets)
        table +=
            bigEndian(quint64(packet.size() >> 7 | 0x80), 1) + bigEndian(quint64(packet.size() & 0x7F), 1);
    return QByteArray("caff\0\1\0\0", 8) +
           chunk("desc", bigEndian(std::bit_cast<quint64>(44100.0), 8) + "aac " + bigEndian(0, 8) +
                             bigEndian(1024, 4) + bigEndian(2, 4) + bigEndian(0, 4)) +
           chunk("kuki", cookie) + chunk("data", QByteArray(4, '\0') + packets.join()) + chunk("pakt", table);
}

// As a reader of a server that answers ranges.
struct Ranges
{
    explicit Ranges(QByteArrayView file)
    {
        for (qsizetype at = 0; at < file.size() && parsed.isUnderstood && jumps < 10; at += 2048) {
            parsed.push(file.sliced(at, std::min<qsizetype>(2048, file.size() - at)), 2048);
            readBeforeSound += parsed.packets.isEmpty() ? 2048 : 0;
            if (const auto wanted = parsed.stream->wantedOffset()) {
                parsed.stream->continueAt(*wanted);
                at = *wanted - 2048;
                ++jumps;
            }
        }
    }
    ParsedFile parsed;
    qint64 readBeforeSound = 0;
    int jumps = 0;
};

QByteArray longSound(const char *name, const char *arguments)
{
    return soundFile(name, QString(arguments).split(' '), soundFile("long.wav", {"-af", "aloop=9:60000"}));
}

} // namespace

TEST(SoundFilesTest, FetchTheIndexBehindTheSoundFirst)
{
    for (const auto &[name, arguments] : {std::pair("a.m4a", "-c:a alac"), std::pair("a.caf", "-c:a alac")}) {
        const QByteArray file = longSound(name, arguments);
        ASSERT_GT(file.size(), 500'000);
        const Ranges ranges(file);
        EXPECT_EQ(ranges.jumps, 2);
        EXPECT_LT(ranges.readBeforeSound, 20'000);
        EXPECT_TRUE(ranges.parsed.packets == ParsedFile(file, 2048).packets);
        EXPECT_FALSE(ranges.parsed.packets.isEmpty());
    }
    EXPECT_EQ(Ranges(longSound("a.m4a", "-c:a alac -movflags +faststart")).jumps, 0);
    EXPECT_EQ(Ranges(soundFile("a.m4a", {"-c:a", "aac"})).jumps, 0); // read sooner than asked for
    // Fragments whose packets lie before them send nobody back.
    QByteArray fragments =
        soundFile("a.mp4", {"-frag_duration", "20000", "-movflags", "+frag_keyframe+empty_moov"});
    for (qsizetype at = fragments.indexOf("trun"); at >= 0; at = fragments.indexOf("trun", at + 1))
        fragments.replace(at + 12, 4, bigEndian(0, 4));
    EXPECT_EQ(Ranges(fragments).jumps, 0);
}

TEST(SoundFilesTest, HoldSoundBeforeItsIndexUpToABound)
{
    constexpr int mebibyte = 1024 * 1024;
    const QByteArray start = box("ftyp", "M4A ") + bigEndian(100 * mebibyte, 4) + "mdat";
    ParsedFile parsed;
    parsed.push(start + QByteArray(31 * mebibyte, '\0'), 100'000);
    EXPECT_TRUE(parsed.isUnderstood);
    parsed.push(QByteArray(2 * mebibyte, '\0'), 100'000);
    EXPECT_FALSE(parsed.isUnderstood);
    EXPECT_FALSE(parsed.stream->parseBytes("x"));
}

TEST(SoundFilesTest, TrimWhatTheEncoderAdded)
{
    const QByteArray file = soundFile("a.m4a", {"-c:a", "aac"});
    const QByteArray listless = patched(file, "edts", -4, "free");
    const QByteArray mean = box("mean", bigEndian(0, 4) + "com.apple.iTunes");
    const QByteArray notes = box("----", mean + box("name", bigEndian(0, 4) + "iTunNORM")) +
                             box("----", mean + box("name", bigEndian(0, 4) + "iTunSMPB") +
                                             box("data", bigEndian(1, 4) + bigEndian(0, 4) +
                                                             " 00000000 00000840 000001CA 000000F0"));
    const QByteArray note =
        box("udta", box("meta", bigEndian(0, 4) + box("hdlr", QByteArray(25, '\0')) + box("ilst", notes)));
    const auto noted = [note](const QByteArray &bytes) {
        const qsizetype movie = bytes.indexOf("moov") - 4;
        const qsizetype tags = bytes.indexOf("udta") - 4;
        return bytes.first(movie) + box("moov", bytes.sliced(movie + 8, tags - movie - 8) + note);
    };
    const std::pair<QByteArray, AudioTrim> cases[] = {
        {file, {1024, 57344}},
        {patched(file, "elst", 8, bigEndian(1000, 4)), {1024, 45 * 1024 - 1024}}, // ms
        {listless, {}},
        {noted(listless), {0x840, std::nullopt}},
        {noted(file), {0x840, 57 * 1024 - 0x840}},
    };
    for (const auto &[bytes, trim] : cases) {
        ParsedFile parsed;
        const std::vector<float> heard = parsed.push(bytes, 1000).decoded();
        EXPECT_EQ(parsed.stream->trim().value_or(AudioTrim()), trim);
        expectSame(heard, decodedByFfmpeg(bytes));
    }
}

TEST(SoundFilesTest, OfferTheFormatThatHighEfficiencyAacDecodesTo)
{
    for (const int channels : {1, 2}) {
        const auto core = encodeTone({mpeg4Aac, 22050, channels, 48000, 2});
        const QByteArray file = soundFile("a.m4a", {"-c", "copy"}, withBandReplication(core).bytes);
        ParsedFile parsed;
        const auto heard = parsed.push(file, 500).decoded();
        EXPECT_EQ(parsed.properties[1], FormatList);
        ASSERT_EQ(parsed.stream->formatList().size(), 2u);
        EXPECT_EQ(parsed.stream->formatList()[0].format, channels == 1 ? mpeg4AacHeV2 : mpeg4AacHe);
        EXPECT_EQ(parsed.stream->formatList()[0].sampleRate, 44100);
        EXPECT_EQ(parsed.stream->formatList()[1], parsed.stream->dataFormat());
        std::vector<float> expected = decodedByFfmpeg(file);
        expectSame(heard, expected);
        // The config says it outright, and the sound begins behind 500 of the 44,100 frames a second.
        const QByteArray config = QByteArray::fromHex(channels == 1 ? "2B8A0800" : "2B920800");
        ParsedFile caf;
        const auto heardBehind = caf.push(cafWithAac(parsed.packets, config, 500), 500).decoded();
        EXPECT_EQ(caf.stream->formatList(), parsed.stream->formatList());
        expected.erase(expected.begin(), expected.begin() + 2 * 500);
        expected.resize(2 * (std::size_t(parsed.packets.size()) * 1024 - 500));
        expectSame(heardBehind, expected);
    }
}

TEST(SoundFilesTest, AreNotFoundWhereAnotherTypeWasHinted)
{
    using enum AudioFileType;
    const QByteArray mp3 = soundFile("a.mp3", {});
    for (const AudioFileType hint :
         {kAudioFileWAVEType, kAudioFileAIFCType, kAudioFileCAFType, kAudioFileM4AType})
        EXPECT_TRUE(ParsedFile(mp3, 1, hint).packets.isEmpty()) << quint32(hint);
    EXPECT_FALSE(ParsedFile(mp3, 1, kAudioFileAAC_ADTSType).packets.isEmpty());
    EXPECT_FALSE(ParsedFile(kAudioFileAC3Type).stream);
}

// The same sound, written otherwise.
TEST(SoundFilesTest, MayBeWrittenInOtherWays)
{
    const QByteArray wave = soundFile("a.wav", {});
    const QByteArray aiff = soundFile("a.aiff", {});
    const QByteArray caf = soundFile("a.caf", {});
    const QByteArray m4a = soundFile("a.m4a", {"-fflags", "+bitexact"});
    const qsizetype common = aiff.indexOf("COMM");
    const qsizetype samples = aiff.indexOf("SSND");
    QByteArray otherAiff =
        aiff.first(common) + "SSND" + bigEndian(quint64(aiff.size() - samples - 8 + 3), 4) + bigEndian(3, 4) +
        bigEndian(0, 4) + "abc" + aiff.sliced(samples + 16) + '\0' + aiff.sliced(common, samples - common);
    const qsizetype data = m4a.indexOf("mdat") - 4;
    const qsizetype movie = m4a.indexOf("moov") - 4;
    const QByteArray longBox = m4a.first(data - 8) + bigEndian(1, 4) + "mdat" +
                               bigEndian(quint64(movie - data + 8), 8) + m4a.sliced(data + 8);
    ASSERT_EQ(m4a.sliced(data - 4, 4), "free");
    const std::tuple<const char *, QByteArray, QByteArray> cases[] = {
        {"an odd chunk", wave, QByteArray(wave).insert(wave.indexOf("data"), "junk\3\0\0\0abc\0", 12)},
        {"a size left open", wave, patched(wave, "data", 0, bigEndian(0, 4))},
        {"a size left open", wave, patched(wave, "data", 0, bigEndian(0xFFFFFFFF, 4))},
        {"the format behind, the sound behind a gap", aiff, otherAiff},
        {"sound to the end of the file", caf, patched(caf, "data", 0, bigEndian(quint64(-1), 8))},
        {"a long size", m4a, longBox},
    };
    for (const auto &[what, file, other] : cases) {
        const ParsedFile expected(file, 1000);
        const ParsedFile heard(other, 1000);
        EXPECT_GT(heard.packets.size(), 10) << what;
        EXPECT_TRUE(heard.packets == expected.packets) << what;
    }
}

TEST(SoundFilesTest, HaveNoPacketBeyondTheirFragment)
{
    QByteArray file =
        soundFile("a.mp4", {"-frag_duration", "300000", "-movflags", "+frag_keyframe+empty_moov"});
    const ParsedFile original(file, file.size());
    const qsizetype size = file.indexOf("mdat") - 4;
    const auto bytes = qFromBigEndian<quint32>(file.constData() + size);
    file.replace(size, 4, bigEndian(bytes - 10, 4));
    const ParsedFile whole(file, file.size());
    EXPECT_TRUE(whole.packets == ParsedFile(file, 1).packets);
    EXPECT_EQ(whole.packets, original.packets.first(whole.packets.size()));
    EXPECT_FALSE(whole.packets.isEmpty());
    EXPECT_LE(whole.packets.join().size(), bytes - 8 - 10);
}

TEST(SoundFilesTest, RefuseWhatCanNotBeTrue)
{
    const QByteArray m4a = soundFile("a.m4a", {"-movflags", "+faststart"});
    const QByteArray wave = soundFile("a.wav", {});
    const std::pair<const char *, QByteArray> cases[] = {
        {"more sizes than there are", patched(m4a, "stsz", 8, bigEndian(0xFFFFFFFF, 4))},
        {"as many of one size",
         patched(patched(m4a, "stsz", 8, bigEndian(0xFFFFFFFF, 4)), "stsz", 4, bigEndian(1, 4))},
        {"a big packet", patched(m4a, "stsz", 12, bigEndian(0x7FFFFFFF, 4))},
        {"more chunks than there are", patched(m4a, "stco", 4, bigEndian(0x7FFFFFFF, 4))},
        {"no chunk", patched(m4a, "stco", 4, bigEndian(0, 4))},
        {"more spans than there are", patched(m4a, "stsc", 4, bigEndian(0x7FFFFFFF, 4))},
        {"a first span that is not of the first chunk", patched(m4a, "stsc", 8, bigEndian(2, 4))},
        {"no units a second", patched(m4a, "mdhd", 12, bigEndian(0, 4))},
        {"a long index", patched(m4a, "moov", -8, bigEndian(0x7FFFFFFF, 4))},
        {"a box that is shorter than its header", patched(m4a, "moov", -8, bigEndian(7, 4))},
        {"another codec", patched(m4a, "mp4a", -4, bigEndian(0, 4))},
        {"another codec in its descriptor", patched(m4a, "esds", 17, bigEndian(0x6B, 1))},
        {"no channels", patched(wave, "fmt ", 6, bigEndian(0, 2))},
        {"no rate", patched(wave, "fmt ", 8, bigEndian(0, 4))},
        {"no bits", patched(wave, "fmt ", 18, bigEndian(0, 2))},
        {"another codec", patched(wave, "fmt ", 4, bigEndian(0x5500, 2))},
        {"no format", patched(wave, "fmt ", -4, bigEndian(0, 4))},
    };
    for (const auto &[what, file] : cases) {
        ParsedFile parsed;
        parsed.push(file, 1000);
        EXPECT_FALSE(parsed.isUnderstood) << what;
        EXPECT_TRUE(parsed.packets.isEmpty() && parsed.properties.empty()) << what;
    }
}
