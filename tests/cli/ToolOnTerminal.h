// Runs the built command line tool on a terminal of its own.
#pragma once

#ifdef __linux__

#include <csignal>
#include <cstdlib>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace TestSupport {

// The tool with a terminal as its input and both outputs.
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

    // Types a text; false when the terminal doesn't take it.
    bool type(const std::string &text) const {
        return write(terminal_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
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

    std::string output; // of both streams, with what is typed

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

} // namespace TestSupport

#endif
