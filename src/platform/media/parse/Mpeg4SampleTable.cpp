#include "platform/media/parse/Mpeg4SampleTable.h"

#include "platform/media/codec/AudioTypes.h"
#include "platform/media/parse/Mpeg4Box.h"

#include <algorithm>

namespace orvel {

namespace {

// The rows of a table: their number comes first.
struct Rows
{
    Rows(QByteArrayView body, quint32 rowBytes) : reader(body)
    {
        reader.skip(4); // version and flags
        count = reader.u32();
        isWhole = count <= quint64(reader.rest().size()) / rowBytes;
    }
    ByteReader reader;
    quint32 count = 0;
    bool isWhole = false; // all are there
};

struct Sizes
{
    PacketTable table;
    qint64 count;
};

std::optional<Sizes> readSizes(QByteArrayView body)
{
    ByteReader reader(body);
    reader.skip(4);
    const quint32 constantSize = reader.u32();
    const quint32 count = reader.u32();
    if (count > PacketTable::maxPackets)
        return std::nullopt;
    if (constantSize > 0)
        return Sizes{PacketTable(constantSize), count};
    if (count > quint64(reader.rest().size()) / 4)
        return std::nullopt;
    std::vector<quint32> sizes(count);
    std::ranges::generate(sizes, [&reader] { return reader.u32(); });
    return Sizes{PacketTable(std::move(sizes)), count};
}

std::optional<Sizes> readCompactSizes(QByteArrayView body)
{
    ByteReader reader(body);
    reader.skip(7);
    const quint8 bits = reader.u8();
    const quint32 count = reader.u32();
    const bool isKnown = bits == 4 || bits == 8 || bits == 16;
    if (!isKnown || count > PacketTable::maxPackets || count > quint64(reader.rest().size()) * 8 / bits)
        return std::nullopt;
    std::vector<quint32> sizes(count);
    quint8 pair = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        if (bits == 16)
            sizes[i] = reader.u16();
        else if (bits == 8 || i % 2 == 0)
            pair = reader.u8();
        if (bits == 8)
            sizes[i] = pair;
        else if (bits == 4)
            sizes[i] = i % 2 == 0 ? pair >> 4 : pair & 15u;
    }
    return Sizes{PacketTable(std::move(sizes)), count};
}

} // namespace

std::optional<PacketTable> readMpeg4SampleTable(QByteArrayView sampleTable)
{
    const auto body = [sampleTable](const char(&type)[5]) {
        return findMpeg4Box(sampleTable, {fourCharacterCode(type)});
    };
    auto sizes = body("stsz").isEmpty() ? readCompactSizes(body("stz2")) : readSizes(body("stsz"));
    const bool hasLongOffsets = body("stco").isEmpty();
    Rows chunks(body(hasLongOffsets ? "co64" : "stco"), hasLongOffsets ? 8 : 4);
    Rows spans(body("stsc"), 12); // of chunks with as many packets each
    if (!sizes || !chunks.isWhole || !spans.isWhole)
        return std::nullopt;

    quint32 nextSpanStart = spans.count > 0 ? spans.reader.u32() : 0;
    if (spans.count > 0 && nextSpanStart != 1)
        return std::nullopt;
    quint32 spansRead = 0;
    qint64 packetsInChunk = 0;
    for (quint32 chunk = 1; chunk <= chunks.count; ++chunk) {
        if (spansRead < spans.count && chunk == nextSpanStart) {
            packetsInChunk = spans.reader.u32();
            spans.reader.skip(4); // which sample entry
            const quint32 start = nextSpanStart;
            if (++spansRead < spans.count && (nextSpanStart = spans.reader.u32()) <= start)
                return std::nullopt;
        }
        const quint64 offset = hasLongOffsets ? chunks.reader.u64() : chunks.reader.u32();
        const qint64 left = sizes->count - sizes->table.packetCount();
        if (!sizes->table.addRun(qint64(offset), std::min(packetsInChunk, left)))
            return std::nullopt;
    }
    return std::move(sizes->table);
}

} // namespace orvel
