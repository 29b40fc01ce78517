// eda import: from a design to a model file.
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "JsonText.h"
#include "SmallDesign.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

// Imports with --json and gives the report.
rapidjson::Document importJson(const TempFolder &folder, const std::vector<std::string> &more,
                               const std::string &output = "model.json") {
    std::vector<std::string> arguments{"import", folder.path("small.emn"), "-o", folder.path(output),
                                       "--json"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    return parseJson(result.out);
}

int entities(const rapidjson::Document &report, const char *type) {
    const auto &counts = report["entities"];
    return counts.HasMember(type) ? counts[type].GetInt() : 0;
}

// Entities by type as "eda info" counts them in a saved model.
rapidjson::Document modelInfo(const std::string &file) {
    return parseJson(runTool({"info", "--json", file}).out);
}

// A usage error that leaves no output behind.
void expectRefused(const TempFolder &folder, const std::vector<std::string> &more,
                   const std::string &message) {
    std::vector<std::string> arguments{"import", folder.path("small.emn"), "-o", folder.path("model.json")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr(message));
    EXPECT_EQ(folder.read("model.json"), "<missing>");
}

class ToolImport : public testing::Test {
protected:
    void SetUp() override { writeSmallDesign(folder); }
    TempFolder folder;
};

TEST_F(ToolImport, SavesAModelAndSaysWhatIsInIt) {
    const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 0) << result;
    for (const char *text : {"small.emp", "Board Keepout", "PCB Hole", "model.json"}) {
        EXPECT_THAT(result.out, HasSubstr(text));
    }
    const rapidjson::Document model = modelInfo(folder.path("model.json"));
    EXPECT_STREQ(model["format"].GetString(), "model");
    EXPECT_STREQ(model["name"].GetString(), "small");
    EXPECT_EQ(entities(model, "PCB"), 1);
    EXPECT_EQ(entities(model, "Board Keepout"), 2);
}

TEST_F(ToolImport, JsonAddsEntitiesAndMessages) {
    const rapidjson::Document report = importJson(folder, {});
    EXPECT_EQ(report["placements"].GetInt(), 3);
    EXPECT_EQ(entities(report, "PCB Hole"), 2); // a cut-out and a mounting hole
    EXPECT_EQ(entities(report, "Via"), 1);
    EXPECT_STREQ(report["importMessages"].GetString(), "");
}

TEST_F(ToolImport, TwiceGivesTheSameBytes) {
    importJson(folder, {}, "a.json");
    importJson(folder, {}, "b.json");
    EXPECT_EQ(folder.read("a.json"), folder.read("b.json"));
}

TEST_F(ToolImport, AsComponentMakesASubstrate) {
    const rapidjson::Document report = importJson(folder, {"--as", "Component"});
    EXPECT_EQ(entities(report, "Substrate"), 1);
    EXPECT_EQ(entities(report, "Component"), 1);
    EXPECT_EQ(entities(report, "PCB"), 0);
}

TEST_F(ToolImport, OptionChangesTheImport) {
    EXPECT_EQ(entities(importJson(folder, {"--option", "Import Via Keepouts=No"}), "Board Keepout"), 1);
}

TEST_F(ToolImport, OptionsMayRepeat) {
    const rapidjson::Document report = importJson(
        folder, {"--option", "Import Via Keepouts=No", "--option", "Import Component Keepouts=No"});
    EXPECT_EQ(entities(report, "Board Keepout"), 0);
}

TEST_F(ToolImport, OptionHoldsForOneRunOnly) {
    importJson(folder, {"--option", "Import Via Keepouts=No"});
    EXPECT_EQ(entities(importJson(folder, {}), "Board Keepout"), 2);
}

TEST_F(ToolImport, OptionStoresNoPreferences) {
    const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", folder.path("model.json"),
                                       "--option", "Import Via Keepouts=No"},
                                      folder.path("config"));
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(folder.read("config"), "<missing>");
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(folder.path("config"))));
}

TEST_F(ToolImport, UnknownOptionLabelListsTheLabels) {
    expectRefused(folder, {"--option", "Import Keepers=No"}, "Import Via Keepouts");
}
TEST_F(ToolImport, OptionValueOutOfItsChoicesNamesThem) {
    expectRefused(folder, {"--option", "Import Type=Brick"}, "PCB, Component");
    expectRefused(folder, {"--option", "Import Vias=perhaps"}, "Yes, No");
    expectRefused(folder, {"--option", "Min Height=-1 mm"}, "number");
    expectRefused(folder, {"--option", "Min Height=1 parsec"}, "unit");
}
TEST_F(ToolImport, OptionWithoutEqualsSign) {
    expectRefused(folder, {"--option", "Import Vias"}, "Label=value");
}
TEST_F(ToolImport, OptionWithEmptyParts) {
    expectRefused(folder, {"--option", "="}, "no import option ''");
    expectRefused(folder, {"--option", "Import Vias="}, "Yes, No");
}

TEST_F(ToolImport, UnknownUnitsStopItBeforeAnythingIsMade) {
    folder.write("small.emn", smallBoard("FURLONG"));
    const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 1) << result;
    for (const char *text : {"small.emn", "FURLONG", "--units", "inch"})
        EXPECT_THAT(result.err, HasSubstr(text));
    EXPECT_EQ(folder.read("model.json"), "<missing>");
}

TEST_F(ToolImport, UnitsOptionStandsInForUnknownOnes) {
    folder.write("small.emn", smallBoard("FURLONG"));
    EXPECT_STREQ(importJson(folder, {"--units", "mm"})["units"].GetString(), "mm");
}

TEST_F(ToolImport, UnitsOptionLeavesKnownOnes) {
    EXPECT_STREQ(importJson(folder, {"--units", "in"})["units"].GetString(), "MM");
}

TEST_F(ToolImport, ABoardWithoutUnitsIsTakenAsMillimetresWithAWarning) {
    // A panel file's header names no units that are read.
    std::string panel = smallBoard();
    panel.replace(panel.find("BOARD_FILE"), 10, "PANEL_FILE");
    folder.write("small.emn", panel);
    const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("small.emn' names no units; its lengths are taken as millimetres"));
}

TEST_F(ToolImport, TheSummaryCountsHolesAndNamesTheOptionThatLeavesSomeOut) {
    const auto summary = [this](const std::vector<std::string> &more) {
        std::vector<std::string> arguments{"import", folder.path("small.emn"), "-o",
                                           folder.path("model.json")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments).out;
    };
    const std::string all = summary({});
    EXPECT_THAT(all, ContainsRegex("Holes and vias +2\n"));
    EXPECT_THAT(all, Not(HasSubstr("left out")));
    EXPECT_THAT(summary({"--option", "Import Vias=No"}), ContainsRegex("\"Import Vias\" is No +1\n"));
}

TEST_F(ToolImport, HolesOfNoKindThatImportsTakeAreCounted) {
    std::string board = smallBoard();
    board.replace(board.find(" VIA ECAD"), 9, " TESTPOINT ECAD");
    folder.write("small.emn", board);
    const auto report = importJson(folder, {});
    EXPECT_EQ(report["copper"]["holes"].GetInt(), 2);
    EXPECT_EQ(report["copper"]["otherKindsLeftOut"].GetInt(), 1);
    EXPECT_EQ(entities(report, "Via"), 0);
}

TEST_F(ToolImport, MissingLibraryIsAWarningAndTheImportGoesOn) {
    std::filesystem::remove(std::filesystem::u8path(folder.path("small.emp")));
    const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("small.emp"));
    EXPECT_THAT(result.err, HasSubstr("is missing"));
    EXPECT_EQ(entities(modelInfo(folder.path("model.json")), "Board Keepout"), 2);
}

TEST_F(ToolImport, LibraryAloneIsNoDesign) {
    const ToolResult result = runTool({"import", folder.path("small.emp"), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("board file is missing"));
}

TEST_F(ToolImport, ModelFileIsNoDesign) {
    importJson(folder, {});
    const ToolResult result = runTool({"import", folder.path("model.json"), "-o", folder.path("other.json")});
    EXPECT_EQ(result.status, 2) << result;
}

TEST_F(ToolImport, FailedReadLeavesTheOldOutput) {
    std::string board = smallBoard();
    board.replace(board.find("TOP 1.0"), 7, "TOP");
    folder.write("small.emn", board);
    folder.write("model.json", "old");
    const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(folder.read("model.json"), "old");
    EXPECT_EQ(folder.numEntries(), 3u);
}

TEST_F(ToolImport, UnwritableOutputNamesTheFile) {
    for (const std::string &output : {folder.path("no/such/folder/model.json"), folder.path()}) {
        const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", output});
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_THAT(result.err, HasSubstr(output));
        EXPECT_THAT(result.err, HasSubstr("cannot be written"));
    }
    EXPECT_EQ(folder.numEntries(), 2u);
}

TEST_F(ToolImport, NeverWritesOverWhatItReads) {
    const std::string before = folder.read("small.emp");
    for (const char *option : {"-o", "--trace"}) {
        std::vector<std::string> arguments{"import", folder.path("small.emn"), option,
                                           folder.path("small.emp")};
        if (std::string(option) != "-o") arguments.insert(arguments.end(), {"-o", folder.path("m.json")});
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 2) << result;
    }
    EXPECT_EQ(folder.read("small.emp"), before);
}

TEST_F(ToolImport, LeavesNoTemporaryFiles) {
    importJson(folder, {});
    EXPECT_EQ(folder.numEntries(), 3u);
}

TEST_F(ToolImport, TraceIsJson) {
    importJson(folder, {"--trace", folder.path("trace.json")});
    const rapidjson::Document trace = parseJson(folder.read("trace.json"));
    EXPECT_GT(trace["traceEvents"].Size(), 0u);
    EXPECT_THAT(folder.read("trace.json"), HasSubstr("ReadIDFFile"));
}

TEST_F(ToolImport, ImporterMessagesAreWarnings) {
    std::string board = smallBoard();
    const std::string hole = "1 10 10 0\n1 12 10 360\n";
    board.replace(board.find(hole), hole.size(), "1 10 10 0\n1 11 10 0\n1 12 10 0\n");
    folder.write("small.emn", board);
    const ToolResult result = runTool({"import", folder.path("small.emn"), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("a hole in the board was not valid in the file"));
}

class ToolReimport : public ToolImport {
protected:
    void SetUp() override {
        ToolImport::SetUp();
        importJson(folder, {});
    }
};

TEST_F(ToolReimport, ReplacesWhatTheFirstImportMade) {
    const rapidjson::Document report =
        importJson(folder, {"--into", folder.path("model.json")}, "again.json");
    EXPECT_EQ(entities(report, "PCB"), 1);
    EXPECT_EQ(entities(report, "Board Keepout"), 2);
    EXPECT_EQ(entities(report, "PCB Hole"), 2);
    EXPECT_EQ(entities(report, "Via"), 1);
}

TEST_F(ToolReimport, MaySaveOverTheModelThatItLoaded) {
    importJson(folder, {"--into", folder.path("model.json"), "--option", "Import Via Keepouts=No"});
    EXPECT_EQ(entities(modelInfo(folder.path("model.json")), "Board Keepout"), 1);
}

TEST_F(ToolReimport, OfASubstrateStaysAComponent) {
    importJson(folder, {"--as", "Component"});
    const rapidjson::Document report =
        importJson(folder, {"--into", folder.path("model.json")}, "again.json");
    EXPECT_EQ(entities(report, "Substrate"), 1);
    EXPECT_EQ(entities(report, "PCB"), 0);
}

TEST_F(ToolReimport, UnknownDesignatorListsTheBoards) {
    const ToolResult result =
        runTool({"import", folder.path("small.emn"), "--into", folder.path("model.json"), "--board", "other",
                 "-o", folder.path("again.json")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("its boards: 'small'"));
}

// A model with an empty board for each designator.
void saveBoards(const std::string &file, const std::vector<std::string> &designators) {
    using namespace EntityModel;
    Model model(Velkin_Solver_Project_t);
    Entity *const chassis = EntityEditor::createEntity(Chassis_t, model.root(), AttributePath(Chassis_t));
    for (const std::string &designator : designators) {
        Entity *const board = EntityEditor::createEntity(PCB_t, chassis, AttributePath(PCBs_t));
        EntityEditor::setValue(board, AttributePath(Reference_Designator_t), designator);
    }
    std::string error;
    ASSERT_TRUE(ModelFile::save(model, file, error)) << error;
}

TEST_F(ToolReimport, SeveralBoardsNeedAChoice) {
    saveBoards(folder.path("two.json"), {"left", "right"});
    const ToolResult result = runTool({"import", folder.path("small.emn"), "--into", folder.path("two.json"),
                                       "-o", folder.path("out.json")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("choose one with --board: 'left', 'right'"));
}

TEST_F(ToolReimport, ChoosesABoardByItsDesignator) {
    saveBoards(folder.path("two.json"), {"left", "right"});
    const rapidjson::Document report =
        importJson(folder, {"--into", folder.path("two.json"), "--board", "right"}, "out.json");
    EXPECT_EQ(entities(report, "PCB"), 2);
    EXPECT_EQ(entities(report, "Board Keepout"), 2);
    const std::string text = folder.read("out.json");
    EXPECT_LT(text.find("right"), text.find("Board Keepout"));
}

TEST_F(ToolReimport, ModelWithoutABoard) {
    saveBoards(folder.path("none.json"), {});
    const ToolResult result = runTool({"import", folder.path("small.emn"), "--into", folder.path("none.json"),
                                       "-o", folder.path("out.json")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("the model has no board"));
}

TEST_F(ToolReimport, BrokenModelIsNamed) {
    folder.write("broken.json", "{");
    const ToolResult result = runTool({"import", folder.path("small.emn"), "--into",
                                       folder.path("broken.json"), "-o", folder.path("again.json")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("broken.json"));
    EXPECT_EQ(folder.read("again.json"), "<missing>");
}

} // namespace
