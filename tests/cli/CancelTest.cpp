// Ctrl-C, and the progress bar on a terminal.
#include "SmallDesign.h"
#include "support/RunTool.h"
#include "ToolOnTerminal.h"

#include <gmock/gmock.h>

#ifdef __linux__

#include <csignal>

namespace {

using namespace TestSupport;
using testing::HasSubstr;

constexpr int manyKeepouts = 60'000;

TEST(ToolCancel, DuringTheImportKeepsWhatWasDone) {
    const TempFolder folder;
    const std::string board = folder.write("big.emn", bigBoard(manyKeepouts));
    ToolOnTerminal tool({"import", board, "-o", folder.path("model.json")});
    ASSERT_TRUE(tool.waitFor("Importing Keepouts")) << tool.output;
    tool.interrupt();
    EXPECT_EQ(tool.finish(), 3) << tool.output;
    EXPECT_THAT(tool.output, HasSubstr("cancelled"));
    EXPECT_THAT(tool.output, HasSubstr("holds what was imported until then"));
    const ToolResult info = runTool({"info", folder.path("model.json")});
    EXPECT_EQ(info.status, 0) << info;
    EXPECT_THAT(info.out, HasSubstr("PCB"));
}

TEST(ToolCancel, DuringTheImportLeavesAnExistingOutput) {
    const TempFolder folder;
    const std::string board = folder.write("big.emn", bigBoard(manyKeepouts));
    folder.write("model.json", "old");
    ToolOnTerminal tool({"import", board, "-o", folder.path("model.json")});
    ASSERT_TRUE(tool.waitFor("Importing Keepouts")) << tool.output;
    tool.interrupt();
    EXPECT_EQ(tool.finish(), 3) << tool.output;
    EXPECT_THAT(tool.output, HasSubstr("was left as it was"));
    EXPECT_EQ(folder.read("model.json"), "old");
    EXPECT_EQ(folder.numEntries(), 2u);
}

TEST(ToolCancel, UncancelledImportShowsABarAndRemovesIt) {
    const TempFolder folder;
    const std::string board = folder.write("big.emn", bigBoard(200));
    ToolOnTerminal tool({"import", board, "-o", folder.path("model.json")});
    EXPECT_EQ(tool.finish(), 0) << tool.output;
    EXPECT_THAT(tool.output, HasSubstr(" 99% Importing"));
    EXPECT_THAT(tool.output, HasSubstr("\r[####"));
}

TEST(ToolCancel, NoBarWhereStandardErrorIsNoTerminal) {
    const TempFolder folder;
    const ToolResult result = runTool({"import", writeSmallDesign(folder), "-o", folder.path("model.json")});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
}

// True once the process catches SIGINT, by what the system tells of it.
bool catchesInterrupt(qint64 process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 7, "SigCgt:") == 0) return (std::stoull(line.substr(7), nullptr, 16) & 2u) != 0;
    }
    return false;
}

TEST(ToolCancel, DuringTheReadLeavesNoOutput) {
    const TempFolder folder;
    const std::string board = folder.write("big.emn", bigBoard(manyKeepouts));
    QProcess process;
    process.start(QString::fromUtf8(EDA_TOOL), {"import", QString::fromStdString(board), "-o",
                                                QString::fromStdString(folder.path("model.json"))});
    ASSERT_TRUE(process.waitForStarted());
    while (process.state() == QProcess::Running && !catchesInterrupt(process.processId()))
        process.waitForFinished(1);
    kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(100'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 3) << process.readAllStandardError().toStdString();
    EXPECT_EQ(folder.read("model.json"), "<missing>");
    EXPECT_EQ(folder.numEntries(), 1u);
}

} // namespace

#endif
