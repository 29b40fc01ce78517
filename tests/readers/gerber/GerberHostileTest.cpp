// Damaged and endless files, hostile numbers and shapes, each with the result that it has to give.
#include "GerberHostileSupport.h"

using namespace TestSupport;
using EDA::EDAOutline;
using EDA::GerberLimits;
using EDA::GerberReader;

namespace {

// A layer with every kind of object: flashes, strokes, arcs, regions with a cut-in, a macro, clear objects
// and a step and repeat.
const std::string layerText =
    "G04 all kinds of "
    "objects*\n%FSLAX24Y24*%\n%MOMM*%\n%AMRING*1,1,$1,0,0*1,0,$2,0,0*21,1,$1x2,0.1,0,0,30*%\n"
    "%ADD10C,0.5*%\n%ADD11R,1X0.5X0.2*%\n%ADD12RING,1X0.4*%\n%ADD13P,1X6X15*%\n%ADD14O,1X0.4*%\n"
    "%TA.AperFunction,Conductor*%\n%LPD*%\nG75*\nD10*\nX0Y0D02*\nX50000Y30000D01*"
    "\nG03X90000Y30000I20000J0D01*\n"
    "G01*\nD11*\nX10000Y90000D03*\nD12*\nX100000Y100000D03*\nD13*\nX150000Y100000D03*\nD14*\nX150000D03*\n"
    "G36*\nX200000Y0D02*\nX300000D01*\nY100000D01*\nX200000D01*\nY0D01*\nX220000Y20000D01*\nY40000D01*\n"
    "X240000Y20000D01*\nX220000D01*\nX200000Y0D01*\nG37*\n%LPC*%\nD10*\nX280000Y50000D03*\n%LPD*%\n"
    "%SRX3Y2I2.5J2.0*%\nD10*\nX0Y150000D03*\n%SR*%\nM02*\n";
constexpr std::size_t layerTraces = 14;

const std::string drillText =
    "M48\n;T1 Holesize 1. = 0.5 Tolerance = +0/-0 PLATED MM\nMETRIC,TZ\nT1C0.5\nT2C0.8F200S50\n%\n"
    "G90\nT1\nX10000Y20000\nR5X1000Y500\nT2\nX5000\nY-7000\nM00\nM30\n";
constexpr std::size_t drillHoles = 8;

// Damaged text must read, as what is left of it; a layer only fails when it says that it is not of copper.
void readAnyBytes(const std::string &text, bool merge = false) {
    GerberBench bench;
    bench.reader.setMergeConductors(merge);
    const bool isRead = bench.read(text);
    const std::string &error = bench.reader.getError();
    EXPECT_EQ(isRead, error.find("This file does not represent a Copper layer") == std::string::npos)
        << error;
    expectFinite(bench.board());
}

std::size_t numTraces(const std::string &text) {
    GerberBench bench;
    EXPECT_TRUE(bench.read(text));
    expectFinite(bench.board());
    return bench.board().numLayers() == 1 ? bench.traces().size() : 0;
}

std::string utf16(const std::string &text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text)
        bytes += {c, '\0'};
    return bytes;
}

// What numbers may look like that are none, or none that a board can hold.
const char *const badNumbers[] = {"-1e300", "1e400", "inf",         "nan",         "0x1p3", "-inf",  "+5",
                                  "1.2.3",  "",      "-2147483648", "99999999999", "--1",   "1e-400"};

} // namespace

TEST(GerberHostileFiles, TheExamplesHoldWhatTheTestsCountOn) {
    EXPECT_EQ(numTraces(layerText), layerTraces);
    GerberBench bench;
    EXPECT_TRUE(bench.read(drillText, "a.drl"));
    EXPECT_EQ(bench.board().numVias(1), drillHoles);
}

TEST(GerberHostileFiles, AnEmptyFileIsAnEmptyLayer) {
    GerberBench bench;
    EXPECT_TRUE(bench.read(""));
    EXPECT_EQ(bench.board().numLayers(), 1U);
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberHostileFiles, OneByteIsAnEmptyLayerWithAtMostOneMessage) {
    for (int byte = 0; byte < 256; ++byte) {
        GerberBench bench;
        EXPECT_TRUE(bench.read(std::string(1, static_cast<char>(byte)))) << byte;
        EXPECT_TRUE(bench.traces().empty()) << byte;
        const std::string &error = bench.reader.getError();
        EXPECT_LE(std::count(error.begin(), error.end(), '\n'), 1) << byte;
    }
}

TEST(GerberHostileFiles, AllBytesAreUnhandledStatements) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    GerberBench bench;
    EXPECT_TRUE(bench.read(bytes));
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_EQ(bench.reader.getError().substr(0, 21), "Unhandled statement: ");
}

TEST(GerberHostileFiles, LineEndsAndByteOrderMarksMakeNoDifference) {
    EXPECT_EQ(numTraces(replaced(layerText, "\n", "\r\n")), layerTraces);
    EXPECT_EQ(numTraces(replaced(layerText, "\n", "\r")), layerTraces);
    EXPECT_EQ(numTraces(replaced(layerText, "\n", "")), layerTraces);
    EXPECT_EQ(numTraces("\xEF\xBB\xBF" + layerText), layerTraces);
    EXPECT_EQ(numTraces(utf16(layerText)), layerTraces);
}

TEST(GerberHostileFiles, ANulSpoilsItsStatementAlone) {
    std::string text = layerText;
    text.insert(text.find("D13*"), 1, '\0'); // the selection, so its flash takes the aperture before
    GerberBench bench;
    EXPECT_TRUE(bench.read(text));
    EXPECT_EQ(bench.traces().size(), layerTraces);
    EXPECT_NE(bench.reader.getError().find("Unhandled statement: "), std::string::npos);
}

TEST(GerberHostileFiles, Latin1CommentsAreComments) {
    EXPECT_EQ(numTraces("G04 caf\xE9*\n" + layerText), layerTraces);
}

TEST(GerberHostileFiles, ACutLayerGivesWhatWasBefore) {
    for (std::size_t size = 0; size < layerText.size(); ++size)
        EXPECT_LE(numTraces(layerText.substr(0, size)), layerTraces) << size;
}

TEST(GerberHostileFiles, ACutDrillFileGivesWhatWasBefore) {
    for (std::size_t size = 3; size < drillText.size(); ++size) {
        GerberBench bench;
        EXPECT_TRUE(bench.read(drillText.substr(0, size), "a.drl"));
        EXPECT_LE(bench.board().numVias(1), drillHoles) << size;
        expectFinite(bench.board());
    }
}

TEST(GerberHostileFiles, LinesLeftOutDoubledAndExchanged) {
    EDA::test::Random random(20261121);
    for (const std::string &whole : {layerText, drillText}) {
        for (int times = 0; times < 300; ++times) {
            std::string damaged;
            for (std::size_t begin = 0; begin < whole.size();) {
                const std::size_t end = whole.find('\n', begin) + 1;
                const std::string line = whole.substr(begin, end - begin);
                const int dice = random.below(12);
                if (dice == 0) damaged += line + line;
                if (dice == 1) damaged = line + damaged;
                if (dice > 2) damaged += line;
                begin = end;
            }
            readAnyBytes(damaged, times % 2 == 0);
        }
    }
}

TEST(GerberHostileFiles, BitsFlipped) {
    EDA::test::Random random(471108);
    for (const std::string &whole : {layerText, drillText}) {
        for (int times = 0; times < 500; ++times) {
            std::string damaged = whole;
            for (int flips = 1 + random.below(20); flips > 0; --flips) {
                char &byte =
                    damaged[static_cast<std::size_t>(random.below(static_cast<int>(damaged.size())))];
                byte = static_cast<char>(byte ^ (1 << random.below(8)));
            }
            readAnyBytes(damaged, times % 2 == 0);
        }
    }
}

TEST(GerberHostileNumbers, AnywhereInALayerGiveFiniteCoordinates) {
    const char *const statements[] = {
        "%ADD20C,#*%\nD20*\nX0Y0D03*\n",
        "%ADD20R,#X#X#*%\nD20*\nX0Y0D03*\nX5Y5D01*\n",
        "%ADD20O,1X#*%\nD20*\nX0Y0D03*\nX5Y5D01*\n",
        "%ADD20P,1X#X#*%\nD20*\nX0Y0D03*\n",
        "%ADD20P,#X5*%\nD20*\nX0Y0D03*\nX5Y5D01*\n",
        "D10*\nX#Y#D03*\n",
        "D10*\nX#Y0D02*\nX-#Y#D01*\n",
        "G75*\nD10*\nX0Y0D02*\nG02X5Y5I#J#D01*\n",
        "G36*\nX0Y0D02*\nG02X#Y5I#J#D01*\nX1D01*\nG37*\n",
        "%SRX2Y2I#J#*%\nD10*\nX0Y0D03*\nX10000Y0D01*\n",
        "%SRX#Y#I1J1*%\nD10*\nX0Y0D03*\n",
        "%AMM*1,1,#,#,#*20,1,#,0,0,1,1,#*5,1,#,0,0,#,#*6,0,0,#,#,#,#,#,#,#*7,0,0,#,#,#,#*%\n%ADD20M*%\nD20*"
        "\nX0Y0D03*\n",
        "%AMM*1,1,$1,$2,0*%\n%ADD20M,#X#*%\nD20*\nX0Y0D03*\n",
        "D#*\nX0Y0D03*\n",
        "%ADD#C,1*%\nX0Y0D03*\n",
        "%FSLAX##Y##*%\nD10*\nX123Y456D03*\n",
    };
    for (const char *statement : statements) {
        for (const char *number : badNumbers) {
            SCOPED_TRACE(statement);
            SCOPED_TRACE(number);
            GerberBench bench;
            EXPECT_TRUE(bench.readLayer(replaced(statement, "#", number)));
            expectFinite(bench.board());
        }
    }
}

TEST(GerberHostileNumbers, AnywhereInADrillFileGiveFiniteHoles) {
    const char *const statements[] = {
        "T1C#\nT1\nX1000\n",          "T#C1\nT#\nX1000\n",    "X#Y#\n", "R#X1000\n", "X1\nR3X#Y#\n",
        ";Holesize # = # x\nX1000\n", ";T# Holesize\nX1000\n"};
    for (const char *statement : statements) {
        for (const char *number : badNumbers) {
            SCOPED_TRACE(statement);
            SCOPED_TRACE(number);
            GerberBench bench;
            EXPECT_TRUE(bench.readDrills(replaced(statement, "#", number)));
            expectFinite(bench.board());
        }
    }
}

TEST(GerberHostileNumbers, LongDigitsAreZeroOrFinite) {
    for (const int digits : {15, 16, 300, 308, 309, 400, 100000}) {
        GerberBench bench;
        const std::string number = repeated("9", digits);
        EXPECT_TRUE(bench.readLayer("D10*\nX0Y0D02*\nX" + number + "Y-" + number +
                                    "D01*\nX0Y0D01*\n%SRX2Y2I" + number + "J1*%\nX0Y0D03*\n"));
        expectFinite(bench.board());
        EXPECT_TRUE(bench.readDrills("X" + number + "\nR3X" + number + "\n"));
        expectFinite(bench.board());
    }
}

TEST(GerberHostileText, OneHugeLineIsRead) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(bench.read("%FSLAX24Y24*%%MOMM*%%ADD11R,1X1*%D11*" + repeated("X0Y0D03*", 300'000)));
    EXPECT_EQ(bench.traces().size(), 300'000U);
    EXPECT_EQ(bench.reader.getError(), "");
}

TEST(GerberHostileText, ManyUnknownStatementsAreCounted) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(bench.readLayer(repeated("Q*\n", 300'000)));
    const std::string &error = bench.reader.getError();
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1001);
    EXPECT_NE(error.find("There were 299000 further messages.\n"), std::string::npos);
}

TEST(GerberHostileText, AnUnclosedBlockTakesTheRestAndIsQuick) {
    const Clock clock;
    GerberBench bench;
    EXPECT_TRUE(bench.read("%ADD10C,1*\n" + repeated("X0Y0D03*\n", 300'000)));
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_NE(bench.reader.getError(), "");
}

TEST(GerberHostileText, SignsOfBlocksWithoutEndAreQuick) {
    const Clock clock;
    for (const char *text : {"%*", "%", "*%", "%*%", "%a*%b", "%AM*", "%ADD10"})
        readAnyBytes(repeated(text, 200'000));
}

TEST(GerberHostileText, ALoneSignSwallowsADrillFileWithoutHeader) {
    GerberBench bench;
    EXPECT_TRUE(bench.read("T01C0.5\n", "a.drl"));
    EXPECT_EQ(bench.board().numVias(1), 0U);
    GerberBench swallowed;
    EXPECT_TRUE(swallowed.read("%\nT01\nX1000Y1000\nM30\n", "a.drl"));
    EXPECT_EQ(swallowed.board().numVias(1), 0U);
}

TEST(GerberHostileShapes, BillionsOfVerticesRingsAndCopiesAreNotMade) {
    const Clock clock;
    EXPECT_EQ(numTraces("%ADD10P,1X1000000000*%\nD10*\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(numTraces("%AMM*5,1,1000000000,0,0,1,0*%\n%ADD10M*%\nD10*\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(numTraces("%AMM*6,0,0,1,0.1,0.1,1000000000,0.1,1,0*%\n%ADD10M*%\nD10*\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(numTraces("%AMM*4,1,1000000000,0,0,1,0,1,1,0*%\n%ADD10M*%\nD10*\nX0Y0D03*\n"), 0U);
    EXPECT_EQ(numTraces("%ADD10C,1*%\n%SRX1000000000Y1I1J1*%\nD10*\nX0Y0D03*\n"), 1U);
}

TEST(GerberHostileShapes, AMoireOfAHundredRingsIsQuick) {
    const Clock clock;
    EXPECT_EQ(numTraces("%AMM*6,0,0,100,0.2,0.2,100,0.01,120,0*%\n%ADD10M*%\nD10*\nX0Y0D03*\n"), 1U);
}

TEST(GerberHostileShapes, ManyRepeatsEndAtTheLimitOfObjects) {
    const Clock clock;
    GerberLimits limits;
    limits.objects = 1000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("%SRX1000Y1000I1J1*%\nD11*\n" + repeated("X0Y0D03*\n", 20'000)));
    EXPECT_EQ(bench.traces().size(), 1000U);
    EXPECT_EQ(bench.reader.getError(),
              "This file has more than 1000 objects or 50000000 points; the rest is left out.\n");
}

TEST(GerberHostileShapes, ClearObjectsOverNothingCountTowardsTheLimit) {
    const Clock clock;
    GerberLimits limits;
    limits.objects = 1000;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("%LPC*%\n%SRX1000Y1000I1J1*%\nD11*\n" + repeated("X0Y0D03*\n", 20'000)));
    EXPECT_TRUE(bench.traces().empty());
    EXPECT_NE(bench.reader.getError().find("more than 1000 objects"), std::string::npos);
}

TEST(GerberHostileShapes, PunchedHolesCountTowardsTheLimitOfPoints) {
    GerberLimits limits;
    limits.points = 100;
    GerberBench bench(limits);
    EXPECT_TRUE(bench.readLayer("%ADD20R,90X90*%\nD20*\nX0Y0D03*\n%LPC*%\nD11*\n" +
                                repeated("X10000D03*\nX300000D03*\nX200000D03*\n", 100)));
    ASSERT_EQ(bench.traces().size(), 1U);
    EXPECT_LE(bench.traces()[0].getOutline().numInternalOutlines(), 24);
    EXPECT_NE(bench.reader.getError().find("or 100 points"), std::string::npos);
}
