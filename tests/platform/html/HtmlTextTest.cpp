#include "platform/html/HtmlText.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Case
{
    const char *html;
    const char16_t *text;
};

void expectTexts(const std::vector<Case> &cases)
{
    for (const auto &[html, text] : cases)
        EXPECT_EQ(plainTextOfHtml(html), QString::fromUtf16(text)) << html;
}

} // namespace

TEST(HtmlTextTest, BlocksCellsAndBreaksAreLines)
{
    expectTexts({{"", u""},
                 {"Un\n <b> deux</b>\ttrois ", u"Un deux trois"},
                 {"<p>Un</p>\n<p></p><p>Deux<p>Trois", u"Un\nDeux\nTrois"},
                 {"<p>a<br></p>b <br><br>c<hr>d", u"a\nb\n\nc\n\nd"},
                 {"<h1>T</h1>x<ul><li>a<li>b<ol><li>c</ol></ul>d", u"T\nx\na\nb\nc\nd"},
                 {"<table><tr><td>a</td><td>b</tr><tr><th>c</table>d", u"a\nb\nc\nd"},
                 {"a<blockquote>q</blockquote>z<dl><dt>t<dd>d</dl>", u"a\nq\nz\nt\nd"},
                 {"<pre>\n x\n\n  <i>y  w</i> z\n</pre>a  b", u" x\n\n  y  w z\na b"},
                 {"<html><head><title>T</title></head><body>a</body></html>b", u"a\nb"}});
}

TEST(HtmlTextTest, ResolvesEntities)
{
    expectTexts(
        {{"&lt;3 &eacute;t&eacute; &#233;&#xE9;&nbsp;&nbsp;&amp;amp; &hellip;&apos;", u"<3 été éé  &amp; …'"},
         {"x&#146;y &#128;", u"x’y €"}, // Windows' numbers
         {"&bogus; &#0;&#xD800;&#99999999999;a& b &", u"&bogus; a& b &"},
         {"&#x1F3A7;<meta charset=iso-8859-1>é", u"🎧é"}});
}

TEST(HtmlTextTest, LeavesOutWhatIsNotText)
{
    expectTexts({{"a<script>b('<p>')</script><style>c</style><!-- d -->e", u"ae"},
                 {"<!DOCTYPE html><![if !supportLists]>a<![endif]><!--[if mso]><p>b<![endif]-->c", u"ac"},
                 {"<img src='file:///etc/passwd' alt='x'>a<iframe src='file:///etc/passwd'></iframe>", u"a"},
                 {"a < b<c", u"a < b"},
                 {"</div>a</html>b</body>c", u"abc"}});
}

TEST(HtmlTextTest, ReadsAPlainTextInHtmlAgain)
{
    for (const QString &text :
         {u"a < b & c\n\n  deux  espaces\nété 🎧"_qs, u"<script>alert(1)</script>"_qs, u""_qs})
        EXPECT_EQ(plainTextOfHtml(htmlOfPlainText(text)), text);
}
