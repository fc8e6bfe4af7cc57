#include "audio/live/IcyStream.h"

#include <QStringList>
#include <functional>
#include <gtest/gtest.h>
#include <random>

using namespace orvel;

namespace {

// What a reader hands out, in order. The parser that becomes ready with the third piece wants smaller ones.
struct Record : IcyStreamClient
{
    StationInfo station;
    IcyStream stream{*this, station};
    QStringList events;
    QByteArray audio;
    quint32 size;
    bool opensParser = true;
    int pieces = 0;

    explicit Record(quint32 bufferSize) : size(bufferSize) { stream.setBufferSize(size); }
    void feed(QByteArrayView bytes, const std::function<qsizetype()> &nextSize)
    {
        while (!bytes.isEmpty()) {
            const qsizetype count = std::min(nextSize(), bytes.size());
            stream.parse(bytes.first(count));
            bytes = bytes.sliced(count);
        }
    }
    bool icyHeadersEnded() override
    {
        events << "headers ended";
        return opensParser;
    }
    void icyMetadataReady() override { events << "metadata ready"; }
    void icyTitleChanged(const QString &title) override { events << "title " + title; }
    bool icyAudioGathered(QByteArrayView bytes) override
    {
        EXPECT_EQ(bytes.size(), size);
        audio += bytes.toByteArray();
        if (++pieces == 3 && size > 100)
            stream.setBufferSize(size = 100);
        return true;
    }
};

QByteArray block(const QByteArray &text)
{
    const qsizetype blocks = (text.size() + 15) / 16;
    return QByteArray(1, char(blocks)) + text.leftJustified(blocks * 16, '\0');
}

const QByteArray icyHead =
    "ICY 200 OK\r\nicy-notice1:<BR>caf\xC3\xA9<BR>\r\nicy-name: Radio \xC3\x89t\xC3\xA9 \r\n"
    "icy-genre:Vari\xE9t\xE9\r\nicy-url:http://radio.example/\r\nContent-Type: audio/mpeg \r\n"
    "icy-br:128\r\nicy-metaint:8;x\r\n\r\n";

} // namespace

TEST(IcyStreamTest, TellsSoundFromMetadataInAnyChunking)
{
    const std::pair<QByteArray, QString> blocks[] = {
        {QByteArray(1, '\0'), {}},
        {block("StreamTitle='Édith - L'été';StreamUrl='';"), "title Édith - L'été"},
        {block("StreamTitle='caf\xE9';"), {}},
        // Negative lengths open no block.
        {"\x80", {}},
        {"\xFF", {}},
    };
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        const qint32 interval = round % 10 == 0 ? -3 : qint32(1 + random() % 700);
        QByteArray bytes;
        QByteArray audio;
        QStringList titles;
        for (int i = 0; i < 40; ++i) {
            QByteArray sound(std::abs(interval), '\0');
            std::ranges::generate(sound, [&] { return char(random()); });
            const auto &[metadata, title] = blocks[random() % std::size(blocks)];
            // A negative interval is never over.
            bytes += sound + metadata;
            audio += interval < 0 ? sound + metadata : sound;
            if (interval > 0 && !title.isEmpty())
                titles << title;
        }
        Record record(256);
        record.stream.applyHeader(u"icy-metaint", QString::number(interval));
        record.feed(bytes, [&] { return qsizetype(1 + random() % (round % 2 ? 3 : 3000)); });
        EXPECT_TRUE(audio.startsWith(record.audio)) << interval;
        EXPECT_LT(audio.size(), record.audio.size() + record.size) << interval;
        EXPECT_EQ(record.events, titles) << interval;
    }
}

TEST(IcyStreamTest, ReadsTheHeaderBlockOfABareAnswerWhereverItIsSplit)
{
    const QByteArray all = icyHead + "12345678" + block("StreamTitle='A - B';") + "abcdefgh";
    for (qsizetype first = 10; first <= icyHead.size() + 3; ++first) {
        Record record(8);
        record.stream.parse(QByteArrayView(all).first(first));
        EXPECT_EQ(record.events.contains("metadata ready"), first > icyHead.indexOf("icy-genre")) << first;
        record.feed(QByteArrayView(all).sliced(first), [first] { return 1 + first % 5; });
        EXPECT_EQ(record.audio, "12345678abcdefgh") << first;
        EXPECT_EQ(record.events.count("headers ended"), 1) << first;
        EXPECT_LE(record.events.count("metadata ready"), 3) << first; // name, genre and address
        EXPECT_EQ(record.events.last(), "title A - B") << first;
        EXPECT_EQ(record.station.name, "Radio Été");
        EXPECT_EQ(record.station.genre, "Variété");
        EXPECT_EQ(record.station.url, "http"); // up to the address's own colon
        EXPECT_EQ(record.stream.contentType(), "audio/mpeg");
        EXPECT_EQ(record.stream.bitrateInBytes(), 16000);
        EXPECT_EQ(record.stream.metadataInterval(), 8);
    }
}

TEST(IcyStreamTest, KnowsNothingOfAnEarlierConnectionAfterAReset)
{
    const QByteArray title = block("StreamTitle='A - B';");
    for (const QByteArray &earlier : {icyHead + "1234", icyHead + "12345678" + title.first(9),
                                      QByteArray("ICY 200 OK\r\nicy-name: half"), QByteArray("some sound")}) {
        for (const QByteArray head : {"ICY 200 OK\r\nicy-metaint:8\r\n\r\n", ""}) {
            Record record(4);
            record.stream.parse(earlier);
            record.stream.reset();
            record.audio.clear();
            record.station = {};
            if (head.isEmpty())
                record.stream.applyHeader(u"icy-metaint", "8");
            record.stream.parse(head + "12345678" + title + "abcdefgh");
            EXPECT_EQ(record.audio, "12345678abcdefgh") << earlier.constData();
            EXPECT_EQ(record.events.last(), "title A - B") << earlier.constData();
            EXPECT_TRUE(record.station.name.isNull()) << earlier.constData();
            // Without an interval all is sound.
            record.stream.reset();
            record.audio.clear();
            record.stream.parse("12345678" + title.first(12));
            EXPECT_EQ(record.audio, "12345678" + title.first(12)) << earlier.constData();
        }
    }
}

TEST(IcyStreamTest, DropsTheChunkWhenNoParserOpens)
{
    Record record(1);
    record.opensParser = false;
    record.stream.parse(icyHead + "12345678");
    EXPECT_TRUE(record.audio.isEmpty());
}

TEST(IcyStreamTest, ReadsOnlyPlainTitles)
{
    const std::pair<const char *, QString> cases[] = {
        {"StreamTitle='A - B';", "A - B"},
        {"StreamTitle='L'heure d'été';StreamUrl='http://x';", "L'heure d'été"},
        {"StreamTitle='%s%n%@{}$(x)';", "%s%n%@{}$(x)"},
        {"StreamTitle='';", ""},
        {"StreamTitle='Don't; Stop';", {}},
        {"StreamTitle=';", {}},
        {" StreamTitle='A';", {}},
        {"StreamTitle='A'", {}},
        {"streamtitle='A';", {}},
        {"StreamTitle='caf\xE9';", {}},
        {"StreamTitle='\xC0\xAF\xED\xA0\x80';", {}},
        {"", {}}};
    for (const auto &[metadata, title] : cases) {
        EXPECT_EQ(streamTitle(metadata), title) << metadata;
        EXPECT_EQ(streamTitle(metadata).isNull(), title.isNull()) << metadata;
    }
}
