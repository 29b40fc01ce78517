// --copper: Gerber layers and drills on the board of another design.
#include "CopperOnBoard.h"
#include "GerberFiles.h"
#include "JsonText.h"
#include "PlacedItems.h"
#include "SmallDesign.h"
#include "support/Outlines.h"

#include <QtGui/QImage>

#include <gmock/gmock.h>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

// The board is 40 by 20 mm from the origin. In inches with four decimals.
std::string inchLayer(const std::string &body) {
    return "%FSLAX24Y24*%\n%MOIN*%\n%ADD11R,0.1X0.1*%\n" + body + "M02*\n";
}

// A frame of 36 by 16 mm in the middle of the board, moved by x and y millimetres.
std::string frameOnBoard(double x = 0.0, double y = 0.0) {
    const auto at = [&](double px, double py, const char *code) {
        return "X" + std::to_string(static_cast<long>((px + x) * 10000)) + "Y" +
               std::to_string(static_cast<long>((py + y) * 10000)) + code + "*\n";
    };
    return gerberLayer("D10*\n" + at(2.5, 2.5, "D02") + at(37.5, 2.5, "D01") + at(37.5, 17.5, "D01") +
                       at(2.5, 17.5, "D01") + at(2.5, 2.5, "D01"));
}

class ToolCopper : public testing::Test {
protected:
    void SetUp() override { board = writeSmallDesign(folder); }

    ToolResult info(const std::vector<std::string> &more) const {
        std::vector<std::string> arguments{"info", "--json", board};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments);
    }

    QImage bare(const std::vector<std::string> &more) const {
        std::vector<std::string> arguments{
            "render", board, "--layer", "top", "--bare", "--dpi", "254", "-o", folder.path("out.png")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return QImage(QString::fromStdString(folder.path("out.png")));
    }

    TempFolder folder;
    std::string board;
};

TEST_F(ToolCopper, LiesOnTheBoardInTheUnitsOfTheBoard) {
    const std::string top = folder.write("top.gbr", inchLayer("D11*\nX010000Y005000D03*\n")); // 25.4, 12.7 mm
    const ToolResult result = info({"--copper", top});
    ASSERT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("copper is in mm, the board in mm: lengths times 1"));
    EXPECT_THAT(info({"--copper", top, "--as-is"}).err,
                HasSubstr("copper is in in, the board in mm: lengths times 25.4"));
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_STREQ(report["format"].GetString(), "IDF");
    EXPECT_EQ(report["placements"].GetInt(), 3);
    ASSERT_EQ(report["layers"].Size(), 1u);
    const QImage image = bare({"--window=20,10,30,20", "--copper", top});
    ASSERT_EQ(image.width(), 100);
    const auto isBlack = [&image](double x, double y) {
        return image.pixel(static_cast<int>(10 * (x - 20)), 99 - static_cast<int>(10 * (y - 10))) ==
               qRgb(0, 0, 0);
    };
    EXPECT_TRUE(isBlack(25.4, 12.7));
    EXPECT_TRUE(isBlack(24.25, 11.55)); // 2.54 mm wide
    EXPECT_FALSE(isBlack(24.05, 12.7));
    EXPECT_FALSE(isBlack(26.75, 12.7));
}

TEST_F(ToolCopper, AnOffsetMovesItInTheUnitsOfTheBoard) {
    const std::string top = folder.write("top.gbr", gerberLayer("D11*\nX020000Y020000D03*\n"));
    const QImage image = bare({"--window=0,0,10,10", "--copper", top, "--copper-offset=5,-0.5"});
    EXPECT_EQ(image.pixel(70, 84), qRgb(0, 0, 0)); // 7, 1.5
    EXPECT_EQ(image.pixel(20, 79), qRgb(255, 255, 255));
}

TEST_F(ToolCopper, HolesOfBothAreOne) {
    // The board has 3.2 mm at 36, 4 and 0.8 mm at 18, 15.
    const std::string drills = folder.write(
        "holes.drl",
        drillFile("T01\nX180000Y150000\nX010000Y010000\nT02\nX360200Y040000\nT03\nX180000Y150000\n",
                  "METRIC,TZ\nT01C0.8\nT02C3.2\nT03C1.2\n"));
    const std::string top = folder.write("top.gbr", frameOnBoard());
    const ToolResult result = info({"--copper", top, drills});
    ASSERT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err,
                HasSubstr("holes: the board has 2, the files of --copper have 4; 2 of these are left "
                          "out, since the board has the same"));
    EXPECT_THAT(result.err, HasSubstr("1 holes of --copper stand where the board has one of another size"));
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_EQ(report["vias"].GetInt() + report["viaInstances"].GetInt(), 4);
}

TEST_F(ToolCopper, AWrongFactorIsNamed) {
    // The frame of millimetres in a file that says inches, and the other way round.
    std::string wrong = frameOnBoard();
    wrong.replace(wrong.find("%MOMM"), 5, "%MOIN");
    const std::string large = folder.write("large.gbr", wrong);
    const ToolResult result = info({"--copper", large});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("about 25.4 times what they should be; --copper-units can say"));
    EXPECT_THAT(info({"--copper", large, "--copper-units", "mm"}).err, Not(HasSubstr("times what")));

    const std::string small = folder.write(
        "small.gbr", gerberLayer("D10*\nX000984Y000984D02*\nX014764Y000984D01*\nX014764Y006890D01*\n", ""));
    std::string thin = folder.read("small.gbr");
    thin.replace(thin.find("C,1*"), 4, "C,.04*");
    folder.write("small.gbr", thin);
    EXPECT_THAT(info({"--copper", small}).err, HasSubstr("about 0.0393701 times what they should be"));
}

TEST_F(ToolCopper, AnOffsetIsNamedWithItsValueAndHelps) {
    const std::string top = folder.write("top.gbr", frameOnBoard(100, 50));
    EXPECT_THAT(
        info({"--copper", top}).err,
        HasSubstr("from its middle to that of the board it is -100,-50 MM; --copper-offset=-100,-50"));
    EXPECT_THAT(info({"--copper", top, "--copper-offset=-100,-50"}).err, Not(HasSubstr("does not lie")));
    EXPECT_THAT(info({"--copper", folder.write("right.gbr", frameOnBoard())}).err,
                Not(HasSubstr("--copper:")));
}

TEST_F(ToolCopper, HolesTellTheOffsetOfCopperThatLiesOnTheBoard) {
    // Off by 1 mm: still within the board.
    const std::string drills =
        folder.write("holes.drl", drillFile("T01\nX190000Y150000\nT02\nX370000Y040000\n",
                                            "METRIC,TZ\nT01C0.8\nT02C3.2\n"));
    const std::string top = folder.write("top.gbr", gerberLayer("D11*\nX050000Y050000D03*\n"));
    EXPECT_THAT(info({"--copper", top, drills, "--drill-format", "2.4"}).err,
                HasSubstr("--copper-offset=-1,0 would move it there"));
}

TEST_F(ToolCopper, CopperOfAnotherBoardIsNamed) {
    const std::string wide = folder.write("wide.gbr", gerberLayer("D11*\nX0Y0D03*\nX900000Y050000D03*\n"));
    EXPECT_THAT(info({"--copper", wide}).err,
                HasSubstr("the copper is 92 x 7 MM in size, the board 40 x 20 MM"));
}

TEST_F(ToolCopper, ImportsToOneModelWithParts) {
    const std::string top = folder.write("top.gbr", frameOnBoard());
    const std::string drills = folder.write("holes.drl", drillFile("T01\nX010000Y010000\n"));
    const ToolResult result =
        runTool({"import", board, "-o", folder.path("model.json"), "--json", "--copper", top, drills});
    ASSERT_EQ(result.status, 0) << result;
    const rapidjson::Document report = parseJson(result.out);
    const auto &entities = report["entities"];
    EXPECT_EQ(entities["Conductor Layer"].GetInt(), 1);
    EXPECT_EQ(entities["PCB Conductor"].GetInt(), 1);
    EXPECT_EQ(entities["Via"].GetInt(), 2); // one of each source
    EXPECT_EQ(report["copper"]["conductors"].GetInt(), 1);
    EXPECT_EQ(report["copper"]["holes"].GetInt(), 3);
}

TEST_F(ToolCopper, TheExampleFitsTogether) {
    const std::string example = EDA_EXAMPLES "/sensor/";
    const ToolResult result = runTool({"import", example + "sensor.emn", "-o", folder.path("sensor.json"),
                                       "--json", "--copper", example + "top.gbr", example + "bottom.gbr",
                                       example + "holes.drl", "--stackup", example + "stackup.json"});
    ASSERT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, Not(HasSubstr("warning"))) << result;
    EXPECT_THAT(result.err, HasSubstr("6 of these are left out"));
    EXPECT_THAT(result.err, HasSubstr("1.6 MM thick, as the board is"));
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_EQ(report["entities"]["Via"].GetInt(), 12);
    EXPECT_EQ(report["entities"]["PCB Hole"].GetInt(), 2);
    EXPECT_EQ(report["entities"]["Conductor Layer"].GetInt(), 2);
    EXPECT_EQ(report["copper"]["dielectricLayersLeftOut"].GetInt(), 1);
}

TEST_F(ToolCopper, WhatMakesNoSenseIsRefused) {
    const std::string top = folder.write("top.gbr", frameOnBoard());
    const auto expectUsage = [](const ToolResult &result, const char *message) {
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr(message));
    };
    expectUsage(info({"--copper", board}), "--copper takes Gerber layers and drill files");
    expectUsage(info({"--copper-offset", "1,2"}), "--copper-offset is for what --copper names");
    for (const char *offset : {"1", "1,", "1,2,3", "a,b", "nan,0"})
        expectUsage(info({"--copper", top, "--copper-offset", offset}), "has not the form X,Y");
    expectUsage(info({"--copper", top, "--copper-units", "ell"}), "is no unit of length");
    expectUsage(info({"--copper"}), "--copper needs a value");
    expectUsage(runTool({"info", top, "--copper", top}), "has layers of its own");
    expectUsage(runTool({"import", board, "-o", top, "--copper", top}), "is read");
}

TEST_F(ToolCopper, ABoardWithoutUnitsTakesNone) {
    folder.write("small.emn", smallBoard("CUBITS"));
    const ToolResult result = info({"--copper", folder.write("top.gbr", frameOnBoard())});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("names no known units"));
}

TEST(PlacedItems, OutlinesKeepArcsHolesAndNames) {
    EDA::EDAOutline outline;
    outline.setName("pad");
    outline.setMaterial("Copper");
    outline.addPoint(0, 1, 2, 0);
    outline.addPoint(0, 3, 2, 90);
    outline.addPoint(0, 1, 4, 1, 2, false);
    outline.addPoint(1, 2, 2, 0);
    outline.addPoint(1, 2.5, 2, 360);
    const EDA::EDAOutline placed = EDATool::placedOutline(outline, {10, 100, -100});
    EXPECT_EQ(placed.getName(), "pad");
    EXPECT_EQ(placed.getMaterial(), "Copper");
    ASSERT_EQ(placed.numPoints(), 3u);
    const auto second = std::next(placed.beginPoints());
    EXPECT_EQ(second->x, 130);
    EXPECT_EQ(second->y, -80);
    EXPECT_EQ(second->angle, 90);
    const auto third = std::next(second);
    EXPECT_TRUE(third->centered);
    EXPECT_FALSE(third->clockwise);
    EXPECT_EQ(third->centreX, 110);
    ASSERT_EQ(placed.numInternalOutlines(), 1);
    EXPECT_TRUE(placed.beginInternalOutlines()->isHole());
    EXPECT_NEAR(placed.getArea(), 100 * outline.getArea(), 1e-6);
}

TEST(PlacedItems, ViasKeepWhatIsNoLength) {
    EDA::EDAVia via;
    via.setName("A");
    via.setDiameter(0.5);
    via.setPlatingStyle("PTH");
    via.setPlatingThickness(0.02);
    via.setHoleType("VIA");
    via.setLayers("top", "bottom");
    via.setAngle(30);
    via.setCentre(1, 2);
    via.setZDimensions(0.1, 0.4);
    via.setFillMaterial("Resin");
    via.getOutline().addPoint(0, -1, 0, 0);
    const EDA::EDAVia placed = EDATool::placedVia(via, {2, 10, 20});
    EXPECT_EQ(placed.getDiameter(), 1.0);
    EXPECT_EQ(placed.getXCentre(), 12);
    EXPECT_EQ(placed.getYCentre(), 24);
    EXPECT_EQ(placed.getPlatingThickness(), 0.04);
    EXPECT_TRUE(placed.isPlated());
    EXPECT_TRUE(placed.isThermalVia());
    EXPECT_EQ(placed.getAngle(), 30);
    EXPECT_EQ(placed.getFillMaterial(), "Resin");
    EXPECT_EQ(placed.getOutline().beginPoints()->x, -2); // about the centre
    double low = 0.0, high = 0.0;
    placed.getZDimensions(low, high);
    EXPECT_EQ(low, 0.2);
    EXPECT_EQ(high, 0.8);
}

TEST(CopperOnBoard, AHoleThatImportsLeaveOutDoesNotReplaceOneOfTheCopper) {
    const auto hole = [](const char *type) {
        EDA::EDAVia via;
        via.setDiameter(1);
        via.setHoleType(type);
        return via;
    };
    EDA::EDABoard copper, board;
    copper.addVia(hole("VIA"), false);
    board.addVia(hole("TESTPOINT"), false);
    EXPECT_EQ(EDATool::putCopperOnBoard(copper, {}, 0.05, board).sameHoles, 0u);
    EXPECT_EQ(board.numVias(1), 2u);
    EXPECT_EQ(EDATool::putCopperOnBoard(copper, {}, 0.05, board).sameHoles, 1u);
}

TEST(CopperOnBoard, ManyHolesAtOnePlaceTakeNoLongTime) {
    EDA::EDAVia via;
    via.setDiameter(1);
    via.setHoleType("VIA");
    for (int count = 0; count < 200'000; ++count)
        via.addInstance("", 1e-9 * count, NAN);
    for (int count = 0; count < 200'000; ++count)
        via.addInstance("", 1e-9 * count, 0);
    EDA::EDAVia larger = via;
    larger.setDiameter(2);
    EDA::EDABoard copper, board;
    board.addVia(larger, false);
    copper.addVia(via, false);
    EXPECT_EQ(EDATool::putCopperOnBoard(copper, {}, 0.05, board).otherSizes, 200'001u);
}

} // namespace
