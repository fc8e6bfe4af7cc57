#include "platform/media/parse/Mpeg4SampleEntry.h"

#include "platform/media/parse/AlacConfig.h"
#include "platform/media/parse/AudioSpecificConfig.h"
#include "platform/media/parse/Mpeg4Box.h"

namespace orvel {

namespace {

constexpr quint64 versionBytes = 4; // version and flags

// Returns the body of the box with the decoder's configuration, which QuickTime files wrap in another box.
QByteArrayView findConfig(QByteArrayView boxes, quint32 type)
{
    const QByteArrayView wrapped = findMpeg4Box(boxes, {fourCharacterCode("wave"), type});
    return wrapped.isEmpty() ? findMpeg4Box(boxes, {type}) : wrapped;
}

template<class Format>
std::optional<Mpeg4SampleEntry> makeEntry(QByteArrayView cookie, const Format &format)
{
    if (!format)
        return std::nullopt;
    return Mpeg4SampleEntry{*format, cookie.toByteArray()};
}

} // namespace

std::optional<Mpeg4SampleEntry> readMpeg4SampleEntry(QByteArrayView sampleDescription)
{
    ByteReader description(sampleDescription);
    description.skip(versionBytes + 4); // and the number of entries
    QByteArrayView entries = description.rest();
    const std::optional<Mpeg4Box> entry = takeMpeg4Box(entries);
    if (!entry)
        return std::nullopt;
    ByteReader reader(entry->body);
    reader.skip(8);
    const quint16 quickTimeVersion = reader.u16();
    reader.skip(6);
    const quint32 channels = reader.u16();
    reader.skip(10 + (quickTimeVersion == 1 ? 16 : quickTimeVersion == 2 ? 36 : 0));
    const QByteArrayView boxes = reader.rest();
    if (entry->type == fourCharacterCode("mp4a")) {
        ByteReader descriptor(findConfig(boxes, fourCharacterCode("esds")));
        descriptor.skip(versionBytes);
        const QByteArrayView config = audioSpecificConfigIn(descriptor.rest());
        return makeEntry(config, aacFormat(config, channels));
    }
    if (entry->type == fourCharacterCode("alac")) {
        ByteReader config(findConfig(boxes, fourCharacterCode("alac")));
        config.skip(versionBytes);
        const QByteArrayView cookie = config.take(alacConfigBytes);
        return makeEntry(cookie, alacFormat(cookie));
    }
    return std::nullopt;
}

} // namespace orvel
