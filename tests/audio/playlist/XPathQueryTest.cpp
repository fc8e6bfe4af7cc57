#include "audio/playlist/XPathQuery.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(XPathQueryTest, TellsNamesContentsAttributesAndChildren)
{
    const QByteArray document =
        "<r><a k=' v ' empty=''> one <b>two</b><!--no--> three<![CDATA[ raw ]]></a><a/>\xC3\xA9</r>";
    const auto nodes = xpathQuery(document, {}, "//a");
    ASSERT_TRUE(nodes);
    ASSERT_EQ(nodes->size(), 2U);
    const XmlNode &first = nodes->front();
    EXPECT_EQ(first.nodeName, "a");
    EXPECT_EQ(first.nodeContent, "onethree");
    ASSERT_EQ(first.nodeAttributeArray.size(), 2U);
    EXPECT_EQ(first.nodeAttributeArray[0].attributeName, "k");
    EXPECT_EQ(first.nodeAttributeArray[0].nodeContent, "v");
    EXPECT_FALSE(first.nodeAttributeArray[0].attributeContent);
    EXPECT_EQ(first.nodeAttributeArray[1].nodeContent, "");
    ASSERT_EQ(first.nodeChildArray.size(), 3U);
    EXPECT_EQ(first.nodeChildArray[0].nodeContent, "two");
    EXPECT_EQ(first.nodeChildArray[1].nodeContent, "no");
    EXPECT_EQ(first.nodeChildArray[2].nodeName, std::nullopt);
    EXPECT_EQ(first.nodeChildArray[2].nodeContent, " raw ");
    EXPECT_FALSE(nodes->back().nodeContent);
    const auto asked = xpathQuery(document, {}, "//a", 1);
    ASSERT_EQ(asked->size(), 1U);
    EXPECT_EQ(asked->front().nodeContent, "onethree");

    EXPECT_EQ(xpathQuery(document, {}, "//r/text()")->front().nodeContent, QString::fromUtf8("é"));
}

TEST(XPathQueryTest, ReadsEveryKindOfNodeAQueryCanFind)
{
    const QByteArray document =
        "<!DOCTYPE r [<!ELEMENT r ANY><!ENTITY e 'x'>]><?p i?><r a='b&e;c' xmlns:n='u'>&e;</r>";
    EXPECT_EQ(xpathQuery(document, {}, "/")->front().nodeChildArray.size(), 3U);
    EXPECT_EQ(xpathQuery(document, {}, "//@a")->front().nodeContent, "bc");
    EXPECT_EQ(xpathQuery(document, {}, "//namespace::n")->size(), 0U);
    const XmlNode root = xpathQuery(document, {}, "//r")->front();
    ASSERT_EQ(root.nodeChildArray.size(), 1U);
    EXPECT_EQ(root.nodeChildArray[0].nodeName, "e");
    EXPECT_FALSE(root.nodeChildArray[0].nodeContent);
    EXPECT_TRUE(root.nodeChildArray[0].nodeChildArray.empty());
}

TEST(XPathQueryTest, GivesNothingForWhatCannotBeEvaluated)
{
    EXPECT_FALSE(xpathQuery(QByteArray("<a/>"), {}, "//["));
    EXPECT_FALSE(xpathQuery(QByteArray("<a/>"), {}, "//x:a"));
    EXPECT_FALSE(xpathQuery(QByteArray("<a/>"), {}, "count(//a)"));
    EXPECT_FALSE(xpathQuery(QByteArray(), {}, "//a"));
    EXPECT_EQ(xpathQuery(QByteArray("<a/>"), {}, "//b")->size(), 0U);
    EXPECT_EQ(xpathQuery(QByteArray("<x:a xmlns:x='u'/>"), {{"y", "u"}}, "//y:a")->size(), 1U);
    // Deep nesting ends the reading, not the program.
    EXPECT_TRUE(xpathQuery(QByteArray("<a>").repeated(100000), {}, "//a"));
}
