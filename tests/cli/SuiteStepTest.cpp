// The steps of a design: which is read, and how somebody is asked for one.
#include "SuiteBench.h"
#include "SuiteSteps.h"
#include "ToolOnTerminal.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

namespace {

using namespace TestSupport;
using EDATool::TerminalStepChooser;
using testing::HasSubstr;
using testing::Not;

class ToolSteps : public SuiteBench {};

// Which step is read.

TEST_F(ToolSteps, ADocumentSaysItselfWhichStepIsRead) {
    EXPECT_THAT(info("a.xml", ipcDocument({"b", "a"})).out, HasSubstr("x 0 to 0.1,"));
}

TEST_F(ToolSteps, AStepOfADocumentIsChosenByItsName) {
    const ToolResult result = info("a.xml", ipcDocument({"b", "a"}), {"--step", "a"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("x 0 to 0.2,"));
    EXPECT_THAT(result.out, HasSubstr("File                " + folder.path("a.xml") + "\n"));
}

TEST_F(ToolSteps, AnUnknownStepIsRefusedWithTheListOfSteps) {
    ToolResult result = info("a.xml", ipcDocument({"b", "a"}), {"--step", "c"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(result.err, "eda: '" + folder.path("a.xml") + "' has no step 'c'; its steps are: 'b', 'a'\n");
    writeArchive("a.zip", {"job/steps/main/profile", "job/steps/panel/profile", "job/steps/main/x"});
    result = runTool({"info", folder.path("a.zip"), "--step", "c"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("a.zip' has no step 'c'; its steps are: 'main', 'panel'\n"));
    writeArchive("b.zip", {"job/x"});
    EXPECT_THAT(runTool({"info", folder.path("b.zip"), "--step", "c"}).err, HasSubstr("it has none at all"));
}

TEST_F(ToolSteps, AStepOfADesignWithoutStepsIsRefused) {
    const ToolResult result = info("a.qvd", LayoutTest::smallBoard(), {"--step", "a"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err,
                HasSubstr("--step is for IPC-2581 documents and archives, but '" + folder.path("a.qvd")));
}

TEST_F(ToolSteps, OfAnArchiveTheFirstStepIsTakenWithAWarning) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    writeArchive("a.zip", {"job/steps/panel/profile", "job/steps/main/profile", "job/steps/coupon/profile"});
    ToolResult result = runTool({"info", folder.path("a.zip")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Format              ODB++\n"));
    EXPECT_THAT(result.err,
                HasSubstr("a.zip': the step 'coupon' is read; --step can name another: 'main', 'panel'\n"));
    EXPECT_THAT(result.err, HasSubstr("is read in its place, whatever the step \"coupon\" has\n"));
    result = runTool({"info", folder.path("a.zip"), "--step", "main"});
    EXPECT_THAT(result.err, Not(HasSubstr("--step can name")));
    EXPECT_THAT(result.err, HasSubstr("whatever the step \"main\" has\n"));
}

TEST_F(ToolSteps, AnArchiveOfOneStepNeedsNoChoice) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    writeArchive("a.zip", {"job/steps/main/profile"});
    const ToolResult result = runTool({"info", folder.path("a.zip")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
}

// Asking for a step.

class StepQuestion : public testing::Test {
protected:
    std::optional<int> answered(const std::string &input) {
        std::istringstream lines(input);
        return TerminalStepChooser(lines, output).chooseStep({"panel", "2", "ma\x1bin"});
    }
    std::ostringstream output;
};

TEST_F(StepQuestion, ListsTheStepsWithNumbers) {
    answered("1\n");
    EXPECT_EQ(output.str(), "The design has 3 steps:\n  1  panel\n  2  2\n  3  ma\\u{1B}in\n"
                            "Which one is to be read? ");
}

TEST_F(StepQuestion, TakesANumberOrAName) {
    EXPECT_EQ(answered("3\n"), 2);
    EXPECT_EQ(answered("  panel \r\n"), 0);
    EXPECT_EQ(answered("2"), 1);
}

TEST_F(StepQuestion, AsksAgainForAnythingElse) {
    EXPECT_EQ(answered("0\n4\n-1\n1x\n99999999999999\nPANEL\n1\n"), 0);
    EXPECT_THAT(output.str(), HasSubstr("There is no such step; an empty line cancels.\n"));
}

TEST_F(StepQuestion, AnEmptyLineAndTheEndCancel) {
    EXPECT_EQ(answered("\n"), std::nullopt);
    EXPECT_EQ(answered("  \n1\n"), std::nullopt);
    EXPECT_EQ(answered(""), std::nullopt);
    EXPECT_EQ(answered("7"), std::nullopt);
}

#ifdef __linux__

TEST_F(ToolSteps, OnATerminalSomebodyIsAskedForTheStepOfAnArchive) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    writeArchive("a.zip", {"job/steps/panel/profile", "job/steps/main/profile"});
    ToolOnTerminal tool({"info", folder.path("a.zip")});
    ASSERT_TRUE(tool.waitFor("Which one is to be read? ")) << tool.output;
    EXPECT_THAT(tool.output, HasSubstr("  1  panel\r\n  2  main\r\n"));
    ASSERT_TRUE(tool.type("2\n"));
    EXPECT_EQ(tool.finish(), 0) << tool.output;
    EXPECT_THAT(tool.output, HasSubstr("whatever the step \"main\" has"));
}

TEST_F(ToolSteps, AnEmptyLineOnTheTerminalCancels) {
    writeArchive("a.zip", {"job/steps/panel/profile", "job/steps/main/profile"});
    ToolOnTerminal tool({"info", folder.path("a.zip")});
    ASSERT_TRUE(tool.waitFor("Which one is to be read? ")) << tool.output;
    ASSERT_TRUE(tool.type("\n"));
    EXPECT_EQ(tool.finish(), 3) << tool.output;
    EXPECT_THAT(tool.output, HasSubstr("eda: cancelled: no step was chosen"));
}

TEST_F(ToolSteps, WithANameNobodyIsAsked) {
    folder.write("a.qvd", LayoutTest::smallBoard());
    writeArchive("a.zip", {"job/steps/panel/profile", "job/steps/main/profile"});
    ToolOnTerminal tool({"info", folder.path("a.zip"), "--step", "panel"});
    EXPECT_EQ(tool.finish(), 0) << tool.output;
    EXPECT_THAT(tool.output, Not(HasSubstr("Which one")));
}

#endif

} // namespace
