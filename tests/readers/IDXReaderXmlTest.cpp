// The XML of IDX documents: what would grow, and what a document is known by.
#include "readers/IDXTestSupport.h"

namespace {

using namespace IDXTest;

std::string repeated(const std::string &part, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += part;
    return all;
}

std::string numbered(const std::string &before, const std::string &after, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += before + std::to_string(i) + after;
    return all;
}

class IDXReaderXml : public testing::Test {
protected:
    bool reads(const std::string &bytes) {
        EDA::IDXReader reader(limits);
        const bool isRead = reader.readFile(folder.write("any.idx", bytes));
        EXPECT_EQ(reader.getError(), "");
        return isRead;
    }
    // With the text as that of the entity "e".
    bool readsWithEntity(const std::string &text, const std::string &content) {
        return reads("<!DOCTYPE a [<!ENTITY x SYSTEM \"none\"><!ENTITY e \"" + text + "\">]>" + content);
    }
    bool isDocument(const std::string &bytes) const {
        return EDA::IDXReader::isDocument(folder.write("any.xml", bytes));
    }
    TestSupport::TempFolder folder;
    EDA::IDXReaderLimits limits;
};

// Entities.

TEST_F(IDXReaderXml, EntitiesThatMultiplyNodesAreRefused) {
    for (const char *node : {"<b/>", "t<b/>", "<!---->", "<?p?>", "<![CDATA[]]>", "&x;"}) {
        SCOPED_TRACE(node);
        const std::string text = repeated(node, 300);
        EXPECT_TRUE(readsWithEntity(text, "<a>" + repeated("&e;", 10) + "</a>"));
        EXPECT_FALSE(readsWithEntity(text, "<a>" + repeated("&e;", 250) + "</a>"));
    }
}

TEST_F(IDXReaderXml, EntitiesThatMultiplyTextAreRefused) {
    const std::string text(1'000, 'n');
    for (const std::string &node :
         {text, "<b" + text + "/>", "<b " + text + "=''/>", "<b c='" + text + "'/>",
          "<b xmlns='" + text + "'/>", "<b xmlns:" + text + "='u'/>", "<!--" + text + "-->",
          "<?p " + text + "?>", "<![CDATA[" + text + "]]>"}) {
        SCOPED_TRACE(node.substr(0, 12));
        EXPECT_TRUE(readsWithEntity(node, "<a>" + repeated("&e;", 10) + "</a>"));
        EXPECT_FALSE(readsWithEntity(node, "<a>" + repeated("&e;", 100) + "</a>"));
    }
}

TEST_F(IDXReaderXml, EntitiesInAttributeValuesCountAsWell) {
    const std::string text(1'000, 'n');
    EXPECT_TRUE(readsWithEntity(text, "<a b='" + repeated("&e;", 10) + "'/>"));
    EXPECT_FALSE(readsWithEntity(text, "<a b='" + repeated("&e;", 100) + "'/>"));
    EXPECT_FALSE(readsWithEntity(text, "<a>" + repeated("<b c='&e;'/>", 100) + "</a>"));
}

// A text of blanks gives no node, but takes its time all the same.
TEST_F(IDXReaderXml, EntitiesThatWouldTakeLongAreRefused) {
    limits.xml.entityText = 400'000;
    const std::string blanks(1'000, ' ');
    for (const std::string &text : {blanks, std::string("&x;")}) { // which may stand for much
        EXPECT_TRUE(readsWithEntity(text, "<a>&e;</a>"));
        EXPECT_FALSE(readsWithEntity(text, "<a>" + repeated("&e;", 100) + "</a>"));
    }
    const std::string declaration = "<!DOCTYPE a [<!ENTITY % e \"" + blanks + "\">";
    EXPECT_TRUE(reads(declaration + "%e;]><a/>"));
    EXPECT_FALSE(reads(declaration + repeated("%e;", 100) + "]><a/>"));
}

TEST_F(IDXReaderXml, ManyEntitiesAreRefused) {
    const std::string content = "]><a/>";
    EXPECT_TRUE(reads("<!DOCTYPE a [" + numbered("<!ENTITY e", " 'x'>", 1'000) + content));
    EXPECT_FALSE(reads("<!DOCTYPE a [" + numbered("<!ENTITY e", " 'x'>", 1'001) + content));
    EXPECT_FALSE(reads("<!DOCTYPE a [" + numbered("<!ENTITY e", " SYSTEM 'x'>", 1'001) + content));
}

TEST_F(IDXReaderXml, DeclarationsPlayNoPart) {
    EXPECT_TRUE(reads("<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA 'c'><!NOTATION n SYSTEM 'n'>"
                      "<!ENTITY p SYSTEM 'p' NDATA n>]><a/>"));
}

TEST_F(IDXReaderXml, DenseDocumentsWithoutEntitiesAreRead) {
    for (const char *node :
         {"<b/>", "t<b/>", "<!---->", "<?p?>", "<![CDATA[]]>", "&x;", "t&x;", "<b c=''/>"}) {
        SCOPED_TRACE(node);
        EXPECT_TRUE(
            reads("<!DOCTYPE a [<!ENTITY x SYSTEM \"none\">]><a>" + repeated(node, 150'000) + "</a>"));
    }
}

// Prefixes and attributes.

TEST_F(IDXReaderXml, ManyPrefixesAtOnePlaceAreRefused) {
    EXPECT_TRUE(reads("<a" + numbered(" xmlns:p", "='u'", 64) + "/>"));
    EXPECT_FALSE(reads("<a" + numbered(" xmlns:p", "='u'", 65) + "/>"));
    EXPECT_FALSE(
        reads("<a" + numbered(" xmlns:p", "='u'", 33) + "><b" + numbered(" xmlns:q", "='u'", 32) + "/></a>"));
}

TEST_F(IDXReaderXml, PrefixesOfElementsThatEndedDoNotCount) {
    EXPECT_TRUE(reads("<a>" + numbered("<b xmlns:p", "='u'/>", 200) + "</a>"));
    EXPECT_TRUE(
        reads("<a" + numbered(" xmlns:p", "='u'", 64) + "><b" + numbered(" xmlns:p", "='v'", 64) + "/></a>"));
}

TEST_F(IDXReaderXml, ManyAttributesOfAnElementAreRefused) {
    EXPECT_TRUE(reads("<a" + numbered(" b", "=''", 1'000) + "/>"));
    EXPECT_FALSE(reads("<a" + numbered(" b", "=''", 1'001) + "/>"));
    EXPECT_FALSE(reads("<a" + numbered(" b", "=''", 200'000) + "/>"));
}

// What a document is known by.

TEST_F(IDXReaderXml, ALongCommentDoesNotHideTheFirstElement) {
    for (const std::size_t length : {70'000u, 3'000'000u}) {
        const std::string text = "<?xml version=\"1.0\"?><!--" + std::string(length, 'c') + "-->";
        EXPECT_TRUE(isDocument(text + "<EDMDDataSet/>"));
        EXPECT_FALSE(isDocument(text + "<Other/>"));
        EXPECT_FALSE(isDocument(text));
    }
}

TEST_F(IDXReaderXml, TheFirstElementIsLookedForInTheFirst16Mebibytes) {
    const std::size_t limit = 16 * 1024 * 1024;
    EXPECT_TRUE(isDocument(std::string(limit - 15, '\n') + "<EDMDDataSet/>"));
    EXPECT_FALSE(isDocument(std::string(limit, '\n') + "<EDMDDataSet/>"));
}

TEST_F(IDXReaderXml, LimitsHoldBeforeTheFirstElementToo) {
    EXPECT_FALSE(isDocument("<!DOCTYPE a [" + numbered("<!ENTITY e", " 'x'>", 1'001) + "]><EDMDDataSet/>"));
    EXPECT_FALSE(isDocument("<EDMDDataSet" + numbered(" xmlns:p", "='u'", 65) + "/>"));
}

} // namespace
