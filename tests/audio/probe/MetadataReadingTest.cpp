#include "audio/probe/MetadataReading.h"

#include "audio/probe/ContentTypeReading.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

UrlResponse response(const QMap<QString, QString> &headers)
{
    UrlResponse it{200};
    for (auto field = headers.begin(); field != headers.end(); ++field)
        it.headers.set(field.key(), field.value());
    return it;
}

template<typename Reading>
Reading read(const UrlResponse &head, const QByteArray &body, qsizetype chunk)
{
    Reading reading;
    reading.readResponse(head);
    for (qsizetype at = 0; at < body.size(); at += chunk)
        reading.readData(body.mid(at, chunk));
    return reading;
}

// Every entry, those of the reading itself without their keys.
QString told(const MetadataReading &reading)
{
    QStringList entries;
    const MetadataDictionary dictionary = reading.dictionary().value_or(MetadataDictionary());
    for (auto it = dictionary.begin(); it != dictionary.end(); ++it)
        entries << (it.key().startsWith("Stream") ? it.value() : it.key() + '=' + it.value());
    return reading.dictionary() ? entries.join(u',') : "nothing";
}

QByteArray icy(const QByteArray &fields, qsizetype size = 200)
{
    return ("ICY 200 OK\r\n" + fields + "\r\n\r\n").leftJustified(size, 's');
}

} // namespace

TEST(MetadataReadingTest, TakesTheFirstQuotedTextOfTheBlockForTheTitle)
{
    const struct
    {
        QByteArray block;
        int lengthByte;
        QString title; // null: none
    } cases[] = {
        {"StreamTitle='Orvel - Matin';", 0x02, "Orvel - Matin"},
        {"StreamTitle='matin';", 0x02, {}}, // fewer than 6 characters
        {"StreamTitle='matins';", 0x02, "matins"},
        {"StreamTitle='\U0001F3B5\U0001F3B5\U0001F3B5';", 0x02, "\U0001F3B5\U0001F3B5\U0001F3B5"}, // 6 units
        {"StreamTitle='Bientôt l'été';", 0x02, "Bientôt l"},
        {"StreamTitle='Bient\xf4t';", 0x02, {}},
        {"StreamTitle=matinale", 0x02, {}},
        {"StreamTitle='Orvel - Matin';", 0x00, {}},
        {"StreamTitle='Orvel - Matin';", 0x0A, {}},
        {"StreamTitle='Orvel - Matin';", 0xA2, {}},
        {"'sixteen'", 0x1F, "sixteen"},                              // one unit
        {QByteArray(145, 'x') + "'within ten'", 0x10, "within ten"}, // 160 bytes, not 256
        {QByteArray(160, 'x') + "'beyond ten'", 0x10, {}},
        {QByteArray(1570, 'x') + "'within 99'", 0x99, "within 99"},
    };
    const UrlResponse head = response({{"Content-Type", "audio/mpeg"}, {"Icy-MetaInt", " 5;x"}});
    for (const auto &it : cases) {
        SCOPED_TRACE(it.block.toStdString() + ' ' + std::to_string(it.lengthByte));
        const QByteArray body =
            "sound" + QByteArray(1, char(it.lengthByte)) + it.block.leftJustified(2000, '\0');
        for (const qsizetype chunk : {1, 5, 7, 100000}) {
            const auto reading = read<MetadataReading>(head, body, chunk);
            EXPECT_TRUE(reading.isOver());
            EXPECT_EQ(reading.dictionary()->value("StreamResponceType"), "HTTP 200");
            EXPECT_EQ(reading.dictionary()->value("Icy-MetaInt"), " 5;x");
            EXPECT_EQ(reading.dictionary()->contains("StreamTitle"), !it.title.isNull());
            EXPECT_EQ(reading.dictionary()->value("StreamTitle"), it.title);
        }
    }
    const QByteArray cut = "sound\x02" + cases[0].block.leftJustified(31, '\0');
    EXPECT_FALSE(read<MetadataReading>(head, cut, 3).isOver());
}

TEST(MetadataReadingTest, IsOverAtOnceWithoutAnInterval)
{
    for (const char *interval : {"", "0", "-5", "abc"}) {
        const auto head = response({{"content-type", "text/html"}, {"icy-metaint", interval}});
        const auto reading = read<MetadataReading>(head, {}, 1);
        EXPECT_TRUE(reading.isOver()) << interval;
        EXPECT_EQ(reading.dictionary()->value("content-type"), "text/html");
    }
}

TEST(MetadataReadingTest, ReadsABareIcyAnswer)
{
    const QByteArray title = "\x02StreamTitle='Orvel - Matin';" + QByteArray(4, '\0');
    const struct
    {
        const char *name;
        QByteArray body;
        bool over;
        QString told;
    } cases[] = {
        {"interval counted from the header's first byte", icy("icy-metaint:300", 300) + title, true,
         "ICY 200,Orvel - Matin,icy-metaint=300"},
        // The byte at 3 is a space, 0x20: twenty units.
        {"interval within the header", icy("icy-metaint:3\r\nicy-name:'Orvel FM'", 400), true,
         "ICY 200,Orvel FM,icy-metaint=3,icy-name='Orvel FM'"},
        {"texts as they come", icy("a:b:c<BR>\r\n x :  y \r\nno\r\n:z\r\nn:\xe9t\xe9\r\nu:été\r\n\r\nx:y"),
         true, "=z, x =  y ,ICY 200,a=b:c,n=été,u=été"},
        {"interval's name in its own case only", icy("Icy-Metaint:8"), true, "Icy-Metaint=8,ICY 200"},
        {"any case of the status", icy("a:b").toLower(), true, "ICY 200,a=b"},
        {"too short to tell", icy("icy-metaint:0", 199), false, "nothing"},
        {"another answer", icy("a:b").replace("200 OK", "404 No"), true, "nothing"},
        {"negative", icy("icy-metaint:-1", 5000), false, "ICY 200,icy-metaint=-1"},
        {"absurd", icy("icy-metaint:99999999999999", 5000), false, "ICY 200,icy-metaint=99999999999999"},
    };
    for (const auto &it : cases) {
        for (const qsizetype chunk : {1, 33, 100000}) {
            SCOPED_TRACE(it.name);
            const auto reading = read<MetadataReading>({}, it.body, chunk);
            EXPECT_EQ(reading.isOver(), it.over);
            EXPECT_EQ(told(reading), it.told);
        }
    }
    // Only as much of a long header as there is when the answer is told.
    const QByteArray longHeader = icy("n:" + QByteArray(300, 'x') + "\r\nicy-metaint:5000");
    EXPECT_TRUE(read<MetadataReading>({}, longHeader, 100).isOver());
    EXPECT_FALSE(read<MetadataReading>({}, longHeader, 1000).isOver());
}

TEST(ContentTypeReadingTest, TakesTheHeadersOrTheIcyAnswersType)
{
    const UrlResponse typed = response({{"CONTENT-TYPE", "audio/aac"}});
    const UrlResponse untyped = response({{"Content-Type", ""}});
    const std::tuple<UrlResponse, QByteArray, bool, QString> cases[] = {
        {typed, {}, true, "audio/aac"},
        {untyped, icy("content-type: audio/aacp"), true, " audio/aacp"},
        {untyped, icy("Content-Type:audio/mpeg", 900), false, {}},
        {untyped, icy("content-type:audio/mpeg", 199), false, {}},
        {untyped, QByteArray(200, 's'), true, {}},
    };
    for (const auto &[head, body, over, type] : cases) {
        const auto reading = read<ContentTypeReading>(head, body, 10);
        EXPECT_EQ(reading.isOver(), over);
        EXPECT_EQ(reading.contentType(), type);
        EXPECT_EQ(reading.contentType().isNull(), type.isNull());
    }
}
