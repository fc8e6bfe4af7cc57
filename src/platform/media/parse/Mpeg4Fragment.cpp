#include "platform/media/parse/Mpeg4Fragment.h"

#include "platform/media/parse/Mpeg4Box.h"

namespace orvel {

namespace {

constexpr quint32 maxPackets = 1 << 18;      // of a fragment
constexpr quint32 maxEqualPackets = 1 << 12; // of a run that does not list them

struct Run
{
    qint64 offset;
    quint32 packets;
};

struct Runs
{
    std::vector<quint32> sizes;
    std::vector<Run> runs;
};

// What a track says for all its runs.
struct TrackDefaults
{
    quint32 track = 0;
    qint64 offset = 0;
    quint32 packetBytes = 0;
};

// `before` is the end of the track before, or the beginning of the fragment.
TrackDefaults readDefaults(QByteArrayView body, qint64 fragmentOffset, qint64 before, const Mpeg4Movie &movie)
{
    enum Flag : quint32 { Offset = 1, SampleEntry = 2, Duration = 8, Size = 0x10, FromFragment = 0x20000 };
    ByteReader reader(body);
    const quint32 flags = Mpeg4BoxVersion(reader).flags;
    TrackDefaults defaults{.track = reader.u32()};
    const auto packetBytes = movie.fragmentPacketBytes.find(defaults.track);
    if (packetBytes != movie.fragmentPacketBytes.end())
        defaults.packetBytes = packetBytes->second;
    if (flags & Offset)
        defaults.offset = qint64(reader.u64());
    else
        defaults.offset = flags & FromFragment ? fragmentOffset : before;
    reader.skip((flags & SampleEntry ? 4u : 0u) + (flags & Duration ? 4u : 0u));
    if (flags & Size)
        defaults.packetBytes = reader.u32();
    return defaults;
}

// Appends a run of packets. Without an offset it begins where the one before has ended, at `end`.
bool readRun(QByteArrayView body, const TrackDefaults &defaults, qint64 &end, Runs &runs)
{
    enum Flag : quint32 {
        Offset = 1,
        FirstFlags = 4,
        Duration = 0x100,
        Size = 0x200,
        Flags = 0x400,
        Shift = 0x800
    };
    ByteReader reader(body);
    const quint32 flags = Mpeg4BoxVersion(reader).flags;
    const quint32 packets = reader.u32();
    if (flags & Offset)
        end = defaults.offset + qint32(reader.u32());
    if (flags & FirstFlags)
        reader.skip(4);
    const quint64 rowBytes = 4u * ((flags & Duration ? 1 : 0) + (flags & Size ? 1 : 0) +
                                   (flags & Flags ? 1 : 0) + (flags & Shift ? 1 : 0));
    if (packets > maxPackets - runs.sizes.size() || packets * rowBytes > quint64(reader.rest().size()) ||
        (rowBytes == 0 && packets > maxEqualPackets))
        return false;
    runs.runs.push_back({end, packets});
    for (quint32 i = 0; i < packets; ++i) {
        ByteReader row(reader.take(rowBytes));
        row.skip(flags & Duration ? 4 : 0);
        runs.sizes.push_back(flags & Size ? row.u32() : defaults.packetBytes);
        end += runs.sizes.back();
    }
    return true;
}

} // namespace

std::optional<PacketTable> readMpeg4Fragment(QByteArrayView fragment, qint64 offset, const Mpeg4Movie &movie)
{
    Runs runs;
    Runs others; // of the other tracks
    qint64 end = offset;
    while (const std::optional<Mpeg4Box> track = takeMpeg4Box(fragment)) {
        if (track->type != fourCharacterCode("traf"))
            continue;
        const TrackDefaults defaults =
            readDefaults(findMpeg4Box(track->body, {fourCharacterCode("tfhd")}), offset, end, movie);
        if (defaults.offset < 0 || defaults.offset > ContainerReader::maxFileBytes)
            return std::nullopt;
        end = defaults.offset;
        Runs &found = defaults.track == movie.trackNumber ? runs : others;
        QByteArrayView boxes = track->body;
        while (const std::optional<Mpeg4Box> box = takeMpeg4Box(boxes))
            if (box->type == fourCharacterCode("trun") && !readRun(box->body, defaults, end, found))
                return std::nullopt;
    }
    PacketTable table(std::move(runs.sizes));
    for (const Run &run : runs.runs)
        if (!table.addRun(run.offset, run.packets))
            return std::nullopt;
    return table;
}

} // namespace orvel
