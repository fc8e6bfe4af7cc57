#include "ParsedFile.h"
#include "support/EncodedTone.h"

#include <gtest/gtest.h>
#include <random>

using namespace orvel;
using orvel::test::EncodedTone;
using orvel::test::encodeTone;
using orvel::test::ParsedFile;

namespace {

QByteArrayList packetsOf(const EncodedTone &tone)
{
    QByteArrayList packets;
    for (const AudioStreamPacketDescription &packet : tone.packets)
        packets << tone.bytes.sliced(packet.startOffset, packet.dataByteSize);
    return packets;
}

QByteArray randomBytes(int size, quint32 seed)
{
    std::minstd_rand random(seed);
    QByteArray bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(random() >> 8);
    return bytes;
}

// A tag with `body` bytes of picture, among them what looks like two frames.
QByteArray id3v2(qsizetype body, bool hasFooter = false)
{
    QByteArray tag("ID3\x04\0", 5);
    tag += hasFooter ? '\x10' : '\0';
    for (int shift = 21; shift >= 0; shift -= 7)
        tag += char(body >> shift & 0x7F);
    QByteArray picture(body, '\x11');
    for (const qsizetype at : {100, 517, 934})
        picture.replace(at, 4, "\xFF\xFB\x90\x64");
    return tag + picture + (hasFooter ? "3DI" + tag.sliced(3) : QByteArray());
}

const QByteArray falseHeader("\xFF\xF1\x50\x83\xFF\xFF\xFC", 7); // of an ADTS frame of 8,191 bytes

const std::vector<int> chunkings = {1, 7, 300, 4096, 200000};

} // namespace

TEST(AudioFileStreamTest, FindsTheFramesThatWereEncodedAndWhatTheyDecodeTo)
{
    using enum AudioFormat;
    using enum AudioFileStreamProperty;
    const test::ToneRequest requests[] = {
        {mpegLayer3, 44100, 2, 128000, 2}, {mpegLayer3, 48000, 1, 320000, 1},
        {mpegLayer3, 22050, 2, 64000, 1},  {mpegLayer3, 8000, 1, 16000, 1},
        {mpeg4Aac, 44100, 2, 96000, 2},    {mpeg4Aac, 22050, 1, 32000, 1},
        {mpeg4Aac, 48000, 6, 256000, 1}};
    std::vector<std::pair<EncodedTone, std::vector<AudioStreamBasicDescription>>>
        cases; // and the format list
    for (const test::ToneRequest &request : requests)
        cases.push_back({encodeTone(request), {}});
    for (const quint32 channels : {1u, 2u}) {
        const EncodedTone core = encodeTone({mpeg4Aac, 22050, int(channels), 48000, 2});
        const AudioStreamBasicDescription highEfficiency{.sampleRate = 44100,
                                                         .format = channels == 1 ? mpeg4AacHeV2 : mpeg4AacHe,
                                                         .framesPerPacket = 2048,
                                                         .channelsPerFrame = 2};
        cases.push_back({withBandReplication(core), {highEfficiency, core.format}});
    }
    for (const auto &[tone, formats] : cases) {
        SCOPED_TRACE(testing::Message() << quint32(tone.format.format) << " " << tone.format.sampleRate);
        ASSERT_GT(tone.packets.size(), 10u);
        for (const int chunk : chunkings) {
            const ParsedFile heard(tone.bytes, chunk, AudioFileType::kAudioFileMP3Type);
            EXPECT_EQ(heard.packets, packetsOf(tone)) << chunk;
            EXPECT_EQ(heard.stream->dataFormat(), tone.format);
            EXPECT_EQ(heard.stream->formatList(), formats);
            std::vector expected{DataFormat, FormatList, DataOffset, ReadyToProducePackets};
            if (formats.empty())
                expected.erase(expected.begin() + 1);
            EXPECT_EQ(heard.properties, expected);
        }
    }
}

TEST(AudioFileStreamTest, HandsAPacketOnWithItsLastByteOnceInStep)
{
    const EncodedTone tone = encodeTone({.seconds = 0.2});
    ParsedFile heard;
    qsizetype whole = 0;
    for (const QByteArray &packet : packetsOf(tone)) {
        EXPECT_EQ(heard.push(packet.chopped(1), 1000).packets.size(), whole);
        EXPECT_EQ(heard.push(packet.last(1), 1).packets.size(), whole == 0 ? 0 : whole + 1);
        ++whole;
    }
}

TEST(AudioFileStreamTest, ATrueFrameDoesNotWaitForWhatAFalseOneBeforeItClaims)
{
    const EncodedTone tone = encodeTone({.format = AudioFormat::mpeg4Aac, .seconds = 0.5});
    ParsedFile heard;
    heard.push(falseHeader + tone.bytes.first(tone.packets[3].startOffset), 4096);
    EXPECT_EQ(heard.packets, packetsOf(tone).first(3));
}

TEST(AudioFileStreamTest, HandsOnAtTheEndWhatWaitedForMore)
{
    const EncodedTone mp3 = encodeTone({.seconds = 0.2});
    const EncodedTone lowRate =
        encodeTone({AudioFormat::mpeg4Aac, 22050, 2, 48000, 0.2}); // might be HE-AAC's core
    for (const QByteArray &packet : packetsOf(mp3).last(2)) {
        EXPECT_EQ(ParsedFile(packet, 100).packets, QByteArrayList{packet});
        EXPECT_EQ(ParsedFile(packet.chopped(1), 100).packets, QByteArrayList());
    }
    for (const qsizetype count : {1, 3}) {
        const QByteArrayList packets = packetsOf(lowRate).first(count);
        const ParsedFile heard(packets.join(), 100);
        EXPECT_EQ(heard.packets, packets);
        EXPECT_EQ(heard.stream->dataFormat(), lowRate.format);
    }
}

TEST(AudioFileStreamTest, SeeksByTheMeanSizeOfThePacketsSoFar)
{
    const EncodedTone tone = encodeTone({AudioFormat::mpeg4Aac, 44100, 2, 96000, 5});
    const QByteArrayList packets = packetsOf(tone);
    ParsedFile heard;
    EXPECT_FALSE(heard.stream->seek(1));
    heard.push(tone.bytes.first(tone.packets[101].startOffset - 1), 4096); // the last one is partial
    const auto offset = heard.stream->seek(150);
    ASSERT_TRUE(offset);
    EXPECT_TRUE(heard.stream->dataOffset() == 0);
    EXPECT_TRUE(offset->isEstimated);
    EXPECT_EQ(offset->byteOffset, tone.packets[100].startOffset * 3 / 2);
    // What was unfinished, here also a tag, is not waited for.
    heard.jump(tone.bytes + id3v2(100000).first(50), tone.packets[100].startOffset);
    EXPECT_TRUE(heard.packets == packets.sliced(100));
    heard.jump(tone.bytes, 0).stream->finish();
    EXPECT_TRUE(heard.packets == packets);
}

TEST(AudioFileStreamTest, FindsNoPacketInWhatIsNoSound)
{
    const QByteArray frame("\xFF\xFB\x90\x64", 4); // 417 bytes, with the next one missing
    const QByteArray freeFormat = QByteArray("\xFF\xFB\x00\x64", 4) + QByteArray(413, 'x');
    const QByteArray page = "<html><body>\xFF\xF1 not here</body></html>";
    for (const QByteArray &bytes : {randomBytes(2000000, 5), page.repeated(3000), QByteArray(100000, '\xFF'),
                                    (frame + QByteArray(500, 'x')).repeated(50), freeFormat.repeated(50),
                                    QByteArray("ID3"), QByteArray()}) {
        for (const int chunk : {4096, 200000}) {
            const ParsedFile heard(bytes, chunk);
            EXPECT_TRUE(heard.packets.isEmpty());
            EXPECT_EQ(heard.isUnderstood, bytes.size() <= 256 * 1024);
            EXPECT_TRUE(heard.properties.empty());
        }
    }
}

TEST(AudioFileStreamTest, SkipsTagsAndGarbageAndComesBackInStep)
{
    const EncodedTone first = encodeTone({.seconds = 0.5});
    const EncodedTone other = encodeTone({.sampleRate = 48000, .seconds = 0.5});
    const EncodedTone aac = encodeTone({.format = AudioFormat::mpeg4Aac, .seconds = 0.5});
    const QByteArrayList packets = packetsOf(first);
    const QByteArray id3v1 = "TAG" + QByteArray(125, '\xFF');
    struct
    {
        const char *name;
        QByteArray bytes;
        QByteArrayList expected;
    } const cases[] = {
        {"a big tag in front", id3v2(300000) + first.bytes, packets},
        {"two tags in front", id3v2(2000, true) + id3v2(1000) + first.bytes, packets},
        {"tags between", first.bytes + id3v1 + id3v2(3000) + first.bytes, packets + packets},
        {"joined in the middle of a frame", first.bytes.sliced(100), packets.sliced(1)},
        {"garbage in front and between",
         randomBytes(5000, 1) + first.bytes + randomBytes(9000, 2) + first.bytes, packets + packets},
        {"a tag behind the first frame", packets[0] + id3v2(3000) + first.bytes, packets.first(1) + packets},
        {"a tag behind the only frame", packets[0] + id3v1, packets.first(1)},
        {"what claims to be a long frame in front", falseHeader + aac.bytes + aac.bytes.first(300),
         packetsOf(aac)},
        {"another sample rate after it", first.bytes + other.bytes, packets + packetsOf(other)},
        {"another kind between", first.bytes + aac.bytes + first.bytes, packets + packets},
    };
    for (const auto &[name, bytes, expected] : cases)
        for (const int chunk : chunkings) {
            const ParsedFile heard(bytes, chunk);
            EXPECT_TRUE(heard.packets == expected && heard.isUnderstood)
                << name << ", chunks up to " << chunk;
        }
}
