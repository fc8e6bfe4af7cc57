#include "platform/media/parse/Mpeg4Trim.h"

#include "platform/media/parse/Mpeg4Box.h"

#include <QByteArray>
#include <QByteArrayList>
#include <cmath>

namespace orvel {

namespace {

constexpr double maxUnits = double(qint64(1) << 48);
constexpr qint64 maxPriming = 1 << 30;
constexpr quint32 maxNotedPriming = 1 << 14;

struct Edit
{
    quint64 duration; // in the movie's units; 0: to the end
    qint64 mediaTime; // in the track's units; negative for silence
};

// Returns the one edit that is not silence; nullopt when there are none or more.
std::optional<Edit> readEdit(QByteArrayView track)
{
    ByteReader reader(findMpeg4Box(track, {fourCharacterCode("edts"), fourCharacterCode("elst")}));
    const bool isLong = Mpeg4BoxVersion(reader).version == 1;
    const quint32 count = reader.u32();
    std::optional<Edit> found;
    for (quint32 i = 0; i < count && !reader.rest().isEmpty(); ++i) {
        Edit edit{};
        edit.duration = isLong ? reader.u64() : reader.u32();
        edit.mediaTime = isLong ? qint64(reader.u64()) : qint32(reader.u32());
        reader.skip(4); // speed
        if (edit.mediaTime < 0)
            continue;
        if (found)
            return std::nullopt;
        found = edit;
    }
    return found;
}

// Returns how many frames the note says to be priming.
std::optional<quint32> readNotedPriming(QByteArrayView movie)
{
    ByteReader meta(findMpeg4Box(movie, {fourCharacterCode("udta"), fourCharacterCode("meta")}));
    meta.skip(4); // version and flags
    QByteArrayView notes = findMpeg4Box(meta.rest(), {fourCharacterCode("ilst")});
    while (const std::optional<Mpeg4Box> note = takeMpeg4Box(notes)) {
        if (note->type != fourCharacterCode("----") ||
            !findMpeg4Box(note->body, {fourCharacterCode("name")}).endsWith("iTunSMPB"))
            continue;
        const QByteArray text = findMpeg4Box(note->body, {fourCharacterCode("data")}).toByteArray().mid(8);
        const quint32 frames = text.simplified().split(' ').value(1).toUInt(nullptr, 16);
        return frames > 0 && frames < maxNotedPriming ? std::optional(frames) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<AudioTrim> readMpeg4Trim(QByteArrayView movie, QByteArrayView track, quint32 movieRate,
                                       quint32 mediaRate, double packetUnits)
{
    const std::optional<Edit> edit = readEdit(track);
    const std::optional<quint32> noted = readNotedPriming(movie);
    if (!edit && !noted)
        return std::nullopt;
    AudioTrim trim;
    trim.primingFrames = noted ? *noted : quint32(std::min<qint64>(edit->mediaTime, maxPriming));
    if (!edit || edit->duration == 0 || movieRate == 0)
        return trim;
    const double end = double(edit->mediaTime) + double(edit->duration) * mediaRate / movieRate;
    if (end < maxUnits)
        trim.validFrames =
            std::max<qint64>(qint64(std::ceil(end / packetUnits) * packetUnits) - trim.primingFrames, 0);
    return trim;
}

} // namespace orvel
