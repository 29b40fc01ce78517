// Designs of the layout suite's families: how they are known, and what is told.
#include "SmallDesign.h"
#include "SuiteBench.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

const std::string example = std::string(EDA_EXAMPLES) + "/ipc2581/dimmer.xml";

class ToolSuite : public SuiteBench {};

// How designs are known.

TEST_F(ToolSuite, ADocumentIsKnownByItsFirstElementWhateverItsName) {
    for (const char *name : {"a.xml", "a.cvg", "a.idx", "a.emn", "a.gbr", "a.7z", "a"}) {
        const ToolResult result = info(name, ipcDocument({"board"}));
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.out, HasSubstr("Format              IPC-2581\n")) << name;
    }
}

TEST_F(ToolSuite, ALayoutIsKnownByItsFirstLineWhateverItsName) {
    for (const char *name : {"a.qvd", "a.brd", "a.zip", "a.txt", "a"}) {
        const ToolResult result = info(name, LayoutTest::smallBoard());
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_EQ(result.err, "");
        EXPECT_THAT(result.out, HasSubstr("Format              QVD\n")) << name;
        EXPECT_THAT(result.out, HasSubstr("Placements          2\n"));
    }
}

TEST_F(ToolSuite, OtherXmlIsNoDesignUnlessItsNameSaysSo) {
    EXPECT_THAT(info("a.xml", "<drawing/>\n").err, HasSubstr("a.xml': is in no format that eda reads"));
    const ToolResult result = info("a.cvg", "<drawing/>\n");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(
        result.err,
        HasSubstr("a.cvg': this is no IPC-2581 document: it is no XML, has a document type, or its "));
}

TEST_F(ToolSuite, ABrdOfTextIsIdfAndAnyOtherIsOfTheSuite) {
    EXPECT_THAT(info("a.brd", smallBoard()).out, HasSubstr("Format              IDF\n"));
    EXPECT_THAT(info("b.brd", "plain text\n").err, HasSubstr("Missing IDF file header!"));
    EXPECT_THAT(info("c.brd", std::string("\x01\0\x02", 3)).err,
                HasSubstr("only the layout suite opens a \".brd\" file"));
}

TEST_F(ToolSuite, ALayoutOfAnotherFormIsRefused) {
    const ToolResult result = info("a.qvd", "\x01\x02");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("a.qvd': this layout is not in the text form that can be read"));
}

TEST_F(ToolSuite, ABrokenLayoutIsToldWithTheLine) {
    const ToolResult result = info("a.qvd", "EDA-LAYOUT 1\nodd\n");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_EQ(result.err, "eda: '" + folder.path("a.qvd") + "': line 2: there is no record of this kind\n");
}

TEST_F(ToolSuite, ALayoutWithoutABoardIsToldPlainly) {
    const ToolResult result = info("a.qvd", LayoutTest::form(""));
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("a.qvd': holds no board: neither an edge nor a conductor layer\n"));
}

TEST_F(ToolSuite, TwoFilesAreNoDesign) {
    const std::string first = folder.write("a.qvd", LayoutTest::smallBoard());
    const ToolResult result = runTool({"info", first, folder.write("b.qvd", LayoutTest::smallBoard())});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("are two files, which are a design each"));
}

TEST_F(ToolSuite, HasImportOptionsForEachFamily) {
    for (const char *format : {"ipc-2581", "qvd", "brisko", "odb++"}) {
        const ToolResult result = runTool({"options", format}, folder.path());
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.out, HasSubstr("Import options of "));
    }
}

TEST_F(ToolSuite, OptionsThatAreStoredForOneFamilyHoldForAll) {
    EXPECT_EQ(runTool({"options", "QVD", "--set", "Min Height=2 mm"}, folder.path()).status, 0);
    EXPECT_THAT(runTool({"options", "IPC-2581"}, folder.path()).out, HasSubstr("2 mm"));
}

// Folders.

TEST_F(ToolSuite, AFolderStandsForSuchAFileWhenItHoldsNothingElse) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    EXPECT_THAT(runTool({"info", folder.path()}).out, HasSubstr("Format              QVD\n"));
}

TEST_F(ToolSuite, ADesignInAFolderIsNotDisturbedByAnArchiveOrDocumentBesideIt) {
    writeSmallDesign(folder);
    folder.write("a.xml", ipcDocument({"board"}));
    writeArchive("a.zip", {"steps/a/profile"});
    const ToolResult result = runTool({"info", folder.path()});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Format              IDF\n"));
    EXPECT_THAT(result.err,
                HasSubstr("a.zip': is left out: it is a design of its own, which is read when it is named"));
}

// The suite's own families.

TEST_F(ToolSuite, WhatOnlyTheSuiteOpensIsToldPlainly) {
    for (const char *name : {"a.brd", "a.mcm", "a.sip"}) {
        const ToolResult result = info(name, "\x01\x02");
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_EQ(result.err,
                  "eda: '" + folder.path(name) + "': only the layout suite opens a \"" +
                      std::string(name).substr(1) +
                      "\" file; the layout \"a.qvd\" beside it would be read in its place, but there is "
                      "none\n");
    }
    writeArchive("a.zip", {"steps/a/profile"});
    EXPECT_THAT(runTool({"info", folder.path("a.zip")}).err,
                HasSubstr("only the layout suite opens a \".zip\" file"));
}

TEST_F(ToolSuite, TheLayoutBesideIsReadInItsPlaceWithAWarning) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    const ToolResult result = info("a.brd", "\x01\x02");
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Placements          2\n"));
    EXPECT_EQ(result.err,
              "eda: warning: '" + folder.path("a.brd") +
                  "': only the layout suite opens \"a.brd\"; the layout \"a.qvd\" beside it is read in "
                  "its place\n");
}

TEST_F(ToolSuite, TheLayoutThatWasReadIsNotWrittenOver) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    const std::string design = folder.write("a.brd", "\x01\x02");
    const ToolResult result = runTool({"import", design, "-o", folder.path("a.qvd")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(folder.read("a.qvd"), LayoutTest::smallBoard());
}

TEST_F(ToolSuite, WithoutTheSuiteFolderALayoutBesideIsReadAndTheLackTold) {
    QProcessEnvironment environment = toolEnvironment();
    environment.insert("EDA_TOOLS_DIR", "/nonexistent");
    const std::string design = folder.write("a.brd", "\x01\x02");
    ToolResult result = runProgram(EDA_TOOL, {"info", design}, environment);
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("does not exist: /nonexistent/"));
    folder.write("a.qvd", LayoutTest::smallBoard());
    result = runProgram(EDA_TOOL, {"info", design}, environment);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("does not exist: /nonexistent/"));
}

TEST_F(ToolSuite, ADamagedArchiveIsRefused) {
    const ToolResult result = info("a.zip", "PK\x03\x04 and nothing else");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("a.zip"));
}

// The folder of the design.

TEST_F(ToolSuite, TheFolderOfTheDesignStaysAsItIs) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    folder.write("a.log", "my own");
    folder.write("error.log", "Error: of long ago\n");
    folder.write("a.qvd.log", "Error: of long ago\n");
    folder.write("Board Bench.cfg", "mine");
    const ToolResult result = info("a.brd", "\x01\x02");
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(folder.numEntries(), 6u);
    EXPECT_EQ(folder.read("a.log"), "my own");
    EXPECT_EQ(folder.read("Board Bench.cfg"), "mine");
    EXPECT_EQ(folder.read("a.qvd.log"), "Error: of long ago\n");
}

TEST_F(ToolSuite, NoFolderForAWhileStays) {
    const TempFolder temporary;
    QProcessEnvironment environment = toolEnvironment();
    environment.insert("TMPDIR", QString::fromStdString(temporary.path()));
    for (const char *bytes : {"EDA-LAYOUT 1\nodd\n", "EDA-LAYOUT 1\nend\n"})
        runProgram(EDA_TOOL, {"info", folder.write("a.qvd", bytes)}, environment);
    runProgram(EDA_TOOL, {"info", folder.write("a.qvd", LayoutTest::smallBoard())}, environment);
    EXPECT_EQ(temporary.numEntries(), 0u);
}

TEST_F(ToolSuite, NamesAreTakenFromTheWorkingFolder) {
    std::filesystem::create_directory(std::filesystem::u8path(folder.path("in")));
    folder.write("in/a.qvd", LayoutTest::smallBoard());
    const ToolResult result = runTool({"import", "in/a.qvd", "-o", "a.json"}, "/nonexistent", folder.path());
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(folder.read("a.json"), HasSubstr("PCB"));
}

TEST_F(ToolSuite, ADesignMayBeAComponent) {
    const std::string model = folder.path("a.json");
    const std::string design = folder.write("a.qvd", LayoutTest::smallBoard());
    const ToolResult result = runTool({"import", design, "--as", "Component", "-o", model});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Substrate"));
}

// The example.

TEST_F(ToolSuite, TheExampleIsReadAndImportedWhole) {
    ToolResult result = runTool({"info", example});
    EXPECT_EQ(result.status, 0) << result;
    for (const char *text :
         {"Name                dimmer\n", "Units               m\n", "Thickness           0.0016\n",
          "13 points, 2 cut-outs, x 0 to 0.06, y 0 to 0.04", "Placements          4\n",
          "Holes and vias      5\n", "Layers              7\n"})
        EXPECT_THAT(result.out, HasSubstr(text));
    EXPECT_THAT(result.err, HasSubstr("eda: warning: '" + example + "': "));
    EXPECT_THAT(result.err, Not(HasSubstr("Warning:")));
    result = runTool({"import", example, "-o", folder.path("dimmer.json")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Imported                 4\n"));
}

TEST_F(ToolSuite, TheExampleIsDrawnAndConverted) {
    ToolResult result = runTool({"render", example, "--layer", "GROUND", "-o", folder.path("ground.svg")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(folder.read("ground.svg"), HasSubstr("<path"));
    result = runTool({"convert", example, "-o", folder.path("dimmer.emn")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(folder.read("dimmer.emn"), HasSubstr("BOARD_FILE"));
    EXPECT_THAT(runTool({"info", folder.path("dimmer.emn")}).out, HasSubstr("Placements          4\n"));
}

} // namespace
