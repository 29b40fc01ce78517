// eda convert: from a design to an IDF pair.
#include "readers/IDFReader.h"
#include "SmallDesign.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

// The environment of this process is that of the tool.
class StampVariable {
public:
    explicit StampVariable(const std::string &value) { qputenv("SOURCE_DATE_EPOCH", value.c_str()); }
    ~StampVariable() { qunsetenv("SOURCE_DATE_EPOCH"); }
};

class ToolConvert : public testing::Test {
protected:
    void SetUp() override { writeSmallDesign(folder); }

    ToolResult convert(const std::string &output = "out.emn", const std::vector<std::string> &more = {},
                       const std::string &input = "small.emn") const {
        std::vector<std::string> arguments{"convert", folder.path(input), "-o", folder.path(output)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runTool(arguments);
    }
    ToolResult convertWell(const std::string &output = "out.emn", const std::vector<std::string> &more = {},
                           const std::string &input = "small.emn") const {
        ToolResult result = convert(output, more, input);
        EXPECT_EQ(result.status, 0) << result;
        return result;
    }
    // No file was made, and the input is as it was.
    void expectNothingWritten() const {
        EXPECT_EQ(folder.read("small.emn"), smallBoard());
        EXPECT_EQ(folder.read("small.emp"), smallLibrary());
        EXPECT_EQ(folder.numEntries(), 2u);
    }
    // Reads a pair of the folder.
    void read(EDA::IDFReader &reader, const std::string &name = "out") const {
        EXPECT_TRUE(reader.readFile(folder.path(name + ".emn"))) << reader.getError();
        EXPECT_TRUE(reader.readFile(folder.path(name + ".emp"))) << reader.getError();
    }
    // The board with some text in place of another.
    void replaceInBoard(const std::string &old, const std::string &now) const {
        std::string text = folder.read("small.emn");
        const std::size_t at = text.find(old);
        ASSERT_NE(at, std::string::npos) << old;
        folder.write("small.emn", text.replace(at, old.size(), now));
    }
    void replaceInLibrary(const std::string &old, const std::string &now) const {
        std::string text = folder.read("small.emp");
        const std::size_t at = text.find(old);
        ASSERT_NE(at, std::string::npos) << old;
        folder.write("small.emp", text.replace(at, old.size(), now));
    }

    TempFolder folder;
};

TEST_F(ToolConvert, WritesThePairAndSaysSo) {
    const ToolResult result = convertWell();
    EXPECT_EQ(result.err, "");
    for (const char *text : {"out.emn", "out.emp", "MM", "Placements"})
        EXPECT_THAT(result.out, HasSubstr(text));
    EXPECT_EQ(folder.numEntries(), 4u);
    EDA::IDFReader reader;
    read(reader);
    EXPECT_EQ(reader.getBoard().getName(), "small");
    EXPECT_EQ(reader.getBoard().numComponentPlacements(), 3u);
    EXPECT_EQ(reader.getBoard().numComponents(), 2u);
    EXPECT_EQ(reader.getBoard().numKeepouts(), 2u);
    EXPECT_EQ(reader.getBoard().numVias(1), 2u);
}

TEST_F(ToolConvert, TheConvertedDesignConvertsToTheSameBytes) {
    const StampVariable stamp("1700000000");
    convertWell("out.emn");
    convertWell("again.emn", {}, "out.emn");
    EXPECT_EQ(folder.read("again.emn"), folder.read("out.emn"));
    EXPECT_EQ(folder.read("again.emp"), folder.read("out.emp"));
}

TEST_F(ToolConvert, TheStampComesFromTheEnvironmentWhereThatHasOne) {
    const StampVariable stamp("1700000000");
    convertWell();
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\"  14-11-2023.22:13:20 1\n"));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("\"  14-11-2023.22:13:20 1\n"));
}

TEST_F(ToolConvert, AStampThatIsNoNumberOfSecondsIsRefused) {
    for (const char *value : {"today", "17x", "-1", "99999999999999999999", "253402300800", " 1"}) {
        const StampVariable stamp(value);
        const ToolResult result = convert();
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr("SOURCE_DATE_EPOCH"));
        expectNothingWritten();
    }
}

TEST_F(ToolConvert, EachBoardExtensionHasItsLibrary) {
    for (const auto &[board, library] : {std::pair{"a.brd", "a.lib"},
                                         {"b.bdf", "b.ldf"},
                                         {"c.idf", "c.lib"},
                                         {"D.EMN", "D.EMP"},
                                         {"e.Emn", "e.emp"},
                                         {"f.g.emn", "f.g.emp"}}) {
        convertWell(board);
        EXPECT_THAT(folder.read(board), HasSubstr("BOARD_FILE"));
        EXPECT_THAT(folder.read(library), HasSubstr("LIBRARY_FILE"));
    }
}

TEST_F(ToolConvert, OtherExtensionsAreRefused) {
    for (const char *output : {"out.emp", "out.lib", "out.json", "out", ".emn", "out.emn.txt"}) {
        const ToolResult result = convert(output);
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr(".emn, .brd, .bdf or .idf"));
        expectNothingWritten();
    }
}

TEST_F(ToolConvert, NeverWritesOverWhatItReads) {
    std::filesystem::copy_file(std::filesystem::u8path(folder.path("small.emp")),
                               std::filesystem::u8path(folder.path("small.lib")));
    const std::string board = folder.read("small.emn");
    for (const char *output : {"small.emn", "./small.emn"}) {
        const ToolResult result = convert(output);
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr("is read"));
    }
    // The library of the output is the library that was read.
    const ToolResult result = runTool(
        {"convert", folder.path("small.emn"), folder.path("small.lib"), "-o", folder.path("small.brd")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("small.lib' is read"));
    EXPECT_EQ(folder.read("small.emn"), board);
    EXPECT_EQ(folder.read("small.lib"), smallLibrary());
    EXPECT_EQ(folder.numEntries(), 3u);
}

TEST_F(ToolConvert, ALinkToAnInputIsTheInput) {
    std::filesystem::create_symlink("small.emp", std::filesystem::u8path(folder.path("out.emp")));
    EXPECT_EQ(convert().status, 2);
    EXPECT_EQ(folder.read("small.emp"), smallLibrary());
    EXPECT_EQ(folder.read("out.emn"), "<missing>");
}

TEST_F(ToolConvert, BothOutputsInOneFileAreRefused) {
    folder.write("out.emn", "old");
    std::filesystem::create_symlink("out.emn", std::filesystem::u8path(folder.path("out.emp")));
    const ToolResult result = convert();
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("the same file"));
    EXPECT_EQ(folder.read("out.emn"), "old");
}

TEST_F(ToolConvert, AFolderThatIsNotThereNamesTheFile) {
    const ToolResult result = convert("no/such/out.emn");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr(folder.path("no/such/out.emn")));
    EXPECT_THAT(result.err, HasSubstr("cannot be written: No such file or directory"));
    expectNothingWritten();
}

TEST_F(ToolConvert, NeitherIsWrittenWhenOneCannotBe) {
    for (const auto &[blocked, other] : {std::pair{"out.emp", "out.emn"}, {"out.emn", "out.emp"}}) {
        std::filesystem::create_directory(std::filesystem::u8path(folder.path(blocked)));
        folder.write(other, "old");
        const ToolResult result = convert();
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_THAT(result.err, HasSubstr(std::string(blocked) + "': cannot be written: is a folder"));
        EXPECT_EQ(folder.read(other), "old");
        EXPECT_EQ(folder.numEntries(), 4u);
        std::filesystem::remove(std::filesystem::u8path(folder.path(blocked)));
        std::filesystem::remove(std::filesystem::u8path(folder.path(other)));
    }
}

#ifndef _WIN32
// A limit on the size of files stands in for a full disk: the write fails with a reason.
TEST_F(ToolConvert, AFullDiskLeavesBothFilesAsTheyWere) {
    folder.write("out.emn", "old");
    std::string rows;
    for (int i = 0; i < 5000; ++i)
        rows += "1 " + std::to_string(i) + " 4 NPTH BOARD MTG ECAD\n";
    replaceInBoard("3.2 36 4 NPTH BOARD MTG ECAD\n", rows);
    QProcess process;
    process.start("sh", {"-c", "trap '' XFSZ; ulimit -f 20; exec \"$@\"", "sh", EDA_TOOL, "convert",
                         QString::fromStdString(folder.path("small.emn")), "-o",
                         QString::fromStdString(folder.path("out.emn"))});
    ASSERT_TRUE(process.waitForFinished(100'000));
    const std::string error = process.readAllStandardError().toStdString();
    EXPECT_EQ(process.exitCode(), 1) << error;
    EXPECT_THAT(error, HasSubstr("out.emn': cannot be written: File too large"));
    EXPECT_EQ(folder.read("out.emn"), "old");
    EXPECT_EQ(folder.read("out.emp"), "<missing>");
    EXPECT_EQ(folder.numEntries(), 3u);
}
#endif

TEST_F(ToolConvert, AFailedReadLeavesTheOldOutputs) {
    folder.write("out.emn", "old");
    replaceInBoard("TOP 1.0", "TOP");
    EXPECT_EQ(convert().status, 1);
    EXPECT_EQ(folder.read("out.emn"), "old");
    EXPECT_EQ(folder.read("out.emp"), "<missing>");
}

TEST_F(ToolConvert, AMissingLibraryIsAWarning) {
    std::filesystem::remove(std::filesystem::u8path(folder.path("small.emp")));
    const ToolResult result = convertWell();
    EXPECT_THAT(result.err, HasSubstr("small.emp' is missing"));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("LIBRARY_FILE"));
}

TEST_F(ToolConvert, ALibraryAloneIsNoDesign) {
    const ToolResult result = convert("out.emn", {}, "small.emp");
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("board file is missing"));
    expectNothingWritten();
}

TEST_F(ToolConvert, AModelFileIsNoDesign) {
    const std::string model = folder.write("model.json", "{}");
    EXPECT_EQ(convert("out.emn", {}, "model.json").status, 2);
    EXPECT_EQ(folder.read("out.emn"), "<missing>");
}

TEST_F(ToolConvert, ArgumentsAreAskedFor) {
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"convert"}, {"convert", "a.emn"}, {"convert", "-o", "a.emn"}}) {
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr("convert needs"));
    }
}

TEST_F(ToolConvert, HelpNamesEveryOption) {
    const ToolResult result = runTool({"convert", "--help"});
    for (const char *text : {"-o, --output OUT.emn", "--units MM|THOU", ".brd with .lib"})
        EXPECT_THAT(result.out, HasSubstr(text));
    EXPECT_THAT(runTool({"--help"}).out, HasSubstr("convert"));
}

// Holes.

TEST_F(ToolConvert, NoInstanceOfAHoleIsLost) {
    replaceInBoard("3.2 36 4 NPTH BOARD MTG ECAD\n",
                   "3.2 36 4 NPTH BOARD MTG ECAD\n3.2 4 16 NPTH BOARD MTG ECAD\n"
                   "3.2 5 16 NPTH BOARD MTG ECAD\n");
    const ToolResult result = convertWell();
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("3.2 36 4 \"NPTH\" \"BOARD\" \"MTG\" UNOWNED\n"
                                                  "3.2 4 16 \"NPTH\" \"BOARD\" \"MTG\" UNOWNED\n"
                                                  "3.2 5 16 \"NPTH\" \"BOARD\" \"MTG\" UNOWNED\n"));
    EDA::IDFReader reader;
    read(reader);
    EXPECT_EQ(reader.getBoard().numVias(0), 2u);
    EXPECT_EQ(reader.getBoard().numVias(1), 4u);
}

// Units.

TEST_F(ToolConvert, UnitsConvertEveryLengthButNoAngle) {
    replaceInBoard("25 12 0 0 TOP", "25.4 12.7 1.27 30 TOP");
    convertWell("out.emn", {"--units", "THOU"});
    const std::string board = folder.read("out.emn");
    for (const char *text :
         {"\"small\" THOU\n", "\n62.9921\n", "\n0 1574.8 0 0\n", "\n0 1377.95 787.402 90\n",
          "\n1 472.441 393.701 360\n", "TOP 39.3701\n0 787.402 78.7402 0\n",
          "125.984 1417.32 157.48 \"NPTH\"", "\n1000 500 50 30 TOP PLACED\n"})
        EXPECT_THAT(board, HasSubstr(text));
    const std::string library = folder.read("out.emp");
    for (const char *text : {"\"QFP\" \"P1\" THOU 59.0551\n0 -118.11 -78.7402 0\n", "\n0 39.3701 0 360\n"})
        EXPECT_THAT(library, HasSubstr(text));
}

TEST_F(ToolConvert, UnitsOfTheDesignAreKept) {
    folder.write("small.emn", smallBoard("THOU"));
    const ToolResult result = convertWell();
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\"small\" THOU\n"));
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\n0 40 0 0\n"));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("\"QFP\" \"P1\" MM 1.5\n"));
}

TEST_F(ToolConvert, UnitsMayBeSpelledAsElsewhere) {
    convertWell("out.emn", {"--units", "mil"});
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\"small\" THOU\n"));
}

TEST_F(ToolConvert, OtherUnitsAreNoUnitsOfIdf) {
    for (const char *units : {"inch", "furlong", "cm"}) {
        const ToolResult result = convert("out.emn", {"--units", units});
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr("MM or THOU"));
        expectNothingWritten();
    }
}

TEST_F(ToolConvert, UnitsWithoutAWordInIdfAreConverted) {
    folder.write("small.emn", smallBoard("cm"));
    replaceInLibrary("QFP P1 MM 1.5", "QFP P1 in 0.125");
    const ToolResult result = convertWell();
    EXPECT_THAT(result.err, HasSubstr("lengths in 'cm', which IDF has no word for, are converted to MM"));
    EXPECT_THAT(result.err, HasSubstr("lengths in 'in', which IDF has no word for, are converted to THOU"));
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\n0 400 0 0\n"));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("\"QFP\" \"P1\" THOU 125\n0 -3000 -2000 0\n"));
}

TEST_F(ToolConvert, UnknownUnitsStopItUnlessTheOptionSaysWhatTheyAre) {
    folder.write("small.emn", smallBoard("FURLONG"));
    const ToolResult refused = convert();
    EXPECT_EQ(refused.status, 1) << refused;
    EXPECT_THAT(refused.err, HasSubstr("the units 'FURLONG' are unknown"));
    EXPECT_EQ(folder.read("out.emn"), "<missing>");
    const ToolResult result = convertWell("out.emn", {"--units", "THOU"});
    EXPECT_THAT(result.err, HasSubstr("are unknown; its lengths are taken to be in THOU"));
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\n0 40 0 0\n"));
}

TEST_F(ToolConvert, UnknownUnitsOfAComponentAsWell) {
    replaceInLibrary("QFP P1 MM 1.5", "QFP P1 ELL 1.5");
    EXPECT_EQ(convert().status, 1);
    const ToolResult result = convertWell("out.emn", {"--units", "MM"});
    EXPECT_THAT(result.err, HasSubstr("1 component of unknown units is taken to be in those of --units"));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("\"QFP\" \"P1\" MM 1.5\n"));
}

TEST_F(ToolConvert, ABoardWithoutUnitsIsTakenAsMillimetres) {
    replaceInBoard("BOARD_FILE", "PANEL_FILE"); // a panel's header names no units that are read
    const ToolResult result = convertWell();
    EXPECT_THAT(result.err, HasSubstr("the board names no units; its lengths are taken to be in MM"));
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\n\"\" MM\n"));
    EDA::IDFReader reader;
    read(reader);
}

// What is lost is told, a line a kind.

TEST_F(ToolConvert, RouteAndPlacementOutlinesAreTold) {
    const std::string triangle = "0 1 1 0\n0 2 1 0\n0 2 2 0\n";
    replaceInBoard(".PLACEMENT\n", ".ROUTE_OUTLINE ECAD\nALL\n" + triangle + ".END_ROUTE_OUTLINE\n" +
                                       ".PLACE_OUTLINE ECAD\nTOP 1\n" + triangle + ".END_PLACE_OUTLINE\n" +
                                       ".PLACE_OUTLINE ECAD\nTOP 1\n" + triangle +
                                       ".END_PLACE_OUTLINE\n.PLACEMENT\n");
    const ToolResult result = convertWell();
    EXPECT_THAT(result.err, HasSubstr("small.emn': 1 route outline is left out\n"));
    EXPECT_THAT(result.err, HasSubstr("small.emn': 2 placement outlines are left out\n"));
}

TEST_F(ToolConvert, TextsThatChangeAreTold) {
    replaceInBoard("QFP P1 U1", "\"Q\xE2\x84\xA6\" P1 U1");
    replaceInLibrary("0 -3 -2 0\n0 3", "PROP \"my key\" 5\nPROP EMPTY \"\"\nPROP SIZE 12\"\n0 -3 -2 0\n0 3");
    const ToolResult result = convertWell();
    for (const char *text : {"1 text has characters that are written as '?'", "1 property name is changed",
                             "1 property without a name or value that fits is left out",
                             "1 text has quotes, tabs or line ends that are replaced"})
        EXPECT_THAT(result.err, HasSubstr(text));
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\"Q?\" \"P1\" \"U1\""));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("PROP my_key 5\n"));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("PROP SIZE 12'\n"));
    EXPECT_THAT(folder.read("out.emp"), Not(HasSubstr("EMPTY")));
}

TEST_F(ToolConvert, TextsOfOneFileHaveOneEncoding) {
    for (const auto &[old, now] :
         {std::pair{"small MM", "sm\xC3\xA4ll MM"}, {"QFP P1 U1", "QF\xC3\xB6 P\xC3\xA9 U\xC3\xBC"}})
        replaceInBoard(old, now);
    replaceInLibrary("QFP P1", "QF\xC3\xB6 P\xC3\xA9");
    EXPECT_EQ(convertWell().err, "");
    EDA::IDFReader reader;
    read(reader);
    EXPECT_EQ(reader.getBoard().getName(), "sm\xC3\xA4ll");
    const auto placed = reader.getBoard().beginPlacements();
    EXPECT_EQ(placed->getReferenceDesignator(), "U\xC3\xBC");
    EXPECT_EQ(placed->getPartNumber(), "P\xC3\xA9");
    EXPECT_NE(reader.getBoard().findComponent(*placed), nullptr);
}

TEST_F(ToolConvert, WhatARowNeedsIsThere) {
    replaceInBoard("25 12 0 0 TOP PLACED", "25 12 0 0 \"\" \"\"");
    replaceInLibrary("POST P2 MM 8", "POST P2 \"\" 8");
    const ToolResult result = convertWell();
    EXPECT_THAT(result.err, HasSubstr("1 placement without a usable status becomes PLACED"));
    EXPECT_THAT(folder.read("out.emn"), HasSubstr("\n25 12 0 0 TOP PLACED\n"));
    EXPECT_THAT(folder.read("out.emp"), HasSubstr("\"POST\" \"P2\" MM 8\n"));
}

// The examples keep their picture but for the parts that are told.
TEST(ToolConvertExamples, TheControllerGivesTheSamePicture) {
    const TempFolder folder;
    const std::string example = std::string(EDA_EXAMPLES) + "/controller/controller.emn";
    const ToolResult result = runTool({"convert", example, "-o", folder.path("controller.emn")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, HasSubstr("1 route outline is left out"));
    EXPECT_THAT(result.err, HasSubstr("3 placement outlines are left out"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 2);
    for (const char *side : {"top", "bottom"}) {
        runTool({"render", example, "-o", folder.path("a.svg"), "--side", side});
        runTool({"render", folder.path("controller.emn"), "-o", folder.path("b.svg"), "--side", side});
        EXPECT_EQ(folder.read("a.svg"), folder.read("b.svg")) << side;
        EXPECT_THAT(folder.read("a.svg"), HasSubstr("</svg>"));
    }
}

} // namespace
