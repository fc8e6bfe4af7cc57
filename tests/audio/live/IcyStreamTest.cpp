#include "audio/live/IcyStream.h"

#include <QStringList>
#include <functional>
#include <gtest/gtest.h>
#include <random>

using namespace orvel;

namespace {

// What a reader hands out, in order.
struct Record : IcyStreamClient
{
    StationInfo station;
    QStringList events;
    QByteArray audio;
    std::vector<qsizetype> pieces;
    bool opensParser = true;
    std::function<void(qsizetype)> onPiece;

    bool icyHeadersEnded() override
    {
        events << "headers ended";
        return opensParser;
    }
    void icyMetadataReady() override { events << "metadata ready"; }
    void icyTitleChanged(const QString &title) override { events << "title " + title; }
    bool icyAudioGathered(QByteArrayView bytes) override
    {
        audio += bytes.toByteArray();
        pieces.push_back(bytes.size());
        if (onPiece)
            onPiece(bytes.size());
        return true;
    }
};

// Reads sound and metadata one byte at a time, by the letter of the rules.
struct ByteByByte
{
    Record record;
    qint32 interval = 0;
    qsizetype bufferSize = 256;
    qint32 count = 0;
    qint32 length = 0;
    QByteArray gathered;
    QByteArray metadata;

    void feed(const QByteArray &bytes)
    {
        for (const char byte : bytes) {
            if (length < 1) {
                if (interval >= 1 && count == interval) {
                    length = qint32(static_cast<signed char>(byte)) * 16;
                    count = 0;
                    continue;
                }
                ++count;
                gathered += byte;
                if (gathered.size() >= bufferSize) {
                    record.icyAudioGathered(gathered);
                    gathered.clear();
                    // A parser that becomes ready changes the size.
                    bufferSize = record.pieces.size() == 3 ? 100 : bufferSize;
                }
                continue;
            }
            if (byte != 0)
                metadata += byte;
            if (--length == 0) {
                if (const QString title = streamTitle(metadata); !title.isNull())
                    record.icyTitleChanged(title);
                metadata.clear();
            }
        }
    }
};

QByteArray block(const QByteArray &text)
{
    const qsizetype blocks = (text.size() + 15) / 16;
    return QByteArray(1, char(blocks)) + text.leftJustified(blocks * 16, '\0');
}

QByteArray randomStream(std::mt19937 &random, qint32 interval)
{
    QByteArray stream;
    for (int i = 0; i < 40; ++i) {
        for (qint32 n = 0; n < interval; ++n)
            stream += char(random());
        switch (random() % 5) {
        case 0:
            stream += block("StreamTitle='Édith - L'été " + QByteArray::number(i) + "';StreamUrl='';");
            break;
        case 1:
            stream += char(0x80 + random() % 0x80);
            break; // opens no block
        case 2:
            stream += block("StreamTitle='caf\xE9';");
            break;
        default:
            stream += '\0';
        }
    }
    return stream;
}

void feedInChunks(IcyStream &stream, QByteArrayView bytes, const std::function<qsizetype()> &nextSize)
{
    while (!bytes.isEmpty()) {
        const qsizetype size = std::min(nextSize(), bytes.size());
        stream.parse(bytes.first(size));
        bytes = bytes.sliced(size);
    }
}

const QByteArray icyHead =
    "ICY 200 OK\r\nicy-notice1:<BR>caf\xC3\xA9<BR>\r\nicy-name: Radio \xC3\x89t\xC3\xA9 \r\n"
    "icy-genre:Vari\xE9t\xE9\r\nicy-url:http://radio.example/\r\nContent-Type: audio/mpeg \r\n"
    "icy-br:128\r\nicy-metaint:8;x\r\n\r\n";

} // namespace

TEST(IcyStreamTest, GivesTheSameAsReadingByteByByteInAnyChunking)
{
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        const qint32 interval = round % 10 == 0 ? -3 : qint32(1 + random() % 700);
        const QByteArray bytes = randomStream(random, std::abs(interval));
        ByteByByte reference;
        reference.interval = interval;
        reference.feed(bytes);

        Record record;
        IcyStream stream(record, record.station);
        stream.setBufferSize(256);
        stream.applyHeader(u"icy-metaint", QString::number(interval));
        record.onPiece = [&](qsizetype) {
            if (record.pieces.size() == 3)
                stream.setBufferSize(100);
        };
        feedInChunks(stream, bytes, [&] { return qsizetype(1 + random() % (round % 2 ? 3 : 3000)); });
        ASSERT_EQ(record.pieces, reference.record.pieces) << interval;
        ASSERT_EQ(record.audio, reference.record.audio) << interval;
        ASSERT_EQ(record.events, reference.record.events) << interval;
    }
}

TEST(IcyStreamTest, ReadsTheHeaderBlockOfABareAnswerWhereverItIsSplit)
{
    const QByteArray body = "12345678" + block("StreamTitle='A - B';") + "abcdefgh";
    for (qsizetype first = 10; first <= icyHead.size() + 3; ++first) {
        Record record;
        IcyStream stream(record, record.station);
        stream.setBufferSize(8);
        const QByteArray all = icyHead + body;
        stream.parse(QByteArrayView(all).first(first));
        feedInChunks(stream, QByteArrayView(all).sliced(first), [first] { return 1 + first % 5; });
        EXPECT_EQ(record.audio, "12345678abcdefgh") << first;
        EXPECT_EQ(record.events.count("headers ended"), 1) << first;
        EXPECT_EQ(record.events.last(), "title A - B") << first;
        EXPECT_EQ(record.station.name, QString::fromUtf8("Radio Été"));
        EXPECT_EQ(record.station.genre, QString::fromUtf8("Variété"));
        EXPECT_EQ(record.station.url, "http"); // up to the address's own colon
        EXPECT_EQ(stream.contentType(), "audio/mpeg");
        EXPECT_EQ(stream.bitrateInBytes(), 16000);
        EXPECT_EQ(stream.metadataInterval(), 8);
    }
}

TEST(IcyStreamTest, TellsOfNamesBeforeTheHeaderBlockHasEnded)
{
    Record record;
    IcyStream stream(record, record.station);
    stream.parse("ICY 200 OK\r\nicy-name:N\r\nicy-br:1");
    EXPECT_EQ(record.events, QStringList({"metadata ready"}));
    stream.parse("28\r\n\r\n...");
    EXPECT_EQ(record.events, QStringList({"metadata ready", "headers ended"}));
    EXPECT_EQ(stream.bitrateInBytes(), 16000);
}

TEST(IcyStreamTest, DropsTheChunkWhenNoParserOpens)
{
    Record record;
    record.opensParser = false;
    IcyStream stream(record, record.station);
    stream.setBufferSize(1);
    stream.parse(icyHead + "12345678");
    EXPECT_EQ(record.events, QStringList({"headers ended"}));
    EXPECT_TRUE(record.audio.isEmpty());
}

TEST(IcyStreamTest, ABareAnswerWithoutAnIntervalPlaysNothing)
{
    Record record;
    IcyStream stream(record, record.station);
    stream.setBufferSize(1);
    stream.parse("icy 200 ok\r\nContent-Type:audio/mpeg\r\n\r\nsound");
    stream.parse("sound");
    EXPECT_TRUE(record.audio.isEmpty());
}

TEST(IcyStreamTest, SkipsAnEndlessHeaderLineAndReadsOn)
{
    const QByteArray answer =
        "ICY 200 OK\r\nicy-name:" + QByteArray(1 << 20, 'x') + "\r\nicy-metaint:4\r\n\r\n1234";
    for (const qsizetype chunk : {qsizetype(1024), answer.size()}) {
        Record record;
        IcyStream stream(record, record.station);
        stream.setBufferSize(4);
        for (qsizetype at = 0; at < answer.size(); at += chunk)
            stream.parse(answer.mid(at, chunk));
        EXPECT_TRUE(record.station.name.isEmpty());
        EXPECT_EQ(record.audio, "1234");
    }
}

TEST(IcyStreamTest, ReadsOnlyPlainTitles)
{
    const std::tuple<const char *, QString> cases[] = {
        {"StreamTitle='A - B';", "A - B"},
        {"StreamTitle='L'heure d'été';StreamUrl='http://x';", QString::fromUtf8("L'heure d'été")},
        {"StreamTitle='';", ""},
        {"StreamTitle='Don't; Stop';", {}},
        {"StreamTitle=';", {}},
        {" StreamTitle='A';", {}},
        {"StreamTitle='A'", {}},
        {"streamtitle='A';", {}},
        {"StreamTitle='caf\xE9';", {}},
        {"", {}}};
    for (const auto &[metadata, title] : cases) {
        EXPECT_EQ(streamTitle(metadata), title) << metadata;
        EXPECT_EQ(streamTitle(metadata).isNull(), title.isNull()) << metadata;
    }
}
