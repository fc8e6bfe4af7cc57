#include "platform/media/parse/XingHeader.h"

#include "platform/media/parse/ByteReader.h"

#include <algorithm>
#include <array>

namespace orvel {

namespace {

constexpr quint32 decoderDelay = 528 + 1; // frames that a decoder adds in front

qsizetype sideInformationEnd(const AudioFrameHeader &header)
{
    const bool mpeg1 = header.framesPerPacket == 1152;
    if (header.channels == 1)
        return mpeg1 ? 21 : 13;
    return mpeg1 ? 36 : 21;
}

bool isKnownEncoder(QByteArrayView version)
{
    static constexpr std::array<const char *, 3> names = {"LAME", "Lavf", "Lavc"};
    return std::ranges::any_of(names, [version](const char *name) { return version.startsWith(name); });
}

} // namespace

std::optional<XingHeader> readXingHeader(QByteArrayView frame, const AudioFrameHeader &header)
{
    enum Field : quint32 { Frames = 1, Bytes = 2, TableOfContents = 4, Quality = 8 };

    if (header.format != AudioFormat::mpegLayer3)
        return std::nullopt;
    ByteReader reader(frame);
    reader.skip(quint64(sideInformationEnd(header)));
    const quint32 mark = reader.code();
    if (mark != fourCharacterCode("Xing") && mark != fourCharacterCode("Info"))
        return std::nullopt;
    XingHeader xing;
    const quint32 fields = reader.u32();
    const quint32 packets = fields & Frames ? reader.u32() : 0;
    if (fields & Bytes)
        xing.byteCount = reader.u32();
    reader.skip((fields & TableOfContents ? 100u : 0u) + (fields & Quality ? 4u : 0u));
    const QByteArrayView version = reader.take(9);
    reader.skip(12); // method, low pass, gains, flags, bit rate
    const quint32 delays = reader.u32() >> 8;
    if (isKnownEncoder(version)) {
        const quint32 delay = delays >> 12;
        const qint64 valid = qint64(packets) * header.framesPerPacket - delay - (delays & 0xFFF);
        xing.trim = {.primingFrames = delay + decoderDelay,
                     .validFrames = valid > 0 ? std::optional(valid) : std::nullopt};
    }
    return xing;
}

} // namespace orvel
