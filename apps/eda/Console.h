// Standard output, standard error and Ctrl-C.
#pragma once

#include "host/Tools/ToolProgress.h"

#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

// Text of the tool itself, printed as it stands.
void print(const std::string &text);

// False when something printed did not reach its target, a full disk for instance.
bool flushOutput();

// One line each to standard error, behind "eda: ", "eda: notice: " and "eda: warning: ".
void printError(const std::string &message);
void printNotice(const std::string &message);
void printWarning(const std::string &message);

// The lines of a message text, printable, without empty ones; beyond a limit only their number.
std::vector<std::string> messageLines(const std::string &text);

// From now on Ctrl-C asks the running work to stop, instead of ending the process; a second one ends it.
void catchInterrupt();

// True once Ctrl-C was pressed.
bool isInterrupted();

// Ends the command as cancelled once Ctrl-C was pressed. Reading a file cannot be cancelled midway, so
// commands ask between their steps.
void stopIfInterrupted();

// A bar on standard error, where that is a terminal, which Ctrl-C cancels.
class ConsoleProgress : public Tools::ToolProgress {
public:
    ConsoleProgress();
    ~ConsoleProgress() override;

    void setText(const std::string &text) override;
    bool isCancelled() override;
    void finish() override;

    // True when the work was told to stop.
    bool wasCancelled() const { return wasCancelled_; }

protected:
    void showMaximum(int maximum) override { maximum_ = maximum; }
    void showValue(int value, const AdditionalProgress &more) override;

private:
    void draw();
    void clear();

    const bool isShown_;
    bool wasCancelled_ = false;
    int maximum_ = 0;
    int percent_ = 0;
    std::size_t drawn_ = 0; // characters on the line
    std::string text_;
};

} // namespace EDATool
