// Walking XML documents forward within limits.
#include "host/QvDbWrap/IpcXml.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <chrono>
#include <limits>
#include <stdexcept>

using namespace QvDbWrap;

namespace {

// The names of all elements, each with its children in brackets.
std::string namesOf(IpcXml &xml) {
    std::string names = xml.name();
    std::string children;
    xml.eachChild([&] { children += (children.empty() ? "" : " ") + namesOf(xml); });
    return children.empty() ? names : names + "(" + children + ")";
}

std::string walk(const QByteArray &document) {
    IpcXml xml(document);
    xml.openRoot();
    return namesOf(xml);
}

// The message that reading the whole document ends in; empty when it is read.
std::string failureOf(const QByteArray &document) {
    try {
        walk(document);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return {};
}

bool contains(const std::string &text, const std::string &part) {
    return text.find(part) != std::string::npos;
}

double numberOf(const QByteArray &text) {
    IpcXml xml("<a n='" + text + "'/>");
    xml.openRoot();
    return xml.number("n", -7);
}

double secondsOf(const QByteArray &document) {
    const auto start = std::chrono::steady_clock::now();
    failureOf(document);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string textOf(const std::string &value) {
    IpcXml xml(QByteArray::fromStdString("<a t=\"" + value + "\"/>"));
    xml.openRoot();
    return xml.text("t");
}

TEST(IpcXml, ShortensLongTextsAndKeepsThemApart) {
    const std::string most(IpcXml::maxText, 'a');
    EXPECT_EQ(textOf(most), most);
    const std::string shortened = textOf(most + 'b');
    EXPECT_EQ(shortened.size(), IpcXml::maxText);
    EXPECT_EQ(shortened.substr(0, 200), most.substr(0, 200));
    EXPECT_NE(shortened, textOf(most + 'c'));
    EXPECT_EQ(shortened, textOf(most + 'b'));
    EXPECT_EQ(IpcXml::shortened(most + 'b'), shortened);
    EXPECT_EQ(IpcXml::shortened(shortened), shortened);
}

TEST(IpcXml, ShortensBetweenCharacters) {
    for (const char *start : {"", "a", "aa", "aaa"}) {
        std::string text = start;
        for (int i = 0; i < 100; ++i)
            text += "\xF0\x9F\x98\x80";
        const std::string shortened = textOf(text);
        EXPECT_LE(shortened.size(), IpcXml::maxText);
        EXPECT_EQ((shortened.size() - std::string(start).size() - 17) % 4, 0u) << start;
    }
}

TEST(IpcXml, CountsTheTextsThatItShortens) {
    IpcXml xml(QByteArray::fromStdString("<a t=\"" + std::string(300, 'a') + "\" u=\"b\"/>"));
    xml.openRoot();
    xml.text("t");
    xml.text("u");
    EXPECT_EQ(xml.numShortened(), 1u);
}

} // namespace

TEST(IpcXml, WalksThroughAllElementsInOrder) {
    EXPECT_EQ(walk("<?xml version='1.0'?><!-- c --><a>text<b/><c><d/>more<e></e></c></a>"), "a(b c(d e))");
}

TEST(IpcXml, PassesOverWhatIsLeftUnread) {
    IpcXml xml(QByteArray("<a><b><deep><deeper/></deep></b><c/></a>"));
    xml.openRoot();
    std::string names;
    xml.eachChild([&] { names += xml.name(); });
    EXPECT_EQ(names, "bc");
}

TEST(IpcXml, ComparesNamesWithoutTheirPrefix) {
    IpcXml xml(QByteArray("<p:a xmlns:p='u'/>"));
    xml.openRoot();
    EXPECT_TRUE(xml.is("a"));
    EXPECT_FALSE(xml.is("p:a"));
    EXPECT_FALSE(xml.is("ab"));
    EXPECT_EQ(xml.name(), "a");
}

TEST(IpcXml, TakesPrefixesThatAreNotDeclared) { EXPECT_EQ(walk("<q:a><q:b/></q:a>"), "a(b)"); }

TEST(IpcXml, GivesAttributesOfTheElementOpenedLast) {
    IpcXml xml(QByteArray("<a n='1'><b n='2' x='y'/></a>"));
    xml.openRoot();
    EXPECT_EQ(xml.number("n"), 1);
    xml.eachChild([&] {
        EXPECT_EQ(xml.number("n"), 2);
        EXPECT_EQ(xml.text("x"), "y");
        EXPECT_TRUE(xml.has("x"));
        EXPECT_FALSE(xml.has("z"));
        EXPECT_EQ(xml.text("z"), "");
    });
}

TEST(IpcXml, LeavesAttributesWithAPrefixToOtherVocabularies) {
    IpcXml xml(QByteArray("<a xsi:type='T' xmlns:xsi='u'/>"));
    xml.openRoot();
    EXPECT_FALSE(xml.has("type"));
}

TEST(IpcXml, ReadsNumbersAsTheyAreWritten) {
    EXPECT_EQ(numberOf("0.1"), 0.1);
    EXPECT_EQ(numberOf("-2.5e-3"), -2.5e-3);
    EXPECT_EQ(numberOf("+4."), 4);
    EXPECT_EQ(numberOf(".5"), 0.5);
    EXPECT_EQ(numberOf(" \t7 "), 7);
}

TEST(IpcXml, GivesTheFallbackForWhatIsNoNumber) {
    for (const char *text : {"", " ", "x", "1mm", "1,5", "nan", "inf", "-inf", "1e400", "--1", "+-1", "+",
                             "-", "0x10", "1 2", "\xC3\xA9"})
        EXPECT_EQ(numberOf(text), -7) << text;
    EXPECT_EQ(numberOf(QByteArray(5000, '1')), -7);
}

TEST(IpcXml, ReadsFlagsInAnyCase) {
    IpcXml xml(QByteArray("<a t='TRUE' o='1' f='false' z='0' n='2'/>"));
    xml.openRoot();
    EXPECT_TRUE(xml.flag("t"));
    EXPECT_TRUE(xml.flag("o"));
    EXPECT_FALSE(xml.flag("f", true));
    EXPECT_FALSE(xml.flag("z", true));
    EXPECT_FALSE(xml.flag("n", true));
    EXPECT_TRUE(xml.flag("missing", true));
}

TEST(IpcXml, GivesTextAsUtf8FromAnyEncoding) {
    const QString document = QString::fromUtf8("<?xml version=\"1.0\" encoding=\"%1\"?><a n=\"\xC3\xA9\"/>");
    for (const char *encoding : {"UTF-8", "UTF-16", "ISO-8859-1", "windows-1252"}) {
        const QTextCodec *codec = QTextCodec::codecForName(encoding);
        IpcXml xml(codec->fromUnicode(document.arg(QLatin1String(encoding))));
        xml.openRoot();
        EXPECT_EQ(xml.text("n"), "\xC3\xA9") << encoding;
    }
}

TEST(IpcXml, TellsThePlaceOfAFailure) {
    EXPECT_EQ(failureOf("<a>\n<b></c></a>").rfind("line 2, column ", 0), 0u);
}

TEST(IpcXml, ADocumentThatBreaksOffIsAFailure) {
    const QByteArray whole = "<?xml version='1.0'?><a n='1'><b/><c>t</c></a>";
    EXPECT_EQ(failureOf(whole), "");
    for (int length = 0; length < whole.size(); ++length)
        EXPECT_NE(failureOf(whole.left(length)), "") << length;
}

TEST(IpcXml, WhatIsNoXmlIsAFailure) {
    for (const QByteArray &document :
         {QByteArray(), QByteArray(" "), QByteArray("text"), QByteArray("PK\3\4"), QByteArray(1000, '\0'),
          QByteArray("<a>\0</a>", 8), QByteArray("<a b='1' b='2'/>"), QByteArray("<!-- only -->")})
        EXPECT_NE(failureOf(document), "") << document.toStdString();
}

TEST(IpcXml, AFailureIsToldAgainByTheNextOperation) {
    IpcXml xml(QByteArray("<a><b></a>"));
    xml.openRoot();
    const auto walkOn = [&] { xml.eachChild([] {}); };
    EXPECT_THROW(walkOn(), std::runtime_error);
    EXPECT_THROW(walkOn(), std::runtime_error);
}

TEST(IpcXml, ElementsMayBeNestedToALimit) {
    const auto nested = [](int depth) {
        return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
    };
    EXPECT_EQ(failureOf(nested(IpcXml::maxDepth)), "");
    EXPECT_TRUE(contains(failureOf(nested(IpcXml::maxDepth + 1)), "elements are nested too deep"));
}

TEST(IpcXml, AnElementMayHaveAttributesToALimit) {
    const auto withAttributes = [](int count) {
        QByteArray document = "<a";
        for (int i = 0; i < count; ++i)
            document += " n" + QByteArray::number(i) + "=''";
        return document + "/>";
    };
    EXPECT_EQ(failureOf(withAttributes(IpcXml::maxAttributes)), "");
    EXPECT_TRUE(contains(failureOf(withAttributes(IpcXml::maxAttributes + 1)), "too many attributes"));
}

TEST(IpcXml, AMillionAttributesAreRefusedBeforeTheyAreCompared) {
    QByteArray document = "<?xml version='1.0'?><a";
    for (int i = 0; i < 1000000; ++i)
        document += " n" + QByteArray::number(i) + "='>'";
    document += "/>";
    EXPECT_TRUE(contains(failureOf(document), "too many attributes"));
    EXPECT_LT(secondsOf(document), 20);
    const QByteArray wide = QTextCodec::codecForName("UTF-16")->fromUnicode(QString::fromUtf8(document));
    EXPECT_TRUE(contains(failureOf(wide), "too many attributes"));
}

TEST(IpcXml, TextMayHoldMoreEqualSignsThanAttributesAreAllowed) {
    EXPECT_EQ(failureOf("<a>" + QByteArray(IpcXml::maxAttributes * 2, '=') + "</a>"), "");
}

TEST(IpcXml, CharactersThatXmlNamesAreResolved) {
    IpcXml xml(QByteArray("<a n='&amp;&lt;&#65;'/>"));
    xml.openRoot();
    EXPECT_EQ(xml.text("n"), "&<A");
}

TEST(IpcXml, ADocumentTypeIsRefused) {
    const QByteArray entities = "<!DOCTYPE a [<!ENTITY e 'x'><!ATTLIST a n CDATA 'given'>]><a/>";
    for (const QByteArray &document :
         {entities, QByteArray("<!DOCTYPE a><a/>"), "<?xml version='1.0'?>\n<!-- - -- c -->" + entities,
          "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><?p >?>" + entities,
          QTextCodec::codecForName("UTF-16")->fromUnicode(QString::fromUtf8(entities)),
          QTextCodec::codecForName("UTF-16BE")->fromUnicode(QString::fromUtf8(entities))})
        EXPECT_TRUE(contains(failureOf(document), "a document type declaration (DOCTYPE)"))
            << document.toStdString();
}

TEST(IpcXml, ADocumentTypeIsFoundInPiecesOfAnySize) {
    IpcProlog prolog;
    for (const char c : std::string("<?xml?><!-- <!DOCTYPE --><!DOCTYP"))
        prolog.add(c);
    EXPECT_TRUE(prolog.hasDocumentType());
}

TEST(IpcXml, ADocumentTypeIsRefusedBeforeItIsTakenIn) {
    const QByteArray start = "<!DOCTYPE a [";
    EXPECT_TRUE(
        contains(failureOf(start + QByteArray("<!ATTLIST a n CDATA 'x'>").repeated(200000)), "DOCTYPE"));
    EXPECT_TRUE(contains(failureOf(start + QByteArray("<").repeated(10)), "DOCTYPE")); // unlike the parser's
}

TEST(IpcXml, WhatOnlyLooksLikeADocumentTypeIsNone) {
    EXPECT_EQ(walk("<?xml version='1.0'?><!-- <!DOCTYPE a> --><?p <!DOCTYPE a>?>"
                   "<a><![CDATA[<!DOCTYPE a>]]><!-- <!DOCTYPE a> --></a>"),
              "a");
}

TEST(IpcXml, EntitiesThatAreNotDeclaredAreRefused) {
    EXPECT_NE(failureOf("<a>&e;</a>"), "");
    EXPECT_NE(failureOf("<a n='&e;'/>"), "");
}

TEST(IpcXml, ReadsAFileByItsName) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QString::fromUtf8("b\xC3\xB6rd.xml")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<a><b/></a>");
    file.close();
    IpcXml xml(file.fileName().toStdString());
    xml.openRoot();
    EXPECT_EQ(namesOf(xml), "a(b)");
}

TEST(IpcXml, AFileThatCanNotBeReadIsAFailure) {
    QTemporaryDir folder;
    EXPECT_THROW(IpcXml(folder.filePath("missing").toStdString()), std::runtime_error);
    EXPECT_THROW(IpcXml(folder.path().toStdString()), std::runtime_error);
}

TEST(IpcXml, AFileAboveTheLimitIsNotOpened) {
    QTemporaryDir folder;
    QFile file(folder.filePath("large"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(IpcBytes::maxBytes + 1));
    file.close();
    EXPECT_THROW(IpcXml(file.fileName().toStdString()), std::runtime_error);
}
