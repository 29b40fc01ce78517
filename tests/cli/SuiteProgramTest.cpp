// The program in the suite's folder of tools, which converts designs to layouts in text form.
#include "host/QvDbWrap/LayoutSupport.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::StartsWith;

const std::string example = std::string(EDA_EXAMPLES) + "/ipc2581/dimmer.xml";

class SuiteProgram : public testing::Test {
protected:
    ToolResult run(const std::vector<std::string> &arguments) const {
        return runProgram(EDA_SUITE, arguments, toolEnvironment(), folder.path());
    }
    TempFolder folder;
};

TEST_F(SuiteProgram, StandsInTheFolderOfToolsUnderTheNameThatHostsLookFor) {
    EXPECT_EQ(std::filesystem::u8path(EDA_SUITE).filename(), "QuorvitySuite.exe");
    EXPECT_EQ(std::filesystem::u8path(EDA_SUITE).parent_path().filename(), "eda-tools");
}

TEST_F(SuiteProgram, PrintsItsHelpAndItsVersion) {
    for (const char *option : {"--help", "-h"}) {
        const ToolResult result = run({option});
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.out, StartsWith("Usage: QuorvitySuite.exe DESIGN"));
    }
    EXPECT_THAT(run({"--version"}).out, StartsWith("QuorvitySuite 0."));
}

TEST_F(SuiteProgram, ConvertsADocumentToALayoutThatReadsTheSame) {
    const ToolResult result = run({example, "-o", "dimmer.qvd"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("QuorvitySuite: Warning: "));
    EXPECT_THAT(folder.read("dimmer.qvd"), StartsWith("EDA-LAYOUT 1\n"));
    const auto table = [](const ToolResult &info) { return info.out.substr(info.out.find("Name ")); };
    EXPECT_EQ(table(runTool({"info", folder.path("dimmer.qvd")})), table(runTool({"info", example})));
}

TEST_F(SuiteProgram, TheLayoutGoesBesideTheDesignUnlessAnotherNameIsGiven) {
    folder.write("a.txt", LayoutTest::smallBoard());
    EXPECT_EQ(run({"a.txt"}).status, 0);
    EXPECT_EQ(folder.read("a.qvd").size(), folder.read("a.qvd").find("end\n") + 4);
    EXPECT_EQ(run({"--output=b.qvd", "a.txt"}).status, 0);
    EXPECT_EQ(folder.read("b.qvd"), folder.read("a.qvd"));
    EXPECT_EQ(run({"a.txt"}).status, 0); // once more, over what it wrote before
}

TEST_F(SuiteProgram, AStepIsChosenByItsName) {
    const ToolResult result = run({example, "--step", "none", "-o", "a.qvd"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("no step none"));
    EXPECT_EQ(run({example, "--step", "dimmer", "-o", "a.qvd"}).status, 0);
}

TEST_F(SuiteProgram, AFileOfAnotherFormIsNotWrittenOver) {
    folder.write("a.txt", LayoutTest::smallBoard());
    folder.write("a.qvd", "\x01\x02");
    const ToolResult result = run({"a.txt"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("a.qvd: is no layout in text form, so it is not written over"));
    EXPECT_EQ(folder.read("a.qvd"), "\x01\x02");
}

TEST_F(SuiteProgram, TheDesignItselfIsNotWrittenOver) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    const ToolResult result = run({"a.qvd"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("a.qvd: is the design itself"));
    EXPECT_EQ(folder.read("a.qvd"), LayoutTest::smallBoard());
}

TEST_F(SuiteProgram, WhatCannotBeReadIsTold) {
    EXPECT_THAT(run({"none.xml"}).err, HasSubstr("\"none.xml\": there is no such file"));
    folder.write("b.brd", "\x01");
    const ToolResult result = run({"b.brd"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, StartsWith("QuorvitySuite: only the layout suite opens a \".brd\" file"));
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST_F(SuiteProgram, WhatCannotBeWrittenIsTold) {
    const ToolResult result = run({example, "-o", "none/a.qvd"});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("none/a.qvd: "));
}

TEST_F(SuiteProgram, WrongUsageIsTold) {
    const std::vector<std::vector<std::string>> cases = {
        {}, {"a", "b"}, {"--odd", "a"}, {"a", "-o"}, {"a", "--step="}};
    for (const std::vector<std::string> &arguments : cases) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 2) << result;
        EXPECT_THAT(result.err, HasSubstr("see --help"));
    }
}

} // namespace
