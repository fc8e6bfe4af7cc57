#include "platform/html/HtmlReader.h"
#include "support/Footprint.h"

#include <QList>
#include <ctime>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Recorder : HtmlHandler
{
    void startElement(const QByteArray &name, const HtmlAttributes &attributes) override
    {
        events += '<' + name;
        for (const QByteArray key : {"href", "title"}) {
            if (attributes.contains(key))
                events += ' ' + key + '=' + attributes[key].toUtf8();
        }
        events += '>';
        open.append(name);
        deepest = std::max(deepest, open.size());
    }
    void endElement(const QByteArray &name) override
    {
        events += "</" + name + '>';
        EXPECT_FALSE(open.isEmpty());
        EXPECT_EQ(open.takeLast(), name);
    }
    void characters(const QString &text) override { events += text.toUtf8(); }

    QByteArray events;
    QByteArrayList open;
    qsizetype deepest = 0;
};

// What is reported, and that all that was started is ended.
Recorder read(const QString &html)
{
    Recorder recorder;
    readHtml(html, recorder);
    EXPECT_TRUE(recorder.open.isEmpty()) << html.left(100).toStdString();
    return recorder;
}

} // namespace

TEST(HtmlReaderTest, ReportsElementsAttributesAndText)
{
    EXPECT_EQ(read(u"<A HREF='?a=1&amp;b=é' title>x<Br/>y</a></p>"_qs).events,
              "<a href=?a=1&b=\xc3\xa9 title=>x<br></br>y</a>");
    EXPECT_EQ(read("<p>a<b>b<i>c</p>d").events, "<p>a<b>b<i>c</i></b></p>d");
}

TEST(HtmlReaderTest, EndsAllWhereNestingIsTooDeepAndReadsOn)
{
    QString html;
    QByteArray texts;
    for (int i = 0; i < 3 * maxHtmlDepth; ++i) {
        html += QStringLiteral("<u>%1 ").arg(i);
        texts += QByteArray::number(i) + ' ';
    }
    Recorder recorder = read(html);
    EXPECT_EQ(recorder.deepest, maxHtmlDepth);
    // The tag that is one too many is lost, its text is not.
    EXPECT_EQ(recorder.events.replace("<u>", "").replace("</u>", ""), texts);
}

TEST(HtmlReaderTest, ReadsNoMoreThanItsBound)
{
    const qsizetype bytes = 256 * 1024;
    for (const QString &text : {u"é"_qs, u"aé"_qs, u"🎧"_qs, u"a🎧"_qs}) {
        const QByteArray events = read(text.repeated(bytes)).events;
        EXPECT_LE(events.size(), bytes);
        EXPECT_GT(events.size(), bytes - 4);
        EXPECT_TRUE(QString::fromUtf8(text.repeated(bytes).toUtf8()).startsWith(QString::fromUtf8(events)));
    }
}

QString attributesOf(qsizetype bytes)
{
    QString attributes;
    for (int i = 0; attributes.size() < bytes; ++i)
        attributes += QStringLiteral(" a%1").arg(i);
    return attributes;
}

TEST(HtmlReaderTest, LeavesOutAttributesWhereTheNamesAreTooMany)
{
    EXPECT_EQ(read("<p" + attributesOf(3 * 1024) + " title=x>a").events, "<p title=x>a</p>");
    EXPECT_EQ(read("<p" + attributesOf(16 * 1024) + " title=x>a<br>b").events, "<p>a<br></br>b</p>");
}

// Far above what each takes, far below what it takes where the time grows with the square.
TEST(HtmlReaderTest, TakesTimeInProportionToTheSize)
{
    const QString attributes = attributesOf(256 * 1024);
    const auto many = [](const char *tag) {
        return QString(tag).repeated(128 * 1024 / qsizetype(qstrlen(tag)));
    };
    const std::clock_t before = std::clock(); // the processor's time, whatever else the machine does
    for (const QString &html : {"<p" + attributes + '>', many("<b>") + many("</i>"),
                                many("<div>") + many("</p>"), many("<b>") + many("<body>"), many("<!"),
                                many("<table><tr><td>"), many("<a"), u"<td colspan=1000000000>"_qs})
        read(html);
    EXPECT_LT(std::clock() - before, (test::isSanitized ? 20 : 2) * CLOCKS_PER_SEC);
}
