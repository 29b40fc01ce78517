// Ctrl-C, and the progress bar on a terminal.
#include "SmallDesign.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>

#ifdef __linux__

#include <csignal>
#include <cstring>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace TestSupport;
using testing::HasSubstr;

// The tool with a terminal as its standard error.
class ToolOnTerminal {
public:
    explicit ToolOnTerminal(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), EDA_TOOL);
        std::vector<char *> texts;
        for (std::string &argument : arguments)
            texts.push_back(argument.data());
        texts.push_back(nullptr);
        process_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (process_ == 0) {
            setenv("EDA_CONFIG_DIR", "/nonexistent", 1);
            execv(texts[0], texts.data());
            _exit(127);
        }
    }
    ToolOnTerminal(const ToolOnTerminal &) = delete;
    ToolOnTerminal &operator=(const ToolOnTerminal &) = delete;
    ~ToolOnTerminal() {
        close(terminal_);
        if (!hasEnded_) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
    }

    // Reads what it writes until the text has come; false when it ends before.
    bool waitFor(const std::string &text) {
        while (output.find(text) == std::string::npos) {
            if (!readMore()) return false;
        }
        return true;
    }

    void interrupt() const { kill(process_, SIGINT); }

    // The exit status; -1 when a signal ended it.
    int finish() {
        while (readMore()) {
        }
        int state = 0;
        waitpid(process_, &state, 0);
        hasEnded_ = true;
        return WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    }

    std::string output; // of both streams

private:
    bool readMore() {
        char bytes[4096];
        const ssize_t size = read(terminal_, bytes, sizeof bytes);
        if (size <= 0) return false;
        output.append(bytes, static_cast<std::size_t>(size));
        return true;
    }

    pid_t process_ = -1;
    int terminal_ = -1;
    bool hasEnded_ = false;
};

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
