// Help, version and wrong usage of the tool.
#include "support/RunTool.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using TestSupport::runTool;
using TestSupport::TempFolder;
using TestSupport::ToolResult;

// A wrong usage answers 2, says one thing on standard error and nothing on standard output.
void expectUsageError(const std::vector<std::string> &arguments, const std::string &message) {
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, testing::StartsWith("eda: "));
    EXPECT_THAT(result.err, HasSubstr(message));
}

TEST(ToolHelp, ListsEveryCommand) {
    const ToolResult result = runTool({"--help"});
    EXPECT_EQ(result.status, 0) << result;
    for (const char *command : {"info", "import", "export", "convert", "options", "render", "help"})
        EXPECT_THAT(result.out, HasSubstr(command));
    EXPECT_EQ(result.err, "");
}

TEST(ToolHelp, OfACommandIsTheSameInBothForms) {
    for (const char *command : {"info", "import", "export", "convert", "options", "render"}) {
        const ToolResult behind = runTool({command, "--help"});
        const ToolResult before = runTool({"help", command});
        EXPECT_EQ(behind.status, 0) << behind;
        EXPECT_EQ(behind.out, before.out);
        EXPECT_THAT(behind.out, testing::StartsWith(std::string("Usage: eda ") + command));
        EXPECT_THAT(behind.out, HasSubstr("--help"));
    }
}

TEST(ToolHelp, OfImportNamesEveryOption) {
    const ToolResult result = runTool({"import", "--help"});
    for (const char *option : {"-o, --output", "--as", "--into", "--board", "--option", "--units", "--json",
                               "--trace", "--type-map", "--library", "--no-library"}) {
        EXPECT_THAT(result.out, HasSubstr(option));
    }
}

TEST(ToolHelp, VersionIsOneLine) {
    const ToolResult result = runTool({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, testing::MatchesRegex("eda [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(ToolUsage, NoArgumentAtAll) { expectUsageError({}, "COMMAND is missing"); }
TEST(ToolUsage, EmptyCommand) { expectUsageError({""}, "unknown command ''"); }
TEST(ToolUsage, UnknownCommand) { expectUsageError({"solve", "a.json"}, "unknown command 'solve'"); }
TEST(ToolUsage, UnknownCommandOfHelp) { expectUsageError({"help", "nothing"}, "unknown command 'nothing'"); }
TEST(ToolUsage, HelpTakesOneCommand) { expectUsageError({"help", "info", "render"}, "one COMMAND"); }
TEST(ToolUsage, VersionStandsAlone) { expectUsageError({"--version", "x"}, "--version"); }
TEST(ToolUsage, UnknownOption) {
    expectUsageError({"info", "--nothing", "a.emn"}, "unknown option '--nothing'");
}
TEST(ToolUsage, UnknownLetter) { expectUsageError({"info", "-x", "a.emn"}, "unknown option '-x'"); }
TEST(ToolUsage, OptionOfALaterVersionIsUnknown) {
    expectUsageError({"import", "a.emn", "-o", "b.json", "--stack-order", "f"},
                     "unknown option '--stack-order'");
}
TEST(ToolUsage, MissingValueAtTheEnd) {
    expectUsageError({"import", "a.emn", "-o"}, "--output needs a value");
}
TEST(ToolUsage, MissingValueBeforeAnOption) {
    expectUsageError({"import", "a.emn", "-o", "--json"}, "--output needs a value");
}
TEST(ToolUsage, EmptyValue) { expectUsageError({"import", "a.emn", "-o", ""}, "--output is empty"); }
TEST(ToolUsage, EmptyValueBehindEquals) {
    expectUsageError({"import", "a.emn", "--output="}, "--output is empty");
}
TEST(ToolUsage, FlagTakesNoValue) {
    expectUsageError({"info", "--json=yes", "a.emn"}, "--json takes no value");
}
TEST(ToolUsage, OptionGivenTwice) {
    expectUsageError({"info", "--json", "--json", "a.emn"}, "--json is given twice");
}
TEST(ToolUsage, EmptyFileName) { expectUsageError({"info", ""}, "a file name is empty"); }
TEST(ToolUsage, InfoWithoutFile) { expectUsageError({"info"}, "info needs a FILE"); }
TEST(ToolUsage, ImportWithoutFile) { expectUsageError({"import", "-o", "x.json"}, "import needs a FILE"); }
TEST(ToolUsage, ImportWithoutOutput) { expectUsageError({"import", "a.emn"}, "needs -o"); }
TEST(ToolUsage, RenderWithoutFile) { expectUsageError({"render", "-o", "x.svg"}, "render needs a FILE"); }
TEST(ToolUsage, RenderWithoutOutput) { expectUsageError({"render", "a.emn"}, "needs -o"); }
TEST(ToolUsage, RenderToAnUnknownFormat) {
    expectUsageError({"render", "a.emn", "-o", "x.gif"}, ".svg or .png");
}
TEST(ToolUsage, RenderOfAnUnknownSide) {
    expectUsageError({"render", "a.emn", "-o", "x.svg", "--side", "left"}, "top or bottom");
}
TEST(ToolUsage, RenderTooWideNamesTheLimits) {
    for (const char *width : {"0", "199", "8193", "99999999999999999999", "12x", "1e3", "0x400"}) {
        expectUsageError({"render", "a.emn", "-o", "x.png", "--width", width}, "from 200 to 8192");
    }
}
TEST(ToolUsage, NegativeWidthIsNoValue) {
    expectUsageError({"render", "a.emn", "-o", "x.png", "--width", "-5"}, "--width needs a value");
    expectUsageError({"render", "a.emn", "-o", "x.png", "--width=-5"}, "from 200 to 8192");
}
TEST(ToolUsage, ImportAsAnythingElse) {
    expectUsageError({"import", "a.emn", "-o", "x.json", "--as", "Brick"}, "PCB or Component");
}
TEST(ToolUsage, UnitsThatAreNoLength) {
    expectUsageError({"import", "a.emn", "-o", "x.json", "--units", "furlong"}, "no unit of length");
}
TEST(ToolUsage, LibraryAndNoLibrary) {
    expectUsageError({"import", "a.emn", "-o", "x.json", "--library", "l", "--no-library"},
                     "--library names a library and --no-library wants none");
}
TEST(ToolUsage, OptionsWithoutFormat) { expectUsageError({"options"}, "options needs a FORMAT: IDX, "); }
TEST(ToolUsage, OptionsOfTwoFormats) { expectUsageError({"options", "IDF", "IDF"}, "takes one FORMAT"); }
TEST(ToolUsage, OptionsOfAnUnknownFormatNamesTheFormats) {
    expectUsageError({"options", "PDF"}, "there is no format 'PDF'; the formats are: IDX, IPC-2581, QVD, IDF");
}
TEST(ToolUsage, ABoardOfASetThatIsReadAsItIs) {
    expectUsageError({"import", "a.gbr", "-o", "x.json", "--board", "B1", "--as-is"}, "not read --as-is");
}

TEST(ToolUsage, DoubleDashEndsTheOptions) {
    const ToolResult result = runTool({"info", "--", "--json"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("'--json': there is no such file"));
}

TEST(ToolUsage, ControlCharactersOfTheCommandLineAreShownAsText) {
    const ToolResult result = runTool({"\x1b[31mred\n"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("\\u{1B}[31mred\\u{0A}"));
    EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
}

} // namespace
