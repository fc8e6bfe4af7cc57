#include "platform/media/parse/Mpeg4Movie.h"

#include "platform/media/parse/Mpeg4Box.h"
#include "platform/media/parse/Mpeg4SampleEntry.h"
#include "platform/media/parse/Mpeg4SampleTable.h"
#include "platform/media/parse/Mpeg4Trim.h"

#include <algorithm>

namespace orvel {

namespace {

// Reads the field behind two times that are longer in a later version: a track's number, or units a second.
quint32 fieldBehindTimes(QByteArrayView body)
{
    ByteReader reader(body);
    reader.skip(Mpeg4BoxVersion(reader).version == 1 ? 16 : 8);
    return reader.u32();
}

// The biggest packets that an encoder may make.
quint32 packetBound(const AudioStreamBasicDescription &format)
{
    constexpr quint32 aacBytesPerChannel = 6144 / 8;
    constexpr quint32 losslessHeaderBytes = 64;
    if (format.format == AudioFormat::mpeg4Aac)
        return aacBytesPerChannel * format.channelsPerFrame;
    const quint32 frameBytes = 4 * format.channelsPerFrame;
    return std::min(format.framesPerPacket * frameBytes + losslessHeaderBytes, PacketTable::maxPacketBytes);
}

void readFragmentDefaults(QByteArrayView movie, Mpeg4Movie &result)
{
    QByteArrayView boxes = findMpeg4Box(movie, {fourCharacterCode("mvex")});
    while (const std::optional<Mpeg4Box> box = takeMpeg4Box(boxes)) {
        ByteReader reader(box->body);
        reader.skip(4);
        if (box->type != fourCharacterCode("trex"))
            continue;
        const quint32 track = reader.u32();
        reader.skip(8); // sample entry, duration
        result.fragmentPacketBytes[track] = reader.u32();
    }
    result.isFragmented = result.fragmentPacketBytes.contains(result.trackNumber);
}

std::optional<Mpeg4Movie> readTrack(QByteArrayView movie, QByteArrayView track)
{
    const QByteArrayView media = findMpeg4Box(track, {fourCharacterCode("mdia")});
    const QByteArrayView sampleTable =
        findMpeg4Box(media, {fourCharacterCode("minf"), fourCharacterCode("stbl")});
    auto entry = readMpeg4SampleEntry(findMpeg4Box(sampleTable, {fourCharacterCode("stsd")}));
    auto packets = readMpeg4SampleTable(sampleTable);
    const quint32 mediaRate = fieldBehindTimes(findMpeg4Box(media, {fourCharacterCode("mdhd")}));
    if (!entry || !packets || mediaRate == 0)
        return std::nullopt;
    Mpeg4Movie result{.trackNumber = fieldBehindTimes(findMpeg4Box(track, {fourCharacterCode("tkhd")}))};
    readFragmentDefaults(movie, result);
    const AudioStreamBasicDescription &format = entry->format;
    if (!result.isFragmented) {
        const quint32 movieRate = fieldBehindTimes(findMpeg4Box(movie, {fourCharacterCode("mvhd")}));
        result.sound.trim = readMpeg4Trim(movie, track, movieRate, mediaRate,
                                          format.framesPerPacket * double(mediaRate) / format.sampleRate);
    }
    result.sound.trimRate = mediaRate;
    result.sound.format = format;
    result.sound.cookie = std::move(entry->cookie);
    result.sound.packets = std::move(*packets);
    result.sound.isComplete = !result.isFragmented;
    result.sound.maxPacketBytes = result.isFragmented ? packetBound(format) : 0;
    return result;
}

} // namespace

std::optional<Mpeg4Movie> readMpeg4Movie(QByteArrayView movie)
{
    QByteArrayView boxes = movie;
    while (const std::optional<Mpeg4Box> box = takeMpeg4Box(boxes)) {
        if (box->type != fourCharacterCode("trak"))
            continue;
        if (auto result = readTrack(movie, box->body))
            return result;
    }
    return std::nullopt;
}

} // namespace orvel
