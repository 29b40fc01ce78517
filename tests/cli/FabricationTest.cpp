// Fabrication sets through the front end: archives, the board's edge, several boards, nets, slots, reports.
#include "GerberFiles.h"
#include "JsonText.h"
#include "SmallDesign.h"
#include "support/TarFile.h"

#include <QtGui/QImage>

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string attribute(const std::string &values) { return "%TF.FileFunction," + values + "*%\n"; }

std::string topLayer() {
    return gerberLayer("%TO.N,GND*%\nX050000Y050000D03*\n%TO.N,VCC*%\nX150000Y050000D03*\n%TD*%\n",
                       attribute("Copper,L1,Top") + "%ADD12C,2*%\nD12*\n");
}

std::string bottomLayer() { return gerberLayer("D11*\nX050000Y050000D03*\n", attribute("Copper,L2,Bot")); }

// 20 by 10 mm, one corner rounded, and a round cut-out.
std::string profile() {
    return gerberLayer("D10*\nX0Y0D02*\nG01X200000Y0D01*\nX200000Y080000D01*\nG75*\n"
                       "G03X180000Y100000I-20000J0D01*\nG01X0Y100000D01*\nX0Y0D01*\n"
                       "X120000Y050000D02*\nG03X120000Y050000I-20000J0D01*\n",
                       attribute("Profile,NP"));
}

std::string drills() {
    return "M48\nMETRIC\nT1C0.8\nT2C1.0\n%\nT1\nX5.0Y5.0\nT2\nX3.0Y2.0G85X5.0Y2.0\nM30\n";
}

std::string archiveOfSet(const TempFolder &folder, const std::string &name = "fab.tar") {
    return folder.write(name, tarFile({{"fab/top.gbr", topLayer()},
                                       {"fab/bottom.gbr", bottomLayer()},
                                       {"fab/edge.gbr", profile()},
                                       {"fab/holes.drl", drills()},
                                       {"fab/mask.gbr", gerberLayer("", attribute("Soldermask,Top"))}}));
}

rapidjson::Document infoJson(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"info", "--json"});
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    return parseJson(result.out);
}

TEST(FabricationSets, AnArchiveIsOneCommandToAModelWithItsOwnEdge) {
    const TempFolder folder;
    const std::string model = folder.path("x.json");
    const ToolResult result = runTool({"import", archiveOfSet(folder), "-o", model, "--json"});
    ASSERT_EQ(result.status, 0) << result;
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_STREQ(report["units"].GetString(), "mm");
    EXPECT_EQ(report["layers"].Size(), 2u);
    EXPECT_EQ(report["outline"]["internal"].GetInt(), 1);
    EXPECT_EQ(report["outline"]["bound"][2].GetDouble(), 20.0);
    EXPECT_EQ(report["entities"]["PCB"].GetInt(), 1);
    EXPECT_EQ(report["entities"]["Conductor Layer"].GetInt(), 2);
    EXPECT_EQ(report["copper"]["holes"].GetInt(), 2); // one of them a slot
    EXPECT_EQ(runTool({"render", model, "-o", folder.path("x.png")}).status, 0);
}

TEST(FabricationSets, AnArchiveGoesOntoTheOutlineOfAnIdfBoard) {
    const TempFolder folder;
    const std::string board = writeSmallDesign(folder);
    const ToolResult result =
        runTool({"import", board, "--copper", archiveOfSet(folder), "-o", folder.path("x.json"), "--json"});
    ASSERT_EQ(result.status, 0) << result;
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_STREQ(report["format"].GetString(), "IDF");
    EXPECT_EQ(report["outline"]["bound"][2].GetDouble(), 40.0); // the board's own
    EXPECT_EQ(report["layers"].Size(), 2u);
    EXPECT_TRUE(report.HasMember("fabrication"));
}

TEST(FabricationSets, AFolderWithAnArchiveAloneStandsForIt) {
    const TempFolder folder;
    std::filesystem::create_directories(folder.path("sent"));
    archiveOfSet(folder, "sent/fab.tar");
    EXPECT_EQ(infoJson({folder.path("sent")})["layers"].Size(), 2u);
    folder.write("sent/top.gbr", topLayer());
    const ToolResult result = runTool({"info", folder.path("sent")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("fab.tar': is left out"));
}

TEST(FabricationSets, AnArchiveWithoutExtensionsThatTellIsKnownByWhatIsInIt) {
    const TempFolder folder;
    const std::string file =
        folder.write("set.tar", tarFile({{"readme", "hello\n"}, {"a/one", topLayer()}, {"a/two", drills()}}));
    EXPECT_STREQ(infoJson({file})["format"].GetString(), "Gerber");
}

TEST(FabricationSets, AnArchiveWithTheDatabaseOfALayoutIsNone) {
    const TempFolder folder;
    const std::string file = folder.write(
        "db.tar", tarFile({{"job/matrix/matrix", "STEP {\n}\n"}, {"job/steps/pcb/x.gbr", topLayer()}}));
    EXPECT_THAT(runTool({"info", file}).err, Not(HasSubstr("copper layer")));
    EXPECT_EQ(runTool({"info", file, "--profile", "x.gbr"}).status, 2); // for Gerber files
}

TEST(FabricationSets, DamagedArchivesAreRefused) {
    const TempFolder folder;
    archiveOfSet(folder);
    std::string bytes = folder.read("fab.tar");
    bytes.resize(700); // in the first file
    const ToolResult result = runTool({"info", folder.write("half.tar", bytes)});
    EXPECT_EQ(result.status, 1) << result;
}

TEST(FabricationSets, TheReportTellsEachFileWithItsNotes) {
    const TempFolder folder;
    folder.write("holes.drl", "M48\nMETRIC,TZ\nT1C0.8\n%\nT1\nX050000Y050000\nM30\n");
    const std::string modal =
        gerberLayer("D10*\nG01X050000Y050000D02*\nX150000D01*\nY090000*\n", attribute("Copper,L1,Top"));
    const rapidjson::Document json = infoJson({folder.write("top.gbr", modal), folder.path("holes.drl")});
    const auto &files = json["fabrication"]["files"];
    ASSERT_EQ(files.Size(), 2u);
    EXPECT_STREQ(files[0]["use"].GetString(), "copper layer 1");
    EXPECT_STREQ(files[0]["reason"].GetString(), "its FileFunction is Copper,L1,Top");
    ASSERT_GE(files[0]["notes"].Size(), 1u);
    EXPECT_STREQ(files[0]["notes"][0]["kind"].GetString(), "normalised");
    EXPECT_GE(files[0]["notes"][0]["line"].GetInt(), 1);
    EXPECT_GE(files[0]["notes"][0]["count"].GetInt(), 1);
    ASSERT_GE(files[1]["notes"].Size(), 1u);
    EXPECT_STREQ(files[1]["notes"][0]["kind"].GetString(), "guessed");
    EXPECT_TRUE(json["fabrication"]["guesses"].IsArray());
    EXPECT_TRUE(json["fabrication"]["warnings"].IsArray());
    EXPECT_THAT(json["messages"].GetString(), HasSubstr("holes.drl': guessed: "));
    ASSERT_GE(json["notices"].Size(), 1u);
    EXPECT_THAT(json["notices"][0].GetString(), HasSubstr("normalised: "));
}

TEST(FabricationSets, FilesReadAsTheyAreHaveNoReport) {
    const TempFolder folder;
    const rapidjson::Document json = infoJson({"--as-is", folder.write("top.gbr", topLayer())});
    EXPECT_FALSE(json.HasMember("fabrication"));
}

TEST(FabricationSets, NetsOfTheFilesAreNetsOfTheLayers) {
    const TempFolder folder;
    const rapidjson::Document json = infoJson({folder.write("top.gbr", topLayer())});
    EXPECT_EQ(json["layers"][0]["nets"].GetInt(), 2);
    EXPECT_EQ(json["layers"][0]["netTraces"].GetInt(), 2);
    EXPECT_EQ(json["layers"][0]["traces"].GetInt(), 0);
}

TEST(FabricationSets, OneOfSeveralBoardsIsTakenByItsName) {
    const TempFolder folder;
    for (const char *name : {"alpha", "beta"}) {
        const std::string start = std::string(name) + "-";
        folder.write(start + "top.gtl", gerberLayer(threeSquares()));
        folder.write(start + "bottom.gbl", gerberLayer(threeSquares()));
        folder.write(start + "mask.gts", gerberLayer(threeSquares()));
    }
    folder.write("alpha-legend.gto", gerberLayer(threeSquares()));
    const ToolResult result = runTool({"info", folder.path()});
    EXPECT_THAT(result.out, HasSubstr("alpha-top.gtl: copper layer 1")) << result;
    EXPECT_THAT(runTool({"info", folder.path(), "--board", "beta"}).out,
                HasSubstr("beta-top.gtl: copper layer 1"));
    EXPECT_EQ(runTool({"info", folder.path(), "--board", "gamma"}).status, 2);
    EXPECT_EQ(
        runTool({"import", writeSmallDesign(folder), "-o", folder.path("x.json"), "--board", "B1"}).status,
        2);
}

TEST(FabricationSets, TheFileOfTheEdgeCanBeNamed) {
    const TempFolder folder;
    folder.write("top.gbr", topLayer());
    folder.write("drawing.gbr", profile().replace(profile().find("Profile,NP"), 10, "Other,Sheet"));
    EXPECT_EQ(infoJson({folder.path(), "--profile", "drawing.gbr"})["outline"]["internal"].GetInt(), 1);
    const ToolResult result = runTool({"info", folder.path(), "--profile", "none.gbr"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("none.gbr"));
}

TEST(FabricationSets, WhatGoesWithFilesAsTheyAreIsSaid) {
    const TempFolder folder;
    const std::string archive = archiveOfSet(folder);
    const ToolResult result = runTool({"info", "--as-is", archive});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("is an archive"));
    EXPECT_EQ(runTool({"info", "--as-is", "--profile", "x", archive}).status, 2);
    EXPECT_EQ(runTool({"info", "--as-is", writeSmallDesign(folder)}).status, 2);
}

TEST(FabricationSets, AMaskAloneIsDrawn) {
    const TempFolder folder;
    const std::string mask = folder.write("x.gts", gerberLayer("D11*\nX0Y0D03*\n"));
    const ToolResult result =
        runTool({"render", mask, "-o", folder.path("x.png"), "--bare", "--dpi", "254", "--window=-2,-2,2,2"});
    ASSERT_EQ(result.status, 0) << result;
    const QImage image(QString::fromStdString(folder.path("x.png")));
    EXPECT_EQ(image.pixel(20, 20), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(5, 5), qRgb(255, 255, 255));
}

TEST(FabricationSets, APictureOfASetIsOfItsCopperAlsoWhereItHasAnEdge) {
    const TempFolder folder;
    const std::string set = archiveOfSet(folder);
    ASSERT_EQ(runTool({"render", set, "-o", folder.path("a.svg")}).status, 0);
    ASSERT_EQ(runTool({"render", set, "--layer", "top", "-o", folder.path("b.svg")}).status, 0);
    EXPECT_EQ(folder.read("a.svg"), folder.read("b.svg"));
}

TEST(FabricationSets, NoFileOfTheSetIsWrittenOver) {
    const TempFolder folder;
    std::filesystem::create_directories(folder.path("set"));
    folder.write("set/top.gbr", topLayer());
    const std::string other = folder.write("set/readme.txt", "hello\n");
    const std::string archive = archiveOfSet(folder);
    EXPECT_EQ(runTool({"import", folder.path("set"), "-o", other}).status, 2);
    EXPECT_EQ(runTool({"import", archive, "-o", archive}).status, 2);
}

TEST(FabricationSets, ASetWithoutCopperAndDrillsIsRefusedWithWhatIsInIt) {
    const TempFolder folder;
    const ToolResult result = runTool({"info", folder.write("a.gts", gerberLayer(threeSquares())),
                                       folder.write("b.gto", gerberLayer(threeSquares()))});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, AllOf(HasSubstr("a.gts"), HasSubstr("b.gto"), HasSubstr("none of the files")));
}

TEST(FabricationSets, FilesWithoutAnythingInThemAreNamed) {
    const TempFolder folder;
    const ToolResult result = runTool({"info", folder.write("a.drl", "M48\nMETRIC\nT1C0.8\n%\nM30\n")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("there are no holes and no copper in 'a.drl'"));
}

TEST(FabricationSets, UnitsOfTheCommandLineAreOfTheNumbersInTheFiles) {
    const TempFolder folder;
    const std::string board = writeSmallDesign(folder);
    const auto bound = [&](const std::vector<std::string> &more) {
        std::vector<std::string> arguments{
            board, "--copper", folder.write("top.gbr", gerberLayer("D11*\nX010000Y010000D03*\n"))};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return infoJson(arguments)["bound"][2].GetDouble();
    };
    EXPECT_EQ(bound({}), 40.0);
    EXPECT_NEAR(bound({"--copper-units", "in"}), 50.8, 1e-9); // from 0 to 2, in inches
}

TEST(FabricationSets, OfTheExamplesBringCopperNetsHolesSlotsAndTheEdge) {
    const ToolResult result = runTool({"info", EDA_EXAMPLES "/fabrication", "--json"});
    const rapidjson::Document json = parseJson(result.out);
    ASSERT_EQ(json["layers"].Size(), 2u);
    EXPECT_EQ(json["layers"][0]["nets"].GetInt(), 3);
    EXPECT_EQ(json["layers"][0]["netTraces"].GetInt(), 3);
    EXPECT_EQ(json["layers"][1]["traces"].GetInt(), 1);
    EXPECT_EQ(json["vias"].GetInt() + json["viaInstances"].GetInt(), 3); // one of them a slot
    EXPECT_EQ(json["outline"]["points"].GetInt(), 7);
    EXPECT_NEAR(json["outline"]["bound"][2].GetDouble(), 40.0, 1e-9);
    EXPECT_THAT(result.err, Not(HasSubstr("warning")));
}

} // namespace
