// Trees of XML elements: how they are built, what they tell, and that they tell what the toolkit's own do.
#include "readers/XmlDetail.h"

#include <QBuffer>
#include <QDomDocument>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace EDA;

// An element in one line: a name, its "id" if it has one, and its children, or its text if it has none.
std::string inWords(const XmlElement &element) {
    std::string words = element.localName().toStdString();
    if (element.hasAttribute(QLatin1String("id")))
        words += "#" + element.attribute(QLatin1String("id")).toStdString();
    std::string children;
    eachChild(element, [&](const XmlElement &child, const QString &name) {
        EXPECT_EQ(name, child.localName());
        children += " " + inWords(child);
    });
    return words + (children.empty() ? "'" + element.text().toStdString() + "'" : "(" + children + " )");
}

std::string inWords(const QDomElement &element) {
    std::string words = element.localName().toStdString();
    if (element.hasAttribute("id")) words += "#" + element.attribute("id").toStdString();
    std::string children;
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        children += " " + inWords(child);
    return words + (children.empty() ? "'" + element.text().toStdString() + "'" : "(" + children + " )");
}

class XmlTrees : public testing::Test {
protected:
    bool loads(const std::string &text) {
        tree = XmlTree(limits);
        return loadXml(text, limits, tree);
    }
    std::string loaded(const std::string &text) { return loads(text) ? inWords(tree.root()) : "refused"; }
    XmlElement child(const char *name) const { return childOf(tree.root(), QLatin1String(name)); }

    XmlLimits limits;
    XmlTree tree{limits};
};

// What elements tell.

TEST_F(XmlTrees, AnEmptyTreeHasNoRoot) { EXPECT_TRUE(tree.root().isNull()); }

TEST_F(XmlTrees, ANullElementHasNothing) {
    const XmlElement none;
    EXPECT_EQ(none.localName(), "");
    EXPECT_EQ(none.text(), "");
    EXPECT_EQ(none.attribute(QLatin1String("id")), "");
    EXPECT_FALSE(none.hasAttribute(QLatin1String("id")));
    EXPECT_TRUE(childOf(none, QLatin1String("a")).isNull());
    eachChild(none, [](const XmlElement &, const QString &) { ADD_FAILURE(); });
}

TEST_F(XmlTrees, ChildrenComeInOrderAndAreTheElementsOwn) {
    EXPECT_EQ(loaded("<a><b><c/><d><e/></d></b><f/><b/></a>"), "a( b( c'' d( e'' ) ) f'' b'' )");
}

TEST_F(XmlTrees, TheFirstChildOfANameIsFound) {
    ASSERT_TRUE(loads("<a><b><c>1</c></b><c>2</c><c>3</c></a>"));
    EXPECT_EQ(childText(tree.root(), QLatin1String("c")), "2");
    EXPECT_TRUE(child("d").isNull());
    EXPECT_EQ(childText(tree.root(), QLatin1String("d")), "");
}

TEST_F(XmlTrees, TextIsAllThatLiesWithin) {
    ASSERT_TRUE(loads("<a>1<b>2<c>3</c>4</b>5<d>6</d>7</a>"));
    EXPECT_EQ(tree.root().text(), "1234567");
    EXPECT_EQ(child("b").text(), "234");
    EXPECT_EQ(child("d").text(), "6");
}

TEST_F(XmlTrees, AttributesAreTheElementsOwn) {
    ASSERT_TRUE(loads("<a p='1' q='2'><b/><c q='3'/><d q=''/></a>"));
    EXPECT_EQ(tree.root().attribute(QLatin1String("p")), "1");
    EXPECT_EQ(tree.root().attribute(QLatin1String("q")), "2");
    EXPECT_FALSE(child("b").hasAttribute(QLatin1String("q")));
    EXPECT_EQ(child("c").attribute(QLatin1String("q")), "3");
    EXPECT_FALSE(child("c").hasAttribute(QLatin1String("p")));
    EXPECT_TRUE(child("d").hasAttribute(QLatin1String("q")));
    EXPECT_EQ(child("d").attribute(QLatin1String("q")), "");
}

TEST_F(XmlTrees, OfSeveralAttributesOfALocalNameTheLastCounts) {
    EXPECT_EQ(loaded("<a xmlns:p='u' id='1' p:id='2'/>"), "a#2''");
    EXPECT_EQ(loaded("<a xmlns:p='u' p:id='2' id='1'/>"), "a#1''");
}

// What of a document is kept.

TEST_F(XmlTrees, NamesAreLocalNames) {
    EXPECT_EQ(loaded("<p:a xmlns:p='u' xmlns='v'><q:b xmlns:q='w'/><c/></p:a>"), "a( b'' c'' )");
}

TEST_F(XmlTrees, TextsOfBlanksAreDropped) {
    EXPECT_EQ(loaded("<a>\n <b> </b>\t<c> 1 </c>\n</a>"), "a( b'' c' 1 ' )");
}

TEST_F(XmlTrees, CharacterDataIsText) { EXPECT_EQ(loaded("<a>1<![CDATA[<b> ]]>2</a>"), "a'1<b> 2'"); }

TEST_F(XmlTrees, EntitiesStandForTheirTexts) {
    EXPECT_EQ(loaded("<!DOCTYPE a [<!ENTITY e 'x&lt;y'>]><a id='&e;'>1&e;2&amp;&#65;</a>"), "a#x<y'1x<y2&A'");
}

TEST_F(XmlTrees, UnknownEntitiesStandForNothing) {
    EXPECT_EQ(loaded("<!DOCTYPE a [<!ENTITY e SYSTEM 'none'>]><a>1&e;2</a>"), "a'12'");
}

TEST_F(XmlTrees, CommentsAndInstructionsAreNoText) {
    EXPECT_EQ(loaded("<!--0--><?p 0?><a>1<!--2--><?p 3?>4</a><!--5-->"), "a'14'");
}

TEST_F(XmlTrees, TextsBeyondTheAsciiCharactersStay) {
    EXPECT_EQ(loaded("<a id='\xC3\xA4'>\xE2\x82\xAC\xF0\x9F\x98\x80</a>"),
              "a#\xC3\xA4'\xE2\x82\xAC\xF0\x9F\x98\x80'");
}

TEST_F(XmlTrees, WhatIsNotWellFormedIsRefused) {
    for (const char *text :
         {"", " ", "text", "<a>", "<a></b>", "<a/><b/>", "<a/>text", "<a b/>", "</a>", "<p:/>"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(loads(text));
    }
}

// Limits.

TEST_F(XmlTrees, ElementsAndAttributesBeyondTheLimitAreRefused) {
    limits.nodes = 4;
    EXPECT_TRUE(loads("<a><b/><b/><b/></a>"));
    EXPECT_FALSE(loads("<a><b/><b/><b/><b/></a>"));
    EXPECT_TRUE(loads("<a c=''><b c=''/></a>"));
    EXPECT_FALSE(loads("<a c=''><b c='' d=''/></a>"));
}

TEST_F(XmlTrees, NamesBeyondTheLimitAreRefused) {
    limits.names = 2;
    EXPECT_TRUE(loads("<a b=''><b a=''/><a/></a>"));
    EXPECT_FALSE(loads("<a><b/><c/></a>"));
    EXPECT_FALSE(loads("<a><b c=''/></a>"));
}

// Building.

TEST_F(XmlTrees, PartsOutOfPlaceAreRefused) {
    EXPECT_FALSE(tree.addText("text"));
    EXPECT_FALSE(tree.addAttribute("id", "1"));
    EXPECT_FALSE(tree.endElement());
    EXPECT_FALSE(tree.beginElement(""));
    EXPECT_TRUE(tree.beginElement("a"));
    EXPECT_TRUE(tree.endElement());
    EXPECT_FALSE(tree.beginElement("b"));
    EXPECT_FALSE(tree.addText("text"));
    EXPECT_FALSE(tree.addAttribute("id", "1"));
    EXPECT_FALSE(tree.endElement());
    EXPECT_EQ(inWords(tree.root()), "a''");
}

// Against the toolkit's own tree, of the same bytes.

const std::vector<std::string> documents = {
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--c--><p:a xmlns:p='u' id='r'>\n <p:b "
    "id='1'>t<p:c/>u</p:b>"
    "<b q='2' id='3'> </b><![CDATA[ <x> ]]>&lt;&#10;&gt;</p:a>",
    "<!DOCTYPE a [<!ENTITY e 'one'><!ENTITY f '<b>two</b>'><!ENTITY x SYSTEM 'n'>]><a id='&e;'>&e;&f;&x;</a>",
    "<a><b><c><d>1</d>2</c>3</b><?p i?>4<!-- 5 -->6</a>",
};

TEST_F(XmlTrees, TellsWhatTheToolkitsOwnTreeTells) {
    const unsigned seed = 8151;
    std::mt19937 random(seed);
    const std::string bytes = "<>/&;'\"= !?[]-abc:x\n\xC3\xA4#1";
    int numWellFormed = 0;
    for (int times = 0; times < 6'000; ++times) {
        std::string text = documents[random() % documents.size()];
        for (unsigned changes = random() % 4; changes > 0; --changes) {
            const std::size_t at = random() % text.size();
            const unsigned kind = random() % 3;
            if (kind == 0) text[at] = bytes[random() % bytes.size()];
            if (kind == 1) text.erase(at, 1 + random() % 3);
            if (kind == 2) text.insert(at, text, random() % text.size(), random() % 8);
        }
        SCOPED_TRACE(text);
        QByteArray copy = QByteArray::fromStdString(text);
        QBuffer buffer(&copy);
        QDomDocument document;
        const bool isWellFormed = document.setContent(&buffer, true);
        EXPECT_EQ(loaded(text), isWellFormed ? inWords(document.documentElement()) : "refused");
        if (!isWellFormed) continue;
        EXPECT_EQ(tree.root().text(), document.documentElement().text());
        ++numWellFormed;
    }
    EXPECT_GT(numWellFormed, 1'000);
}

} // namespace
