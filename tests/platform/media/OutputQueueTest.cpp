#include "platform/media/SoundOutput.h"

#include "platform/media/AudioDeviceChoice.h"

#include "EncodedTone.h"
#include "ToneFeeder.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/media/FfmpegHandles.h"
#include "support/TestLoop.h"

#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace orvel;
using namespace orvel::test;

namespace {

// What SDL's disk driver writes, as fast as it comes, while an object of this class lives.
class CapturedSound
{
public:
    CapturedSound()
    {
        joinOutputQueues(); // SDL remembers its driver
        qputenv("SDL_AUDIODRIVER", "disk");
        qputenv("SDL_DISKAUDIODELAY", "0");
        qputenv("SDL_DISKAUDIOFILE", m_folder.filePath("sound.raw").toLocal8Bit());
    }
    ~CapturedSound()
    {
        joinOutputQueues();
        qputenv("SDL_DISKAUDIOFILE", "/dev/null");
        qunsetenv("SDL_DISKAUDIODELAY");
    }
    std::vector<float> samples() const
    {
        joinOutputQueues();
        QFile file(m_folder.filePath("sound.raw"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const auto *first = reinterpret_cast<const float *>(bytes.constData());
        return {first, first + std::size_t(bytes.size()) / sizeof(float)};
    }

private:
    QTemporaryDir m_folder;
};

// libavcodec's own samples, interleaved.
std::vector<float> decoded(const EncodedTone &tone)
{
    const bool mp3 = tone.format.format == AudioFormat::mpegLayer3;
    const AVCodec *codec = avcodec_find_decoder(mp3 ? AV_CODEC_ID_MP3 : AV_CODEC_ID_AAC);
    const CodecContext context(avcodec_alloc_context3(codec));
    avcodec_open2(context.get(), codec, nullptr);
    const Packet packet(av_packet_alloc());
    const Frame frame(av_frame_alloc());
    std::vector<float> samples;
    for (const AudioStreamPacketDescription &description : tone.packets) {
        av_new_packet(packet.get(), int(description.dataByteSize));
        std::copy_n(tone.bytes.constData() + description.startOffset, description.dataByteSize, packet->data);
        avcodec_send_packet(context.get(), packet.get());
        av_packet_unref(packet.get());
        while (avcodec_receive_frame(context.get(), frame.get()) == 0)
            for (int i = 0; i < frame->nb_samples; ++i)
                for (int c = 0; c < frame->ch_layout.nb_channels; ++c)
                    samples.push_back(reinterpret_cast<const float *>(frame->extended_data[c])[i]);
    }
    return samples;
}

EncodedTone pcmTone()
{
    EncodedTone tone{.format = {.sampleRate = 32000,
                                .format = AudioFormat::linearPcm,
                                .bytesPerPacket = 4,
                                .framesPerPacket = 1,
                                .channelsPerFrame = 2,
                                .bitsPerChannel = 16}};
    for (int i = 0; i < 40000; ++i) {
        const qint16 pair[] = {qint16(10000 * std::sin(i * 0.05)), qint16(1 + i % 1000)};
        tone.packets.push_back({.startOffset = tone.bytes.size(), .dataByteSize = 4});
        tone.bytes.append(reinterpret_cast<const char *>(pair), 4);
    }
    return tone;
}

std::vector<float> pcmSamples(const EncodedTone &tone)
{
    std::vector<float> samples;
    const auto *values = reinterpret_cast<const qint16 *>(tone.bytes.constData());
    for (qsizetype i = 0; i < tone.bytes.size() / 2; ++i)
        samples.push_back(float(values[i]) / 32768.f);
    return samples;
}

// The captured sound has silence before and after; between, it is `expected` times `volume` to within -120 dB
// of full scale, sample for sample.
void expectSound(const std::vector<float> &captured, const std::vector<float> &expected, float volume = 1)
{
    const auto isSound = [](float sample) { return sample != 0; };
    const auto first = std::find_if(expected.begin(), expected.end(), isSound);
    const auto heard = std::find_if(captured.begin(), captured.end(), isSound);
    const auto count = expected.end() - first;
    ASSERT_GT(count, 1000);
    ASSERT_GE(captured.end() - heard, count);
    float worst = 0;
    for (auto i = 0; i < count; ++i)
        worst = std::max(worst, std::abs(heard[i] - volume * first[i]));
    EXPECT_LE(20 * std::log10(worst), -120);
    EXPECT_TRUE(std::none_of(heard + count, captured.end(), isSound));
}

const ToneRequest radio{.bitrate = 128000, .seconds = 20};

} // namespace

TEST(OutputQueueTest, PlaysWhatTheDecoderGivesWithoutGapOrLoss)
{
    const EncodedTone pcm = pcmTone();
    const EncodedTone core = encodeTone({AudioFormat::mpeg4Aac, 22050, 1, 40000, 3});
    EncodedTone highEfficiency = withBandReplication(core, 0);
    highEfficiency.format.format = AudioFormat::mpeg4AacHeV2;
    struct
    {
        const char *name;
        EncodedTone tone;
        std::vector<float> expected;
    } cases[] = {
        {"MP3", encodeTone(radio), {}},
        {"MPEG 2.5 MP3, mono", encodeTone({AudioFormat::mpegLayer3, 8000, 1, 16000, 3}), {}},
        {"AAC", encodeTone({AudioFormat::mpeg4Aac, 48000, 2, 96000, 5}), {}},
        {"AAC at half the rate, mono", core, {}},
        {"HE-AAC", highEfficiency, {}},
        {"PCM", pcm, pcmSamples(pcm)},
    };
    for (auto &[name, tone, expected] : cases) {
        SCOPED_TRACE(name);
        if (expected.empty())
            expected = decoded(tone);
        const CapturedSound sound;
        ToneFeeder feeder(tone);
        feeder.play();
        ASSERT_TRUE(feeder.waitForTheEnd());
        EXPECT_EQ(feeder.packetsLeft(), 0u);
        expectSound(sound.samples(), expected);
    }
}

TEST(OutputQueueTest, PauseKeepsWhatIsQueuedAndVolumeScalesIt)
{
    const EncodedTone tone = encodeTone(radio);
    const CapturedSound sound;
    ToneFeeder feeder(tone);
    std::vector<OutputBuffer *> order;
    std::atomic<int> pauses = 0;
    std::atomic<bool> isPausing = true;
    feeder.onCallback = [&](OutputBuffer &buffer) {
        order.push_back(&buffer);
        if (isPausing && order.size() % 5 == 0) {
            ++pauses;
            feeder.queue->pause();
        }
        feeder.queue->flush();
    };
    feeder.queue->setVolume(0.25f);
    feeder.play();
    int resumed = 0;
    ASSERT_TRUE(waitUntil([&] {
        for (; resumed < pauses; ++resumed)
            feeder.queue->start();
        return feeder.packetsLeft() == 0;
    }));
    isPausing = false;
    feeder.queue->start();
    feeder.queue->stop(false);
    ASSERT_TRUE(feeder.waitForTheEnd());
    expectSound(sound.samples(), decoded(tone), 0.25f);
    EXPECT_GT(resumed, 5);
    for (std::size_t i = 0; i < order.size(); ++i)
        EXPECT_EQ(order[i], feeder.buffers[i % 3]);
}

TEST(OutputQueueTest, PassesOverBrokenPackets)
{
    EncodedTone tone = encodeTone({.seconds = 3});
    std::minstd_rand random(3);
    for (std::size_t i = 10; i < tone.packets.size(); i += 7)
        for (quint32 byte = 0; byte < tone.packets[i].dataByteSize; ++byte)
            tone.bytes[tone.packets[i].startOffset + byte] = char(random() >> 8);
    const CapturedSound sound;
    ToneFeeder feeder(tone);
    feeder.play();
    ASSERT_TRUE(feeder.waitForTheEnd());
    expectSound(sound.samples(), decoded(tone));
}

TEST(OutputQueueTest, GoesOnAtTheDevicesRateWhenTheStreamsChanges)
{
    EncodedTone tone = encodeTone({.seconds = 1});
    const EncodedTone other = encodeTone({.sampleRate = 32000, .channels = 1, .seconds = 1});
    const std::size_t expected = decoded(tone).size() + 2 * decoded(other).size() * 441 / 320;
    for (AudioStreamPacketDescription packet : other.packets) {
        packet.startOffset += tone.bytes.size();
        tone.packets.push_back(packet);
    }
    tone.bytes += other.bytes;
    const CapturedSound sound;
    ToneFeeder feeder(tone);
    feeder.play();
    ASSERT_TRUE(feeder.waitForTheEnd());
    const std::vector<float> captured = sound.samples();
    const auto heard = std::count_if(captured.begin(), captured.end(), [](float s) { return s != 0; });
    EXPECT_NEAR(double(heard), double(expected), 4000); // the encoders' lead-in is silent
}

TEST(OutputQueueTest, StopsAtOnceAndStartsAnew)
{
    const EncodedTone tone = encodeTone({.seconds = 30});
    qputenv("ORVEL_AUDIO_DEVICE", "null");
    std::vector<OutputBuffer *> returned;
    std::vector<bool> running;
    std::atomic<int> changes = 0;
    {
        const auto queue = newOutputQueue(
            tone.format, [&](OutputQueue &, OutputBuffer &buffer) { returned.push_back(&buffer); });
        queue->addIsRunningListener([&](OutputQueue &, bool isRunning) {
            running.push_back(isRunning);
            ++changes;
        });
        OutputBuffer *buffers[2];
        for (OutputBuffer *&buffer : buffers) {
            buffer = queue->allocateBuffer(quint32(tone.bytes.size()));
            buffer->data = tone.bytes;
            buffer->byteSize = buffer->capacity();
        }
        for (int round = 1; round <= 2; ++round) {
            for (OutputBuffer *buffer : buffers)
                EXPECT_TRUE(queue->enqueueBuffer(*buffer, tone.packets));
            EXPECT_TRUE(queue->start());
            ASSERT_TRUE(waitUntil([&] { return changes == 2 * round - 1; }));
            queue->stop(true);
            ASSERT_TRUE(waitUntil([&] { return changes == 2 * round; }));
        }
        queue->dispose();
        EXPECT_FALSE(queue->start());
        EXPECT_FALSE(queue->enqueueBuffer(*buffers[0], tone.packets));
    }
    joinOutputQueues();
    EXPECT_EQ(running, (std::vector{true, false, true, false}));
    ASSERT_EQ(returned.size(), 4u);
    EXPECT_EQ(returned[0], returned[2]);
    EXPECT_EQ(returned[1], returned[3]);
    qunsetenv("ORVEL_AUDIO_DEVICE");
}

TEST(OutputQueueTest, WithoutADeviceKeepsTheTimeAndSaysSoOnce)
{
    joinOutputQueues();
    qputenv("SDL_AUDIODRIVER", "there is no such driver");
    static int told = 0;
    NotificationCentre::defaultCentre().addObserver(&told, noSoundDeviceNotification,
                                                    [&](const Notification &) { ++told; });
    const EncodedTone tone = encodeTone({.seconds = 1});
    for (int round = 0; round < 2; ++round) {
        ToneFeeder feeder(tone);
        const auto before = std::chrono::steady_clock::now();
        feeder.play();
        ASSERT_TRUE(feeder.waitForTheEnd());
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - before;
        const double played = double(tone.packets.size()) * tone.format.framesPerPacket;
        EXPECT_GE(taken.count(), played / tone.format.sampleRate);
        EXPECT_TRUE(waitUntil([&] { return std::abs(feeder.queue->currentTime() - played) < 1; }));
    }
    letEventsRun();
    EXPECT_EQ(told, 1);
    NotificationCentre::defaultCentre().removeObserver(&told);
    qputenv("SDL_AUDIODRIVER", "disk");
}

TEST(OutputQueueTest, RefusesWhatMakesNoSense)
{
    const auto ignore = [](OutputQueue &, OutputBuffer &) {};
    using enum AudioFormat;
    const AudioStreamBasicDescription nonsense[] = {
        {},
        {.sampleRate = 0, .format = mpegLayer3, .channelsPerFrame = 2},
        {.sampleRate = std::nan(""), .format = mpegLayer3, .channelsPerFrame = 2},
        {.sampleRate = INFINITY, .format = mpeg4Aac, .channelsPerFrame = 2},
        {.sampleRate = 44100, .format = mpeg4Aac, .channelsPerFrame = 0},
        {.sampleRate = 44100, .format = mpeg4Aac, .channelsPerFrame = 4000},
        {.sampleRate = 44100,
         .format = linearPcm,
         .bytesPerPacket = 6,
         .framesPerPacket = 1,
         .channelsPerFrame = 2,
         .bitsPerChannel = 24},
    };
    for (const AudioStreamBasicDescription &format : nonsense)
        EXPECT_EQ(newOutputQueue(format, ignore), nullptr);

    const auto queue =
        newOutputQueue({.sampleRate = 44100, .format = mpegLayer3, .channelsPerFrame = 2}, ignore);
    OutputBuffer &buffer = *queue->allocateBuffer(1000);
    buffer.byteSize = 900;
    const AudioStreamPacketDescription wrong[] = {
        {-1, 0, 10}, {901, 0, 0}, {800, 0, 101}, {0, 0, 0xFFFFFFFF}};
    for (const AudioStreamPacketDescription &packet : wrong)
        EXPECT_FALSE(queue->enqueueBuffer(buffer, {&packet, 1}));
    EXPECT_FALSE(queue->enqueueBuffer(buffer, {}));
    buffer.byteSize = 1001;
    const AudioStreamPacketDescription whole{0, 0, 1001};
    EXPECT_FALSE(queue->enqueueBuffer(buffer, {&whole, 1}));
    queue->dispose();
    joinOutputQueues();
}
