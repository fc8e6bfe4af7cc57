#include "platform/media/parse/AudioFrameHeader.h"

#include <array>

namespace orvel {

namespace {

std::optional<AudioFrameHeader> readLayer3Header(quint32 word)
{
    static constexpr std::array<quint32, 15> kilobits1 = {0,   32,  40,  48,  56,  64,  80, 96,
                                                          112, 128, 160, 192, 224, 256, 320};
    static constexpr std::array<quint32, 15> kilobits2 = {0,  8,  16, 24,  32,  40,  48, 56,
                                                          64, 80, 96, 112, 128, 144, 160};
    static constexpr std::array<quint32, 3> rates = {44100, 48000, 32000};
    static constexpr quint32 sharedBits = 0xFFFE0C00; // sync word, version, layer, sample rate

    const quint32 version = word >> 19 & 3; // 0: MPEG 2.5, 2: MPEG 2, 3: MPEG 1
    const quint32 bitrateIndex = word >> 12 & 15;
    const quint32 rateIndex = word >> 10 & 3;
    if (version == 1 || bitrateIndex == 0 || bitrateIndex == 15 || rateIndex == 3)
        return std::nullopt;
    const bool mpeg1 = version == 3;
    const quint32 bitrate = 1000 * (mpeg1 ? kilobits1 : kilobits2)[bitrateIndex];
    const quint32 sampleRate = rates[rateIndex] >> (mpeg1 ? 0 : version == 2 ? 1 : 2);
    const quint32 padding = word >> 9 & 1;
    return AudioFrameHeader{.key = word & sharedBits,
                            .size = (mpeg1 ? 144 : 72) * bitrate / sampleRate + padding,
                            .sampleRate = sampleRate,
                            .channels = (word >> 6 & 3) == 3 ? 1u : 2u,
                            .framesPerPacket = mpeg1 ? 1152u : 576u,
                            .format = AudioFormat::mpegLayer3};
}

std::optional<AudioFrameHeader> readAdtsHeader(quint32 word, const quint8 *bytes)
{
    static constexpr std::array<quint32, 13> rates = {96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                                      22050, 16000, 12000, 11025, 8000,  7350};
    static constexpr std::array<quint32, 8> channels = {0, 1, 2, 3, 4, 5, 6, 8};
    static constexpr quint32 sharedBits =
        0xFFFEFDC0; // sync word, version, layer, profile, sample rate, channels

    const quint32 rateIndex = word >> 10 & 15;
    const quint32 size = (word & 3) << 11 | quint32(bytes[4]) << 3 | quint32(bytes[5]) >> 5;
    const bool checked = (word >> 16 & 1) == 0;
    if (rateIndex >= rates.size() || size <= (checked ? 9u : 7u))
        return std::nullopt;
    const quint32 blocks = (bytes[6] & 3u) + 1;
    return AudioFrameHeader{.key = word & sharedBits,
                            .size = size,
                            .sampleRate = rates[rateIndex],
                            .channels = channels[word >> 6 & 7],
                            .framesPerPacket = 1024 * blocks,
                            .format = AudioFormat::mpeg4Aac};
}

} // namespace

std::optional<AudioFrameHeader> readAudioFrameHeader(QByteArrayView bytes)
{
    if (bytes.size() < audioFrameHeaderBytes)
        return std::nullopt;
    const auto *at = reinterpret_cast<const quint8 *>(bytes.data());
    const quint32 word = quint32(at[0]) << 24 | quint32(at[1]) << 16 | quint32(at[2]) << 8 | quint32(at[3]);
    if ((word & 0xFFE60000) == 0xFFE20000)
        return readLayer3Header(word);
    if ((word & 0xFFF60000) == 0xFFF00000)
        return readAdtsHeader(word, at);
    return std::nullopt;
}

} // namespace orvel
