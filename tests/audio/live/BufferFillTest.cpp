#include "audio/live/BufferFill.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

AudioQueue rowOf(std::initializer_list<const char *> packets)
{
    AudioQueue row;
    for (const char *bytes : packets)
        row.addPacket(AudioPacket(bytes, {99, 0, quint32(qstrlen(bytes))}));
    return row;
}

} // namespace

TEST(BufferFillTest, VaryingPacketsStayWholeAndLeaveAByteFree)
{
    OutputBuffer buffer(8);
    AudioQueue row = rowOf({"abc", "defgh", "ij", "12345678", "k"});
    std::vector<AudioStreamPacketDescription> descriptions;
    fillVariableBitRate(row, buffer, descriptions);
    EXPECT_EQ(buffer.byteSize, 3u); // "abc" and "defgh" would fill it to the last byte
    fillVariableBitRate(row, buffer, descriptions);
    EXPECT_EQ(buffer.data.first(buffer.byteSize), "defghij");
    ASSERT_EQ(descriptions.size(), 2u);
    EXPECT_EQ(descriptions[1].startOffset, 5);
    EXPECT_EQ(descriptions[1].dataByteSize, 2u);
    // A packet as large as a buffer is dropped.
    fillVariableBitRate(row, buffer, descriptions);
    EXPECT_EQ(buffer.data.first(buffer.byteSize), "k");
    EXPECT_EQ(row.byteCount(), 0u);
    fillVariableBitRate(row, buffer, descriptions);
    EXPECT_EQ(buffer.byteSize, 0u);
    EXPECT_TRUE(descriptions.empty());
}

TEST(BufferFillTest, ABufferTakesAtMost512Packets)
{
    OutputBuffer buffer(4096);
    AudioQueue row;
    for (int i = 0; i < 600; ++i)
        row.addPacket(AudioPacket("x"));
    std::vector<AudioStreamPacketDescription> descriptions;
    fillVariableBitRate(row, buffer, descriptions);
    EXPECT_EQ(descriptions.size(), 512u);
    EXPECT_EQ(row.count(), 88u);
}

TEST(BufferFillTest, ConstantPacketsAreCopiedOnePacketBeyondAndClipped)
{
    OutputBuffer buffer(10);
    AudioQueue row = rowOf({"aaaa", "bbbb", "cccc", "dddd"});
    fillConstantBitRate(row, buffer);
    EXPECT_EQ(buffer.byteSize, 10u);
    // "aaaa" at 4; "bbbb" at 8, clipped; then the first two of "cccc" at 8.
    EXPECT_EQ(buffer.data, QByteArray("\0\0\0\0aaaacc", 10));
    ASSERT_EQ(row.count(), 2u);
    EXPECT_EQ(row.peak()->remainingLength(), 2u);
    // The rest of the row: "cc" counts to 2, "dddd" to 6.
    fillConstantBitRate(row, buffer);
    EXPECT_EQ(buffer.byteSize, 6u);
    EXPECT_EQ(buffer.data, QByteArray("\0\0ccaadddd", 10));
    EXPECT_EQ(row.count(), 0u);
}
