#include "audio/probe/MetadataReading.h"

#include "audio/probe/ContentTypeReading.h"
#include "audio/probe/StreamFileType.h"

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

// "sound" and a block under this length byte.
QByteArray blockBehindFive(const QByteArray &text, int lengthByte)
{
    return "sound" + QByteArray(1, char(lengthByte)) + text.leftJustified(2000, '\0');
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

const UrlResponse everyFive = response({{"Content-Type", "audio/mpeg"}, {"Icy-MetaInt", " 5;x"}});

QByteArray icy(const QByteArray &fields) { return "ICY 200 OK\r\n" + fields + "\r\n\r\n"; }

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
        {"StreamTitle='';StreamUrl='http://orvel.example';", 0x03, {}},
        {"StreamTitle='Bient\xf4t';", 0x02, {}},
        {"StreamTitle=matinale", 0x02, {}},
        {"anything 'at all' x", 0x02, "at all"},
        {"StreamTitle='Orvel - Matin';", 0x00, {}},
        {"StreamTitle='Orvel - Matin';", 0x0A, {}},
        {"StreamTitle='Orvel - Matin';", 0xA2, {}},
        {"StreamTitle='Orvel - Matin';", 0xFF, {}},
        {"'sixteen'", 0x1F, "sixteen"},                              // one unit
        {QByteArray(145, 'x') + "'within ten'", 0x10, "within ten"}, // 160 bytes, not 256
        {QByteArray(160, 'x') + "'beyond ten'", 0x10, {}},
        {QByteArray(1570, 'x') + "'within 99'", 0x99, "within 99"},
    };
    for (const auto &test : cases) {
        for (const qsizetype chunk : {1, 5, 7, 100000}) {
            SCOPED_TRACE(test.block.toStdString() + ' ' + std::to_string(test.lengthByte));
            const QByteArray body = blockBehindFive(test.block, test.lengthByte);
            const auto reading = read<MetadataReading>(everyFive, body, chunk);
            EXPECT_TRUE(reading.isOver());
            EXPECT_EQ(reading.dictionary()->value("StreamResponceType"), "HTTP 200");
            EXPECT_EQ(reading.dictionary()->value("Icy-MetaInt"), " 5;x");
            EXPECT_EQ(reading.dictionary()->contains("StreamTitle"), !test.title.isNull());
            EXPECT_EQ(reading.dictionary()->value("StreamTitle"), test.title);
        }
    }
    const QByteArray cut = blockBehindFive("StreamTitle='Orvel - Matin';", 2).first(5 + 32);
    EXPECT_FALSE(read<MetadataReading>(everyFive, cut, 3).isOver());
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
    const MetadataDictionary type{{"StreamResponceType", "ICY 200"}};
    const auto with = [&](MetadataDictionary more) {
        more.insert(type);
        return std::optional(more);
    };
    const struct
    {
        const char *name;
        QByteArray body;
        bool over;
        std::optional<MetadataDictionary> dictionary;
    } cases[] = {
        {"interval counted from the header's first byte",
         icy("icy-metaint:300").leftJustified(300, 's') + title, true,
         with({{"icy-metaint", "300"}, {"StreamTitle", "Orvel - Matin"}})},
        // The byte at 3 is a space, 0x20: twenty units.
        {"interval within the header", icy("icy-metaint:3\r\nicy-name:'Orvel FM'").leftJustified(400, 's'),
         true, with({{"icy-metaint", "3"}, {"icy-name", "'Orvel FM'"}, {"StreamTitle", "Orvel FM"}})},
        {"texts as they come",
         QByteArray(
             "icy 200 ok\r\na:b:c<BR>\r\n x :  y \r\nnothing\r\n:z\r\nn:\xe9t\xe9\r\nu:été\r\n\r\nno:more")
             .leftJustified(200, 's'),
         true, with({{"a", "b:c"}, {" x ", "  y "}, {"", "z"}, {"n", "\u00e9t\u00e9"}, {"u", "été"}})},
        {"interval's name in its own case only", icy("Icy-Metaint:8").leftJustified(300, 's'), true,
         with({{"Icy-Metaint", "8"}})},
        {"too short to tell", icy("icy-metaint:0").leftJustified(199, 's'), false, std::nullopt},
        {"another answer", QByteArray("ICY 404 Not Found\r\n\r\n").leftJustified(200, 's'), true,
         std::nullopt},
        {"negative", icy("icy-metaint:-1").leftJustified(5000, 's'), false, with({{"icy-metaint", "-1"}})},
        {"absurd", icy("icy-metaint:99999999999999999999").leftJustified(5000, 's'), false,
         with({{"icy-metaint", "99999999999999999999"}})},
    };
    for (const auto &test : cases) {
        for (const qsizetype chunk : {1, 33, 100000}) {
            SCOPED_TRACE(test.name);
            const auto reading = read<MetadataReading>({}, test.body, chunk);
            EXPECT_EQ(reading.isOver(), test.over);
            EXPECT_EQ(reading.dictionary(), test.dictionary);
        }
    }
    // Only as much of a long header as there is when the answer is told.
    const QByteArray longHeader = icy("n:" + QByteArray(300, 'x') + "\r\nicy-metaint:5000");
    EXPECT_TRUE(read<MetadataReading>({}, longHeader, 100).isOver());
    EXPECT_FALSE(read<MetadataReading>({}, longHeader, 1000).isOver());
}

TEST(ContentTypeReadingTest, TakesTheHeadersOrTheIcyAnswersType)
{
    const struct
    {
        UrlResponse head;
        QByteArray body;
        bool over;
        QString type;
    } cases[] = {
        {response({{"CONTENT-TYPE", "audio/aac"}}), {}, true, "audio/aac"},
        {response({{"Content-Type", ""}}), icy("content-type:audio/aacp").leftJustified(200, 's'), true,
         "audio/aacp"},
        {{}, icy("content-type: audio/mpeg").leftJustified(200, 's'), true, " audio/mpeg"},
        {{}, icy("Content-Type:audio/mpeg").leftJustified(900, 's'), false, {}},
        {{}, icy("content-type:audio/mpeg").leftJustified(199, 's'), false, {}},
        {{}, QByteArray(200, 's'), true, {}},
    };
    for (const auto &test : cases) {
        const auto reading = read<ContentTypeReading>(test.head, test.body, 10);
        EXPECT_EQ(reading.isOver(), test.over);
        EXPECT_EQ(reading.contentType(), test.type);
        EXPECT_EQ(reading.contentType().isNull(), test.type.isNull());
    }
}

TEST(StreamFileTypeTest, ComparesContentTypesExactly)
{
    EXPECT_EQ(streamFileType(u"audio/mpeg").fileExtension, "mp3");
    EXPECT_EQ(streamFileType(u"application/octet-stream").hint, AudioFileType::kAudioFileMP3Type);
    EXPECT_EQ(streamFileType(u"audio/3gpp2").fileExtension, "3gp");
    EXPECT_EQ(streamFileType(u"audio/3gpp2").hint, AudioFileType::kAudioFile3GP2Type);
    EXPECT_EQ(streamFileType(u"application/ogg").fileExtension, "ogg");
    EXPECT_EQ(streamFileType(u"application/ogg").hint, AudioFileType::none);
    for (const QStringView other : {u"Audio/MPEG", u" audio/mpeg", u"audio/mpeg;", u"text/html", u""}) {
        EXPECT_TRUE(streamFileType(other).fileExtension.isNull());
        EXPECT_EQ(streamFileType(other).hint, AudioFileType::none);
    }
}
