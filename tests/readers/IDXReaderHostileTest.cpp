// Documents that mean harm: limits, small files that would grow, damaged files.
#include "readers/IDXTestSupport.h"

#include <cmath>
#include <random>

namespace {

using namespace IDXTest;

std::string repeated(const std::string &part, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += part;
    return all;
}

std::string instances(const std::string &itemId, int times, const std::string &more = "") {
    return withId("Item", "ALL", repeated(element("ItemInstance", element("Item", itemId) + more), times));
}

std::string manyPoints(const std::string &id, int times) {
    std::string points;
    for (int i = 0; i < times; ++i)
        points += i % 2 ? "<Point>A</Point>" : "<Point>B</Point>";
    return point("A", 0, 0) + point("B", 1, 1) + withId("PolyLine", id, points);
}

class IDXLimits : public testing::Test {
protected:
    bool read(const std::string &body) {
        reader = EDA::IDXReader(limits);
        return reader.readFile(folder.write("limits.idx", document(body)));
    }
    TestSupport::TempFolder folder;
    EDA::IDXReaderLimits limits;
    EDA::IDXReader reader;
};

TEST_F(IDXLimits, PointsBeyondTheLimitAreLeftOutWithOneMessage) {
    limits.points = 25;
    EXPECT_TRUE(read(polygon("E", "0,0 4,0 4,1 0,1") + shape("KeepOut", "S", {"E"}) + item("I", "S") +
                     instances("I", 9)));
    EXPECT_EQ(reader.getError(), "More than 25 outline points: the others are left out.\n");
    EXPECT_EQ(reader.getBoard().numKeepouts(), 9u);
    std::size_t points = 0;
    for (auto keepout = reader.getBoard().beginKeepouts(); keepout != reader.getBoard().endKeepouts();
         ++keepout)
        points += keepout->getOutline().numPoints();
    EXPECT_EQ(points, 25u);
}

TEST_F(IDXLimits, PointsOfComponentsCountEachTime) {
    limits.points = 10;
    EXPECT_TRUE(read(polygon("E", "0,0 4,0 4,1 0,1") + shape("AssemblyComponent", "S", {"E"}) +
                     item("I", "S") + instances("I", 3)));
    EXPECT_EQ(reader.getError(), "More than 10 outline points: the others are left out.\n");
    EXPECT_EQ(reader.getBoard().numComponentPlacements(), 3u);
}

TEST_F(IDXLimits, ArcsCountAsWhatTheyAreCutInto) {
    limits.points = 38;
    EXPECT_TRUE(read(disc("E", 0, 0, 4) + part("P", "AssemblyComponent", {"E"})));
    EXPECT_EQ(reader.getError(), "More than 38 outline points: the others are left out.\n");
    limits.points = 39;
    EXPECT_TRUE(read(disc("E", 0, 0, 4) + part("P", "AssemblyComponent", {"E"})));
    EXPECT_EQ(reader.getError(), "");
}

TEST_F(IDXLimits, OutlinesBeyondTheLimitAreLeftOut) {
    limits.outlines = 3;
    EXPECT_TRUE(read(polygon("E", "0,0 4,0 4,1") +
                     shape("Stratum", "S", {"E", "E", "E", "E", "E"}, element("StratumTechnology", "T"))));
    EXPECT_EQ(reader.getError(), "More than 3 outlines: the others are left out.\n");
    EXPECT_EQ(reader.getBoard().getNthLayer(0).numTraces(), 3u);
    EXPECT_TRUE(read(polygon("E", "0,0 4,0 4,1") + part("K", "KeepOut", {"E", "E", "E", "E", "E"})));
    EXPECT_EQ(reader.getBoard().beginKeepouts()->getOutline().numInternalOutlines(), 3);
}

TEST_F(IDXLimits, ReferencesBeyondTheLimitAreLeftOut) {
    limits.lookUps = 100;
    EXPECT_TRUE(read(polygon("E", "0,0 4,0 4,1") + shape("KeepOut", "S", {"E"}) + item("I", "S") +
                     instances("I", 100)));
    EXPECT_EQ(reader.getError(),
              "More than 100 references between shapes and curves: the others are left out.\n");
    EXPECT_EQ(reader.getBoard().numKeepouts(), 100u);
}

TEST_F(IDXLimits, CurvesBeyondTheLimitOfAnElementEndIt) {
    limits.curvesPerElement = 3;
    EXPECT_TRUE(read(polyLine("L", "0,0 1,0") + polyLine("M", "2,2 3,3") +
                     curveSet("C", {"L", "M", "L", "M", "L"}) + shapeElement("E", "C") +
                     part("P", "KeepOut", {"E", "E"})));
    EXPECT_EQ(reader.getError(), "Failed to find curve element M\nFailed to find curve element M\n");
    EXPECT_EQ(reader.getBoard().beginKeepouts()->getOutline().numPoints(), 6u);
}

TEST_F(IDXLimits, NamesThatManyShareAreBounded) {
    limits.textBytes = 25;
    EXPECT_TRUE(read(polygon("E", "0,0 4,0 4,1") + shape("AssemblyComponent", "S", {"E"}) +
                     item("I", "S", package("0123456789")) + instances("I", 4)));
    EXPECT_EQ(reader.getError(), "More than 25 bytes of names: the others are left out.\n");
    EXPECT_EQ(reader.getBoard().beginPlacements()[1].getName(), "0123456789");
    EXPECT_EQ(reader.getBoard().beginPlacements()[2].getName(), "");
}

TEST_F(IDXLimits, MessagesBeyondTheLimitAreCounted) {
    limits.messages = 2;
    EXPECT_TRUE(read(instances("NONE", 7)));
    EXPECT_EQ(reader.getError(),
              "Unhandled Object Type \nUnhandled Object Type \nThere were 5 further messages.\n");
    limits.messages = 1000;
    limits.messageBytes = 50;
    EXPECT_TRUE(read(instances("NONE", 7)));
    EXPECT_EQ(reader.getError(),
              "Unhandled Object Type \nUnhandled Object Type \nThere were 5 further messages.\n");
}

TEST_F(IDXLimits, TheFirstMessageWithoutRoomEndsThem) {
    limits.messageBytes = 100;
    const auto ofKind = [](const std::string &name, const std::string &kind) {
        return part(name, "InterStratumFeature", {}, "", element("InterStratumFeatureType", kind));
    };
    EXPECT_TRUE(read(ofKind("A", "Short") + ofKind("B", std::string(200, 'k')) + ofKind("C", "Short")));
    EXPECT_EQ(reader.getError(), "Unhandled Object Type Short\nThere were 2 further messages.\n");
}

TEST_F(IDXLimits, AMessageIsOneLineWhateverTheNameHolds) {
    limits.messages = 3;
    const std::string lines = "Odd&#10;&#10;Kind&#13;X";
    EXPECT_TRUE(read(shape("InterStratumFeature", "S", {}, element("InterStratumFeatureType", lines)) +
                     item("I", "S") + instances("I", 1) + curveSet("C", {"A&#10;B"}) +
                     shapeElement("E", "C") + part("P", "KeepOut", {"E"})));
    EXPECT_EQ(reader.getError(), "Unhandled Object Type Odd  Kind X\nFailed to find curve element A B\n");
}

TEST_F(IDXLimits, TracesAtTheLimitStayBelowAGibibyte) {
    EXPECT_LT(limits.outlines * sizeof(EDA::EDATrace), std::size_t{1} << 30);
}

// Long ids, at a hundred look-ups each.

const std::string longId(6'400, 'i');

TEST_F(IDXLimits, LongIdsOfShapesCountMore) {
    limits.lookUps = 1'000;
    EXPECT_TRUE(read(polygon("E", "0,0 4,0 4,1") + shape("KeepOut", longId, {"E"}) + item("I", longId) +
                     instances("I", 20)));
    EXPECT_EQ(reader.getError(),
              "More than 1000 references between shapes and curves: the others are left out.\n");
    EXPECT_LT(reader.getBoard().numKeepouts(), 11u);
}

TEST_F(IDXLimits, LongIdsOfPointsCountMore) {
    limits.lookUps = 1'000;
    const std::string curves[] = {
        withId("PolyLine", "L", element("Point", longId)), withId("Arc", "L", element("EndPoint", longId)),
        withId("CircleCenter", "L", element("Center", longId) + value("Diameter", "1")),
        withId("CompositeCurve", "L", element("Curve", longId)) + circle(longId, 0, 0, 1)};
    for (const std::string &curve : curves) {
        EXPECT_TRUE(read(curve + curveSet("C", {"L"}) + shapeElement("E", "C") +
                         shape("KeepOut", "S", {"E"}) + item("I", "S") + instances("I", 20)));
        EXPECT_EQ(reader.getError(),
                  "More than 1000 references between shapes and curves: the others are left out.\n");
    }
}

TEST_F(IDXLimits, LongIdsOfElementsAndCurveSetsCountMore) {
    limits.lookUps = 1'000;
    const std::pair<std::string, std::string> pairs[] = {{longId, "C"}, {"E", longId}};
    for (const auto &[elementId, setId] : pairs) {
        EXPECT_TRUE(read(circle("L", 0, 0, 1) + curveSet(setId, {"L"}) + shapeElement(elementId, setId) +
                         shape("KeepOut", "S", {elementId}) + item("I", "S") + instances("I", 20)));
        EXPECT_EQ(reader.getError(),
                  "More than 1000 references between shapes and curves: the others are left out.\n");
    }
}

TEST_F(IDXLimits, LongNamesOfLayersCountMore) {
    limits.lookUps = 1'000;
    for (const std::string &more : {element("StratumTechnology", longId),
                                    element("StratumTechnology", "T") + element("Name", longId)}) {
        EXPECT_TRUE(read(polygon("B", "0,0 4,0 4,1") + part("BOARD", "Stratum", {"B"}) +
                         shape("Stratum", "S", {}, more) + item("I", "S") + instances("I", 20)));
        EXPECT_EQ(reader.getError(),
                  "More than 1000 references between shapes and curves: the others are left out.\n");
    }
}

TEST_F(IDXLimits, ADepthOfItsOwn) {
    limits.xml.depth = 3;
    EXPECT_FALSE(read(element("A", element("B", ""))));
    EXPECT_TRUE(read(element("A", "")));
}

// Small files that would grow. Each ends in a few seconds, or the test run's time limit meets it.

TEST_F(IDXReaderTest, ManyInstancesOfALargePart) {
    EXPECT_TRUE(read(manyPoints("L", 100'000) + curveSet("C", {"L"}) + shapeElement("E", "C") +
                     shape("AssemblyComponent", "S", {"E"}) + item("I", "S") + instances("I", 20'000)));
    EXPECT_EQ(reader.getError(), "More than 50000000 outline points: the others are left out.\n");
    EXPECT_EQ(board().numComponentPlacements(), 20'000u);
}

TEST_F(IDXReaderTest, ManyCutoutsOfManyElementsWithoutACircle) {
    std::vector<std::string> elements(50'000, "E");
    EXPECT_TRUE(
        read(polygon("E", "0,0 4,0 4,1") +
             shape("InterStratumFeature", "S", elements, element("InterStratumFeatureType", "Cutout")) +
             item("I", "S") + instances("I", 20'000)));
    EXPECT_THAT(reader.getError(),
                testing::HasSubstr("More than 20000000 references between shapes and curves"));
    EXPECT_THAT(reader.getError(), testing::EndsWith(" further messages.\n"));
}

TEST_F(IDXReaderTest, ManyTreesThatDouble) {
    std::string tree = circle("C0", 0, 0, 0);
    for (int i = 1; i <= 40; ++i) {
        const std::string below = "C" + std::to_string(i - 1);
        tree += withId("CompositeCurve", "C" + std::to_string(i), references("Curve", {below, below}));
    }
    EXPECT_TRUE(read(tree + curveSet("S", {"C40"}) + shapeElement("E", "S") + shape("KeepOut", "K", {"E"}) +
                     item("I", "K") + instances("I", 5'000)));
    EXPECT_THAT(reader.getError(), testing::HasSubstr("More than 20000000 references"));
}

TEST_F(IDXReaderTest, ManyLayersAtOneHeight) {
    std::string strata;
    for (int i = 0; i < 50'000; ++i)
        strata += shape("Stratum", "S" + std::to_string(i), {},
                        element("StratumTechnology", "T") + element("Name", "N" + std::to_string(i)));
    readWell(strata, creator("Expedition"));
    EXPECT_EQ(board().numLayers(), 50'000u);
}

// Damaged files.

const std::string whole = document(
    withId("UnitLength", "U", element("Fundamental", "mm")) + polygon("EDGE", "0,0 40,0 40,30", 0, 1.6) +
        disc("HOLE", 5, 5, 3, 0, 1.6, element("Inverted", "true")) +
        part("BoardOutline", "Stratum", {"EDGE", "HOLE"}, property("THICKNESS", "1.6")) +
        polygon("BODY", "0,0 4,0 4,1", 0, 2, turned(0, 1, 1, 0, 1, 2)) +
        part("CAP", "AssemblyComponent", {"BODY"}, placed(-1, 0, 0, 1, 20, 8)) +
        part("KEEP", "KeepOut", {"BODY"}, property("SIDE", "TOP"), element("Purpose", "Route")) +
        part("VIA", "InterStratumFeature", {"HOLE"}, "", element("InterStratumFeatureType", "Cutout")) +
        technology("T") + shape("Stratum", "TOP", {"EDGE"}, element("StratumTechnology", "T")),
    creator("Expedition") + property("IDX_FILE_TYPE", "BASELINE"));

bool isFinite(const EDA::EDAOutline &outline) {
    for (auto at = outline.beginPoints(); at != outline.endPoints(); ++at)
        if (!std::isfinite(at->x) || !std::isfinite(at->y) || !std::isfinite(at->angle)) return false;
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        if (!isFinite(*inner)) return false;
    return true;
}

void readAny(const TestSupport::TempFolder &folder, const std::string &bytes) {
    EDA::IDXReader reader;
    const bool isRead = reader.readFile(folder.write("any.idx", bytes));
    EXPECT_TRUE(isRead || reader.getError().empty());
    const EDA::EDABoard &board = reader.getBoard();
    EXPECT_TRUE(isFinite(board.getOutline()) && std::isfinite(board.getThickness()));
    for (auto part = board.beginComponents(); part != board.endComponents(); ++part)
        EXPECT_TRUE(isFinite(part->getOutline()) && std::isfinite(part->getHeight()));
}

TEST(IDXDamagedFiles, TheWholeOneIsRead) {
    const TestSupport::TempFolder folder;
    EDA::IDXReader reader;
    ASSERT_TRUE(reader.readFile(folder.write("whole.idx", whole)));
    EXPECT_EQ(reader.getError(), "");
    EXPECT_EQ(reader.getBoard().numLayers(), 1u);
    EXPECT_EQ(reader.getBoard().numVias(0), 1u);
    EXPECT_EQ(reader.getBoard().numKeepouts(), 1u);
}

TEST(IDXDamagedFiles, CutAnywhere) {
    const TestSupport::TempFolder folder;
    for (std::size_t size = 0; size < whole.size(); size += 37)
        readAny(folder, whole.substr(0, size));
}

TEST(IDXDamagedFiles, BitsFlipped) {
    const unsigned seed = 20261121;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const TestSupport::TempFolder folder;
    for (int times = 0; times < 400; ++times) {
        std::string damaged = whole;
        for (unsigned flips = 1 + random() % 3; flips > 0; --flips)
            damaged[random() % damaged.size()] ^= static_cast<char>(1u << random() % 8);
        readAny(folder, damaged);
    }
}

TEST(IDXDamagedFiles, TextsExchanged) {
    const unsigned seed = 471108;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const TestSupport::TempFolder folder;
    const std::vector<std::string> texts = {"",           "inf",  "nan",      "-1e308", "1e308", "1e400",
                                            "2147483648", "EDGE", "CAP_ITEM", "BODY_S", "EDGE_L"};
    for (int times = 0; times < 400; ++times) {
        std::string damaged = whole;
        for (int changes = 0; changes < 6; ++changes) {
            const std::size_t begin = damaged.find('>', random() % damaged.size());
            const std::size_t end = damaged.find('<', begin);
            if (end != std::string::npos)
                damaged.replace(begin + 1, end - begin - 1, texts[random() % texts.size()]);
        }
        readAny(folder, damaged);
    }
}

TEST(IDXDamagedFiles, AllBytes) {
    const TestSupport::TempFolder folder;
    std::string bytes;
    for (int c = 0; c < 256; ++c)
        bytes += static_cast<char>(c);
    readAny(folder, bytes);
    readAny(folder, "<a>" + bytes + "</a>");
    readAny(folder, std::string(1, '\0'));
    readAny(folder, std::string(1'000'000, '<'));
    readAny(folder, "<a b=\"" + std::string(1'000'000, 'x') + "\"/>");
}

} // namespace
