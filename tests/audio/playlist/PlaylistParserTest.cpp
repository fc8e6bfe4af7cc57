#include "audio/playlist/M3UParser.h"
#include "audio/playlist/PLSParser.h"
#include "audio/playlist/XSPFParser.h"
#include "support/Footprint.h"

#include <ctime>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

using Cases = std::vector<std::pair<QByteArray, std::optional<QString>>>;

template<typename Parser>
void expectStreams(const Cases &cases)
{
    for (const auto &[body, stream] : cases)
        EXPECT_EQ(Parser().parseStreamUrl(body), stream) << body.constData();
}

QByteArray xspf(const QByteArray &tracks, const QByteArray &nameSpace = "http://xspf.org/ns/0/")
{
    return "<?xml version=\"1.0\"?><playlist xmlns=\"" + nameSpace + "\"><trackList>" + tracks;
}

} // namespace

TEST(PlaylistParserTest, M3UTakesTheFirstLineThatBeginsWithHttp)
{
    expectStreams<M3UParser>({
        {"#EXTM3U\r\n#EXTINF:-1,Radio\r\nhttp://a/live \r\nhttp://b/live\r\n", "http://a/live "},
        {"live.mp3\n  http://a/\nHTTP://b/\nhttps://c/", "https://c/"},
        {"one\xC2\x85http://a/\xE2\x80\xA8two", "http://a/"},
        {"#Caf\xE9\nhttp://a/", std::nullopt},
        {"#EXTM3U\n", std::nullopt},
        {"", std::nullopt},
    });
}

TEST(PlaylistParserTest, PLSTakesTheEarliestFileEntry)
{
    expectStreams<PLSParser>({
        {"[playlist]\nNumberOfEntries=2\nFile2=http://b/?x=1 \nFile1=http://a/\n", "http://b/?x=1 "},
        {"File1\nfile2=http://a/\n File3=http://b/\nFile=ftp", "ftp"},
        {"File1=\n", ""},
        {"Title1=Caf\xE9\nFile1=http://a/\r\nTitle2=Et\xC9", "http://a/"}, // in Latin-1
        {"Title1=Caf\xE9\nFile1=http://a/\xC3\x85t\xC3\xA9", "http://a/Åté"},
        {"File1=http://caf\xE9/\nFile2=http://a/", std::nullopt},
        {"[playlist]", std::nullopt},
    });
}

TEST(PlaylistParserTest, XSPFTakesTheFirstLocationOfATrack)
{
    expectStreams<XSPFParser>({
        {xspf("<track><title>x</title><location>\n http://a/ \n</location></track>"
              "<track><location>http://b/</location></track></trackList></playlist>"),
         "http://a/"},
        {xspf("<track><location> http://a/<!-- split -->\n live </location></track>"), "http://a/live"},
        {xspf("<track><location>http://a/?x=1&amp;y=2</location></track>"), "http://a/?x=1&y=2"},
        {xspf("<track><location> </location></track>"), ""},
        {xspf("<track><location/></track><track><location>http://b/</location></track>"), std::nullopt},
        {xspf("<track><location>http://a/</location></track>", "http://other.example/"), std::nullopt},
        {xspf("<location>http://a/</location>"), std::nullopt},
        {"not a playlist", std::nullopt},
        {"", std::nullopt},
    });
}

// What a hostile document holds is neither unfolded nor read, and costs no time. Libxml2 alone would take
// minutes for a tag of endless attributes: alike, differing, and in an encoding that hides them.
TEST(PlaylistParserTest, XSPFStaysWithinItsDocument)
{
    QByteArray explosive = "<!ENTITY e0 'http://127.0.0.1/'>";
    for (int i = 1; i < 30; ++i)
        explosive += "<!ENTITY e" + QByteArray::number(i) + " '" +
                     ("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "'>";
    QByteArray declared;
    QByteArray differing;
    QByteArray disguised;
    for (int i = 0; i < 100'000; ++i) {
        declared += "<!ATTLIST a b" + QByteArray::number(i) + " CDATA 'x'>";
        differing += " a" + QByteArray::number(i, 16) + "=''";
        disguised += " a" + QByteArray::number(i % 4000, 16) + "+AD0''";
    }
    const auto document = [](const QByteArray &declarations, const QByteArray &location) {
        return "<!DOCTYPE p [" + declarations + "]>" +
               xspf("<track><location>" + location + "</location></track></trackList></playlist>").sliced(21);
    };
    const std::clock_t before = std::clock(); // the processor's time, whatever else the machine does
    expectStreams<XSPFParser>({
        {document(explosive, "&e29;"), std::nullopt},
        {document("<!ENTITY f SYSTEM 'file:///etc/hostname'>", "&f;"), std::nullopt},
        {"<!DOCTYPE p [" + declared + "]><p>" + QByteArray("<a/>").repeated(200000), std::nullopt},
        {document("<!ENTITY l '" + QByteArray(200000, 'y') + "'>",
                  "http://a/" + QByteArray("&l;").repeated(50000)),
         "http://a/"},
        {"<a" + QByteArray(" a=''").repeated(100'000) + "/>", std::nullopt},
        {"<a" + differing + "/>", std::nullopt},
        {"<?xml version='1.0' encoding='UTF-7'?><a" + disguised + "/>", std::nullopt},
    });
    EXPECT_LT(std::clock() - before, (test::isSanitized ? 30 : 3) * CLOCKS_PER_SEC);
}
