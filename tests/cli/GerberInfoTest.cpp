// eda info of sets of Gerber layers and drill files.
#include "GerberFiles.h"
#include "JsonText.h"
#include "SmallDesign.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

ToolResult info(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "info");
    return runTool(arguments);
}

rapidjson::Document infoJson(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"info", "--json"});
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    return parseJson(result.out);
}

std::vector<std::string> layerNames(const rapidjson::Document &json) {
    std::vector<std::string> names;
    for (const rapidjson::Value &layer : json["layers"].GetArray())
        names.emplace_back(layer["name"].GetString());
    return names;
}

// What the files were taken for, in the order of the report.
std::vector<std::string> uses(const rapidjson::Document &json) {
    std::vector<std::string> texts;
    for (const rapidjson::Value &file : json["files"].GetArray())
        texts.emplace_back(file["use"].GetString());
    return texts;
}

TEST(GerberInfo, ASetIsSortedIntoLayersAndDrills) {
    const TempFolder folder;
    const rapidjson::Document json = infoJson(writeGerberSet(folder));
    EXPECT_STREQ(json["format"].GetString(), "Gerber");
    EXPECT_STREQ(json["units"].GetString(), "mm");
    EXPECT_THAT(layerNames(json), ElementsAre("top", "bottom"));
    EXPECT_EQ(json["vias"].GetInt(), 1);
    EXPECT_THAT(uses(json), ElementsAre("copper layer 1", "copper layer 2",
                                        "drills from top.gbr to bottom.gbr", "left out"));
}

TEST(GerberInfo, ThePlaceOfTheFilesInTheCommandDoesNotMatter) {
    const TempFolder folder;
    std::vector<std::string> files = writeGerberSet(folder);
    std::swap(files[0], files[1]);
    EXPECT_THAT(layerNames(infoJson(files)), ElementsAre("top", "bottom"));
}

TEST(GerberInfo, AFolderStandsForItsFiles) {
    const TempFolder folder;
    writeGerberSet(folder);
    folder.write("readme.txt", "How to make this board\n");
    folder.write("job.json", "{}");
    const ToolResult result = info({folder.path()});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, AllOf(HasSubstr("copper layer 2"), HasSubstr("readme.txt: left out")));
    EXPECT_THAT(result.err,
                AllOf(HasSubstr("readme.txt': is left out"), HasSubstr("job.json': is left out")));
}

TEST(GerberInfo, AFolderOfFoldersStandsForTheFilesInThem) {
    const TempFolder folder;
    std::filesystem::create_directories(folder.path("set/layers"));
    std::filesystem::create_directories(folder.path("set/drills"));
    writeGerberSet(folder);
    for (const auto &entry : std::filesystem::directory_iterator(folder.path())) {
        if (!entry.is_regular_file()) continue;
        const bool isDrill = entry.path().extension() == ".drl";
        std::filesystem::rename(entry.path(), std::filesystem::path(folder.path("set")) /
                                                  (isDrill ? "drills" : "layers") / entry.path().filename());
    }
    const ToolResult result = info({folder.path("set")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, AllOf(HasSubstr("copper layer 2"), HasSubstr("drills from")));
}

TEST(GerberInfo, AFolderWithADesignStandsForThatAlone) {
    const TempFolder folder;
    writeGerberSet(folder);
    std::filesystem::create_directories(folder.path("old"));
    folder.write("old/extra.gbr", "%FSLAX24Y24*%\n%MOMM*%\nM02*\n");
    const ToolResult result = info({folder.path(), "--as-is"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, Not(HasSubstr("extra.gbr")));
    EXPECT_THAT(info({folder.path()}).out, HasSubstr("old/extra.gbr: left out"));
}

TEST(GerberInfo, AFolderWithoutDesignsIsAFailure) {
    const TempFolder folder;
    folder.write("readme.txt", "nothing\n");
    const ToolResult result = info({folder.path()});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("is a folder without files that eda reads"));
}

TEST(GerberInfo, LayersAreUnitedUnlessAnOptionSaysOtherwise) {
    const TempFolder folder;
    const std::string file = folder.write("top.gbr", gerberLayer(threeSquares()));
    EXPECT_EQ(infoJson({file})["layers"][0]["traces"].GetInt(), 2);
    EXPECT_EQ(infoJson({file, "--option", "Merge Conductors=No"})["layers"][0]["traces"].GetInt(), 3);
}

TEST(GerberInfo, TheFileFunctionGoesBeforeTheName) {
    const TempFolder folder;
    const auto attribute = [](const std::string &values) { return "%TF.FileFunction," + values + "*%\n"; };
    const rapidjson::Document json =
        infoJson({folder.write("a_mask.gbr", gerberLayer(threeSquares(), attribute("Copper,L2,Bot"))),
                  folder.write("b_bottom.gbr", gerberLayer(threeSquares(), attribute("Copper,L1,Top"))),
                  folder.write("c_top.gbr", gerberLayer(threeSquares(), attribute("Soldermask,Top")))});
    EXPECT_THAT(layerNames(json), ElementsAre("b_bottom", "a_mask"));
    EXPECT_STREQ(json["files"][2]["reason"].GetString(), "solder mask: its FileFunction is Soldermask,Top");
}

TEST(GerberInfo, WhatTheReaderWouldRefuseIsLeftOutAndTheRestIsRead) {
    const TempFolder folder;
    const std::string top = folder.write("top.gbr", gerberLayer(threeSquares()));
    for (const char *function :
         {"%TF.FileFunction*%\n", "%TF.FileFunction,*%\n", "%TF.FileFunction, Copper*%\n",
          "%TF.FileFunction,Copper,L1,Top*%\n%TF.FileFunction,Legend,Top*%\n"}) {
        const rapidjson::Document json =
            infoJson({top, folder.write("bottom.gbr", gerberLayer(threeSquares(), function)), "--as-is"});
        EXPECT_THAT(layerNames(json), ElementsAre("top")) << function;
    }
    const std::string other = gerberLayer(threeSquares(), "%TF.FileFunctionOfMine,Legend*%\n");
    EXPECT_THAT(layerNames(infoJson({top, folder.write("bottom.gbr", other)})), ElementsAre("top", "bottom"));
}

TEST(GerberInfo, AttributesInCommentsCount) {
    const TempFolder folder;
    const std::string file =
        folder.write("x.gbr", gerberLayer(threeSquares(), "G04 #@! TF.FileFunction,Legend,Top*\n"));
    const ToolResult result = info({file, "--as-is"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("its FileFunction is Legend,Top"));
    const std::string top = folder.write("top.gbr", gerberLayer(threeSquares()));
    EXPECT_THAT(layerNames(infoJson({file, top})), ElementsAre("top"));
}

TEST(GerberInfo, OneFileAloneIsReadWhateverItIs) {
    const TempFolder folder;
    const ToolResult result = info({folder.write("x.gts", gerberLayer(threeSquares()))});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("x.gts: copper layer 1"));
    EXPECT_THAT(result.err, HasSubstr("is solder mask, but is read as copper, since it is named alone"));
}

TEST(GerberInfo, NamesTellLayersAndOthersApart) {
    const TempFolder folder;
    std::vector<std::string> arguments;
    for (const char *name : {"x.gbl", "x.g2", "x.gtl", "x.g1", "x.gbs", "x.gko", "x.gm1"})
        arguments.push_back(folder.write(name, gerberLayer(threeSquares())));
    EXPECT_THAT(uses(infoJson(arguments)), ElementsAre("copper layer 1", "copper layer 2", "copper layer 3",
                                                       "copper layer 4", "left out", "left out", "left out"));
}

TEST(GerberInfo, TheNameOfTheBoardIsNoMask) {
    const TempFolder folder;
    const rapidjson::Document json =
        infoJson({folder.write("drill-F_Cu.gbr", gerberLayer(threeSquares())),
                  folder.write("drill-F_Mask.gbr", gerberLayer(threeSquares()))});
    EXPECT_THAT(layerNames(json), ElementsAre("drill-F_Cu"));
}

TEST(GerberInfo, ALayerNumberBesideATopLayerCountsInnerLayers) {
    const TempFolder folder;
    std::vector<std::string> arguments;
    for (const char *name : {"BOTTOM.art", "LAYER_1.art", "LAYER_2.art", "TOP.art"})
        arguments.push_back(folder.write(name, gerberLayer(threeSquares())));
    EXPECT_THAT(layerNames(infoJson(arguments)), ElementsAre("TOP", "LAYER_1", "LAYER_2", "BOTTOM"));
}

TEST(GerberInfo, UnknownPlacesAreToldAndKeepTheirOrder) {
    const TempFolder folder;
    const std::string b = folder.write("beta.gbr", gerberLayer(threeSquares()));
    const std::string a = folder.write("alpha.gbr", gerberLayer(threeSquares()));
    EXPECT_THAT(layerNames(infoJson({b, a})), ElementsAre("beta", "alpha"));
    EXPECT_THAT(info({b, a}).err, HasSubstr("guessed: nothing says where"));
    EXPECT_THAT(info({b, a, "--as-is"}).err, HasSubstr("the order of 2 copper layers is not known"));
}

TEST(GerberInfo, TheLayerOrderOfTheCommandLineRules) {
    const TempFolder folder;
    std::vector<std::string> arguments = writeGerberSet(folder);
    arguments.insert(arguments.end(), {"--layer-order", "top_mask,bottom.gbr"});
    const rapidjson::Document json = infoJson(arguments);
    EXPECT_THAT(layerNames(json), ElementsAre("top_mask", "bottom"));
    arguments.back() = "top,middle";
    const ToolResult result = info(arguments);
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("\"middle\", which is none of the files"));
    arguments.push_back("--as-is");
    const ToolResult asIs = info(arguments);
    EXPECT_EQ(asIs.status, 2) << asIs;
    EXPECT_THAT(asIs.err, HasSubstr("'middle', which is none of the layer files"));
}

TEST(GerberInfo, SpansOfDrillsComeFromTheCommandLine) {
    const TempFolder folder;
    std::vector<std::string> arguments = writeGerberSet(folder);
    arguments.push_back(folder.write("inner.gbr", gerberLayer(threeSquares())));
    arguments.insert(arguments.end(), {"--layer-order", "top,inner,bottom", "--span", "holes.drl=top:2"});
    std::vector<std::string> asIs = arguments;
    asIs.insert(asIs.begin(), "--as-is");
    EXPECT_THAT(info(arguments).out, HasSubstr("drills from top.gbr to inner.gbr"));
    EXPECT_THAT(info(asIs).out, HasSubstr("drills from top.gbr to inner.gbr"));
    for (const char *span : {"holes.drl=top", "=a:b", "holes.drl=top:deep", "other.drl=top:bottom"}) {
        arguments.back() = asIs.back() = span;
        EXPECT_EQ(info(arguments).status, 2) << span;
        EXPECT_EQ(info(asIs).status, 2) << span;
    }
}

TEST(GerberInfo, DrillFilesNameTheirLayersByAttribute) {
    const TempFolder folder;
    std::vector<std::string> arguments{
        folder.write("top.gbr", gerberLayer(threeSquares())),
        folder.write("in1.gbr", gerberLayer(threeSquares())),
        folder.write("bottom.gbr", gerberLayer(threeSquares())),
        folder.write("v.drl",
                     drillFile("T01\nX01Y01\n", "; #@! TF.FileFunction,Plated,1,2,Blind\nMETRIC\nT01C1\n"))};
    EXPECT_THAT(info(arguments).out, HasSubstr("drills from top.gbr to in1.gbr"));
}

TEST(GerberInfo, TheDrillFormatIsFoundByThePlaceOfTheHolesAndToldAsAGuess) {
    const TempFolder folder;
    const std::vector<std::string> set = writeGerberSet(folder);
    EXPECT_THAT(info(set).err,
                HasSubstr("holes.drl': guessed: numbers with 4 digits before the point and 4 after"));
    const ToolResult result = info({set[3], "--drill-format", "3.3"});
    EXPECT_THAT(result.err, Not(HasSubstr("guessed: numbers")));
    EXPECT_THAT(result.out, HasSubstr("x 9.6 to 10.4, y 19.6 to 20.4"));
}

TEST(GerberInfo, TheDrillFormatOfFilesAsTheyAreIsToldWithItsSource) {
    const TempFolder folder;
    std::vector<std::string> set = writeGerberSet(folder);
    set.push_back("--as-is");
    EXPECT_THAT(info(set).err, AllOf(HasSubstr("number format 2.4, as in"), HasSubstr("top.gbr")));
    EXPECT_THAT(info({set[3], "--as-is"}).err, HasSubstr("number format 2.4, the default"));
    const ToolResult result = info({set[3], "--as-is", "--drill-format", "3.3"});
    EXPECT_THAT(result.err, HasSubstr("number format 3.3, as --drill-format says"));
    EXPECT_THAT(result.out, HasSubstr("x 9.6 to 10.4, y 19.6 to 20.4"));
    EXPECT_EQ(info({set[3], "--drill-format", "3"}).status, 2);
}

TEST(GerberInfo, ADrillFileThatNamesAnotherFormatIsAWarning) {
    const TempFolder folder;
    const std::string file = folder.write(
        "h.drl", drillFile("T01\nX01Y01\n", ";FILE_FORMAT=4:4\nMETRIC,TZ\n;TYPE=PLATED\nT01C1\n"));
    EXPECT_THAT(info({file, "--as-is"}).err, HasSubstr("names the number format 4.4, but 2.4 is used"));
    EXPECT_THAT(info({file, "--as-is", "--drill-format", "4.4"}).err,
                Not(HasSubstr("names the number format")));
    EXPECT_THAT(info({file}).err, testing::IsEmpty());
}

TEST(GerberInfo, UnitsThatDifferAreAWarning) {
    const TempFolder folder;
    std::vector<std::string> arguments = writeGerberSet(folder);
    arguments[3] = folder.write("holes.drl", drillFile("T01\nX01Y01\n", "INCH,TZ\nT01C0.03\n"));
    EXPECT_STREQ(infoJson(arguments)["units"].GetString(), "mm");
    arguments.push_back("--as-is");
    EXPECT_THAT(info(arguments).err, HasSubstr("is in in, but files before it are in mm"));
}

TEST(GerberInfo, MessagesOfTheReaderHaveTheFileAndAreGrouped) {
    const TempFolder folder;
    const std::string file =
        folder.write("top.gbr", gerberLayer("%TO.N,A*%\n%TO.N,B*%\n%TO.P,U1,1*%\n" + threeSquares()));
    const ToolResult result = info({file, "--as-is"});
    EXPECT_THAT(result.err, HasSubstr("top.gbr': Unhandled statement: %TO.N,A*%, and 2 more like it"));
    EXPECT_THAT(result.err, Not(HasSubstr("%TO.N,B")));
}

TEST(GerberInfo, FormatsAreKnownByContentWhateverTheName) {
    const TempFolder folder;
    const std::string hole = drillFile("T01\nX01Y01\n");
    const rapidjson::Document json =
        infoJson({folder.write("a.emn", gerberLayer(threeSquares())), folder.write("b.json", "%\n" + hole),
                  folder.write("c.x", "; comment\n" + hole), folder.write("d.x", "T1C0.5\n%\nT1\nX1Y1\n")});
    EXPECT_EQ(json["layers"].Size(), 1u);
    EXPECT_EQ(uses(json).size(), 4u);
    EXPECT_EQ(infoJson({writeSmallDesign(folder)})["components"].GetInt(), 2);
}

TEST(GerberInfo, LayersAndBoardsOfOtherFormatsDontMix) {
    const TempFolder folder;
    const ToolResult result =
        info({folder.write("a.gbr", gerberLayer(threeSquares())), writeSmallDesign(folder)});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(info({writeSmallDesign(folder), "--drill-format", "2.4"}).status, 2);
}

TEST(GerberInfo, ABinaryDrillFileIsLeftOut) {
    const TempFolder folder;
    const std::vector<std::string> set = writeGerberSet(folder);
    const std::string binary = folder.write("eia.drl", std::string("T\x80\xff#v\0 2 s k ", 14));
    const ToolResult result = info({set[1], binary});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("eia.drl': is left out: its text is neither of a layer nor of drills"));
    EXPECT_THAT(info({set[1], binary, "--as-is"}).err,
                HasSubstr("eia.drl': is left out: it is neither text of a layer nor of drills"));
}

TEST(GerberInfo, ADrillFileInTheFormOfALayerMakesHolesOfItsFlashes) {
    const TempFolder folder;
    const rapidjson::Document json =
        infoJson({folder.write("h.xln", gerberLayer("D10*\nX0Y0D03*\nX05Y05D03*\n"))});
    EXPECT_EQ(json["vias"].GetInt(), 1);
    EXPECT_EQ(json["layers"].Size(), 0u);
}

TEST(GerberInfo, AnImportCountsLayersConductorsAndHoles) {
    const TempFolder folder;
    std::vector<std::string> arguments = writeGerberSet(folder);
    arguments.insert(arguments.begin(), "import");
    arguments.insert(arguments.end(), {"-o", folder.path("model.json")});
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out,
                HasSubstr("  Conductor layers   2\n  Dielectric layers  0\n  Conductors         3\n"));
    EXPECT_THAT(result.out, HasSubstr("  PCB Conductor          3\n"));
    EXPECT_THAT(result.out, HasSubstr("  Via                    1\n"));
    arguments.back() = folder.path("top_mask.gbr"); // left out, but not to be written over
    EXPECT_EQ(runTool(arguments).status, 2);
}

} // namespace
