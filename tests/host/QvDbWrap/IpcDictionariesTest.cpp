// Dictionaries of IPC-2581 documents and the shapes that use them.
#include "IpcShapeSupport.h"

#include "host/QvDbWrap/IpcDictionaries.h"

#include <gtest/gtest.h>

#include <chrono>

using namespace QvDbWrap;

namespace {

constexpr double rounding = 1e-9;

std::string userEntry(const std::string &id, const std::string &content) {
    return "<EntryUser id='" + id + "'><UserSpecial>" + content + "</UserSpecial></EntryUser>";
}

std::string userReference(const std::string &id) { return "<UserPrimitiveRef id='" + id + "'/>"; }

std::string userDictionary(const std::string &entries) {
    return "<DictionaryUser units='MILLIMETER'>" + entries + "</DictionaryUser>";
}

bool tells(const IpcBench &bench, const std::string &text) {
    return bench.log.text().find(text) != std::string::npos;
}

// Entries 0 to count - 1, each of which uses the one before `uses` times; 0 is a square millimetre.
std::string chain(int count, int uses) {
    std::string entries = userEntry("0", "<RectCenter width='1' height='1'/>");
    for (int i = 1; i < count; ++i) {
        std::string content;
        for (int j = 0; j < uses; ++j)
            content += userReference(std::to_string(i - 1));
        entries += userEntry(std::to_string(i), content);
    }
    return userDictionary(entries);
}

} // namespace

TEST(IpcDictionaries, EachDictionaryHasItsOwnUnits) {
    IpcBench bench;
    EXPECT_TRUE(bench.dictionary("<DictionaryStandard units='INCH'><EntryStandard id='a'>"
                                 "<RectCenter width='1' height='1'/></EntryStandard></DictionaryStandard>"));
    EXPECT_NEAR(areaOf(bench.geometry.findShape("a")), 25.4 * 25.4, rounding);
}

TEST(IpcDictionaries, ADictionaryWithoutUnitsCountsInThoseThatAreSet) {
    IpcBench bench;
    bench.geometry.setMetresPerUnit(1e-6);
    bench.dictionary("<DictionaryStandard><EntryStandard id='a'><RectCenter width='1000' height='1000'/>"
                     "</EntryStandard></DictionaryStandard>");
    EXPECT_NEAR(areaOf(bench.geometry.findShape("a")), 1, rounding);
}

TEST(IpcDictionaries, OtherElementsAreNoDictionaries) {
    IpcBench bench;
    EXPECT_FALSE(bench.dictionary("<Content/>"));
    EXPECT_TRUE(bench.dictionary(
        "<DictionaryColor><EntryColor id='a'><Color r='1'/></EntryColor></DictionaryColor>"));
    EXPECT_TRUE(bench.log.isEmpty());
}

TEST(IpcDictionaries, AReferenceDrawsTheEntry) {
    IpcBench bench;
    bench.dictionary("<DictionaryStandard units='MILLIMETER'><EntryStandard id='a'>"
                     "<RectCenter width='1' height='2'/></EntryStandard></DictionaryStandard>");
    EXPECT_NEAR(areaOf(bench.shape("<StandardPrimitiveRef id='a'/>")), 2, rounding);
    EXPECT_NEAR(areaOf(bench.shape("<UserPrimitiveRef id='a'/>")), 2, rounding);
}

TEST(IpcDictionaries, AnIdOfBothKindsIsThatOfTheReferencesKind) {
    IpcBench bench;
    bench.dictionary("<DictionaryStandard units='MILLIMETER'><EntryStandard id='a'>"
                     "<RectCenter width='1' height='1'/></EntryStandard></DictionaryStandard>");
    bench.dictionary(userDictionary(userEntry("a", "<RectCenter width='1' height='3'/>")));
    EXPECT_NEAR(areaOf(bench.shape("<StandardPrimitiveRef id='a'/>")), 1, rounding);
    EXPECT_NEAR(areaOf(bench.shape("<UserPrimitiveRef id='a'/>")), 3, rounding);
    EXPECT_NEAR(areaOf(bench.geometry.findShape("a")), 1, rounding);
}

TEST(IpcDictionaries, AMissingEntryIsTold) {
    IpcBench bench;
    EXPECT_TRUE(bench.shape("<StandardPrimitiveRef id='a'/>").empty());
    EXPECT_TRUE(bench.geometry.findShape("a").empty());
    EXPECT_EQ(bench.log.count("shape a is in no dictionary"), 2u);
}

TEST(IpcDictionaries, TheFirstOfTwoEntriesCounts) {
    IpcBench bench;
    bench.dictionary(userDictionary(userEntry("a", "<RectCenter width='1' height='1'/>") +
                                    userEntry("a", "<RectCenter width='5' height='5'/>")));
    EXPECT_NEAR(areaOf(bench.geometry.findShape("a")), 1, rounding);
    EXPECT_TRUE(tells(bench, "twice"));
}

TEST(IpcDictionaries, EntriesMayNameLaterOnes) {
    IpcBench bench;
    bench.dictionary(userDictionary(userEntry("a", userReference("b")) +
                                    userEntry("b", "<RectCenter width='1' height='1'/>")));
    EXPECT_NEAR(areaOf(bench.geometry.findShape("a")), 1, rounding);
    EXPECT_TRUE(bench.log.isEmpty());
}

TEST(IpcDictionaries, LineStylesAreFoundByTheirId) {
    IpcBench bench;
    bench.dictionary("<DictionaryLineDesc units='MICRON'><EntryLineDesc id='l'>"
                     "<LineDesc lineEnd='SQUARE' lineWidth='1000'/></EntryLineDesc></DictionaryLineDesc>");
    EXPECT_NEAR(
        areaOf(bench.shape("<Line startX='0' startY='0' endX='1' endY='0'><LineDescRef id='l'/></Line>")), 2,
        rounding);
}

TEST(IpcDictionaries, AMissingLineStyleIsToldAndDrawsNothing) {
    IpcBench bench;
    EXPECT_TRUE(
        bench.shape("<Line startX='0' startY='0' endX='1' endY='0'><LineDescRef id='l'/></Line>").empty());
    EXPECT_TRUE(tells(bench, "line style l"));
}

TEST(IpcDictionaries, FillStylesAreFoundByTheirId) {
    IpcBench bench;
    bench.dictionary(
        "<DictionaryFillDesc units='INCH'><EntryFillDesc id='h'><FillDesc fillProperty='HOLLOW'/>"
        "</EntryFillDesc></DictionaryFillDesc>");
    EXPECT_TRUE(bench.shape("<Circle diameter='1'><FillDescRef id='h'/></Circle>").empty());
    EXPECT_TRUE(bench.log.isEmpty());
    EXPECT_FALSE(bench.shape("<Circle diameter='1'><FillDescRef id='x'/></Circle>").empty());
    EXPECT_TRUE(tells(bench, "fill style x"));
}

TEST(IpcDictionaries, AShapeThatUsesItselfIsLeftOutThere) {
    IpcBench bench;
    const std::string box = "<RectCenter width='1' height='1'/>";
    bench.dictionary(userDictionary(userEntry("a", box + userReference("b")) +
                                    userEntry("b", box + userReference("c")) +
                                    userEntry("c", box + userReference("a"))));
    EXPECT_NEAR(areaOf(bench.geometry.findShape("a")), 3, rounding);
    EXPECT_TRUE(tells(bench, "shape a uses itself"));
    bench.dictionary(userDictionary(userEntry("self", box + userReference("self"))));
    EXPECT_NEAR(areaOf(bench.geometry.findShape("self")), 1, rounding);
}

TEST(IpcDictionaries, ReferencesMayBeSixteenDeep) {
    IpcBench bench;
    bench.dictionary(chain(18, 1));
    EXPECT_NEAR(areaOf(bench.geometry.findShape("16")), 1, rounding);
    EXPECT_TRUE(bench.log.isEmpty());
    EXPECT_TRUE(bench.geometry.findShape("17").empty());
    EXPECT_TRUE(tells(bench, "shape 16 uses others too deep"));
}

TEST(IpcDictionaries, HowDeepAShapeIsDoesNotHangOnTheOrderOfAsking) {
    IpcBench bench;
    bench.dictionary(chain(18, 1));
    EXPECT_TRUE(bench.geometry.findShape("17").empty());
    EXPECT_NEAR(areaOf(bench.geometry.findShape("16")), 1, rounding);
}

TEST(IpcDictionaries, AVeryLongChainIsReadWithoutRecursion) {
    IpcBench bench;
    bench.dictionary(chain(100000, 1));
    bench.geometry.findShape("99999");
    EXPECT_TRUE(tells(bench, "too deep"));
}

TEST(IpcDictionaries, TreesThatDoubleEndAtTheLimitOfPoints) {
    IpcBench bench;
    bench.dictionary(chain(17, 2));
    EXPECT_NEAR(areaOf(bench.geometry.findShape("16")), 65536, 1e-3);
    EXPECT_TRUE(bench.log.isEmpty());
}

TEST(IpcDictionaries, TreesThatGrowWithoutEndAreCut) {
    IpcBench bench;
    const auto start = std::chrono::steady_clock::now();
    bench.dictionary(chain(17, 40));
    bench.geometry.findShape("16");
    EXPECT_TRUE(tells(bench, "draw too many points: some are left out"));
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 60);
}

TEST(IpcDictionaries, AShapeOutsideOfDictionariesMayNotGrowWithoutEndEither) {
    IpcBench bench;
    bench.dictionary(chain(16, 2));
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += userReference("15");
    const Areas areas = bench.shape("<UserSpecial>" + many + "</UserSpecial>");
    EXPECT_TRUE(tells(bench, "draw too many points: some are left out"));
    EXPECT_LT(areas.size(), IpcDictionaries::maxGrowth);
    EXPECT_EQ(bench.shape(userReference("15")).size(), 32768u);
}

TEST(IpcDictionaries, AnEntryMayHoldStrokesAndPrimitives) {
    IpcBench bench;
    bench.dictionary(userDictionary(userEntry("a", "<Line startX='0' startY='0' endX='1' endY='0'>"
                                                   "<LineDesc lineWidth='1' lineEnd='NONE'/></Line>"
                                                   "<Circle diameter='2'/>")));
    EXPECT_EQ(bench.geometry.findShape("a").size(), 2u);
}

TEST(IpcDictionaries, ShapesAreToldFromOtherElements) {
    const auto isShape = [](const char *element) {
        IpcXml xml{QByteArray(element)};
        xml.openRoot();
        return IpcGeometry::isShape(xml);
    };
    for (const char *element : {"<Butterfly/>",
                                "<Circle/>",
                                "<Contour/>",
                                "<Diamond/>",
                                "<Donut/>",
                                "<Ellipse/>",
                                "<Hexagon/>",
                                "<Moire/>",
                                "<Octagon/>",
                                "<Oval/>",
                                "<RectCenter/>",
                                "<RectCham/>",
                                "<RectCorner/>",
                                "<RectRound/>",
                                "<Thermal/>",
                                "<Triangle/>",
                                "<Line/>",
                                "<Arc/>",
                                "<Polyline/>",
                                "<Polygon/>",
                                "<Outline/>",
                                "<UserSpecial/>",
                                "<StandardPrimitiveRef/>",
                                "<UserPrimitiveRef/>"})
        EXPECT_TRUE(isShape(element)) << element;
    for (const char *element : {"<Location/>", "<Xform/>", "<circle/>", "<Text/>", "<Set/>"})
        EXPECT_FALSE(isShape(element)) << element;
}
