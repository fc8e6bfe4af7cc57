#include "demo/SoundFile.h"

#include "demo/Encoder.h"
#include "demo/Synth.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cmath>

namespace orvel::demo {

namespace {

constexpr double seconds = 30;
constexpr int channels = 2;
constexpr int sampleBytes = 2;
constexpr int frameBytes = channels * sampleBytes;
constexpr quint32 packetFrames = 1024;  // of AAC
constexpr quint32 primingFrames = 1024; // that the encoder puts in front

template<typename Number>
QByteArray big(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

template<typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// Whole frames, as a stream has them.
QList<QByteArray> encoded(Programme programme, Codec codec)
{
    programme.codec = codec;
    QList<QByteArray> frames;
    const auto encoder = Encoder::open(programme, 0);
    for (double time = 0; encoder && time < seconds;) {
        const Frame frame = encoder->next();
        if (frame.bytes.isEmpty())
            break;
        time += frame.seconds;
        frames << frame.bytes;
    }
    return frames;
}

// Samples of 16 bits.
QByteArray samples(const Programme &programme, std::endian order)
{
    const auto count = std::size_t(seconds * Synth::sampleRate);
    std::vector<float> left(count), right(count);
    Synth(programme.music).render(left, right);
    QByteArray bytes(qsizetype(count) * frameBytes, Qt::Uninitialized);
    char *at = bytes.data();
    for (std::size_t i = 0; i < count; ++i) {
        for (const float sample : {left[i], right[i]}) {
            const auto value = qint16(std::lround(std::clamp(sample, -1.0F, 1.0F) * 32767));
            order == std::endian::big ? qToBigEndian(value, at) : qToLittleEndian(value, at);
            at += sampleBytes;
        }
    }
    return bytes;
}

QByteArray wave(const QByteArray &sound)
{
    const QByteArray format = little(quint16(1)) + little(quint16(channels)) +
                              little(quint32(Synth::sampleRate)) +
                              little(quint32(Synth::sampleRate * frameBytes)) + little(quint16(frameBytes)) +
                              little(quint16(sampleBytes * 8));
    const QByteArray body =
        "WAVEfmt " + little(quint32(format.size())) + format + "data" + little(quint32(sound.size())) + sound;
    return "RIFF" + little(quint32(body.size())) + body;
}

QByteArray aiff(const QByteArray &sound)
{
    const auto chunk = [](const char *name, const QByteArray &content) {
        return name + big(quint32(content.size())) + content;
    };
    // The rate is a number of 80 bits.
    const QByteArray rate = big(quint16(16383 + 15)) + big(quint64(Synth::sampleRate) << 48);
    const QByteArray common = big(quint16(channels)) + big(quint32(sound.size() / frameBytes)) +
                              big(quint16(sampleBytes * 8)) + rate;
    return chunk("FORM", "AIFF" + chunk("COMM", common) + chunk("SSND", QByteArray(8, '\0') + sound));
}

QByteArray box(const char *name, const QByteArray &content)
{
    return big(quint32(content.size() + 8)) + name + content;
}

QByteArray fullBox(const char *name, const QByteArray &content)
{
    return box(name, big(quint32(0)) + content);
}

QByteArray zeros(int count) { return QByteArray(count, '\0'); }

QByteArray sampleEntry()
{
    // ISO/IEC 14496-1: an ES descriptor of AAC-LC at 44.1 kHz in stereo.
    const QByteArray decoder = QByteArray::fromHex("04114015000000000000000000000005021210");
    const QByteArray descriptor = "\x03" + QByteArray(1, char(3 + decoder.size() + 3)) + zeros(3) + decoder +
                                  QByteArray::fromHex("060102");
    return box("mp4a", zeros(6) + big(quint16(1)) + zeros(8) + big(quint16(channels)) +
                           big(quint16(sampleBytes * 8)) + zeros(4) + big(quint32(Synth::sampleRate) << 16) +
                           fullBox("esds", descriptor));
}

// ISO/IEC 14496-12 and -14: one track in one chunk, behind its index.
QByteArray mpeg4(const QList<QByteArray> &frames)
{
    constexpr qsizetype adtsHeaderSize = 7;
    QByteArray sizes, sound;
    for (const QByteArray &frame : frames) {
        sizes += big(quint32(frame.size() - adtsHeaderSize));
        sound += frame.sliced(adtsHeaderSize);
    }
    const auto count = quint32(frames.size());
    const quint32 length = count * packetFrames;
    const QByteArray matrix = big(0x10000) + zeros(12) + big(0x10000) + zeros(12) + big(0x40000000);
    const QByteArray begin = box("ftyp", "M4A " + zeros(4) + "M4A isom");
    const auto index = [&](quint32 offset) {
        const QByteArray table = fullBox("stsd", big(1) + sampleEntry()) +
                                 fullBox("stts", big(1) + big(count) + big(packetFrames)) +
                                 fullBox("stsc", big(1) + big(1) + big(count) + big(1)) +
                                 fullBox("stsz", big(0) + big(count) + sizes) +
                                 fullBox("stco", big(1) + big(offset));
        const QByteArray source = box("dinf", fullBox("dref", big(1) + box("url ", big(1))));
        const QByteArray media = fullBox("mdhd", zeros(8) + big(Synth::sampleRate) + big(length) +
                                                     big(quint16(0x55C4)) + zeros(2)) +
                                 fullBox("hdlr", zeros(4) + "soun" + zeros(13)) +
                                 box("minf", fullBox("smhd", zeros(4)) + source + box("stbl", table));
        const quint32 heard = length - primingFrames;
        const QByteArray edits = fullBox("elst", big(1) + big(heard) + big(primingFrames) + big(0x10000));
        const QByteArray track =
            box("tkhd", big(7) + zeros(8) + big(1) + zeros(4) + big(heard) + zeros(8) + zeros(4) +
                            big(quint16(0x0100)) + zeros(2) + matrix + zeros(8)) +
            box("edts", edits) + box("mdia", media);
        const QByteArray movie = zeros(8) + big(Synth::sampleRate) + big(heard) + big(0x10000) +
                                 big(quint16(0x0100)) + zeros(10) + matrix + zeros(24) + big(2);
        return box("moov", fullBox("mvhd", movie) + box("trak", track));
    };
    const auto offset = quint32(begin.size() + index(0).size() + 8);
    return begin + index(offset) + box("mdat", sound);
}

} // namespace

QByteArray soundFile(const Programme &programme, const QString &type)
{
    if (type == u"mp3")
        return encoded(programme, Codec::Mp3).join();
    if (type == u"aac")
        return encoded(programme, Codec::Aac).join();
    if (type == u"m4a")
        return mpeg4(encoded(programme, Codec::Aac));
    if (type == u"wav")
        return wave(samples(programme, std::endian::little));
    if (type == u"aiff")
        return aiff(samples(programme, std::endian::big));
    return {};
}

} // namespace orvel::demo
