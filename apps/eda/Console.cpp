// Standard output, standard error, the progress bar and Ctrl-C.
#include "Console.h"

#include "Failure.h"
#include "host/Tools/Terminal.h"
#include "Printable.h"

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace EDATool {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterrupt(int signal) {
    interrupted = 1;
    std::signal(signal, SIG_DFL); // whoever asks twice means it
}

bool outputFailed = false;

void write(std::FILE *stream, const std::string &text) {
    if (std::fwrite(text.data(), 1, text.size(), stream) != text.size() && stream == stdout)
        outputFailed = true;
}

} // namespace

void print(const std::string &text) { write(stdout, text); }

bool flushOutput() {
    if (std::fflush(stdout) != 0) outputFailed = true;
    return !outputFailed;
}

void printError(const std::string &message) {
    std::fflush(stdout);
    write(stderr, "eda: " + message + "\n");
}

void printNotice(const std::string &message) { printError("notice: " + message); }

void printWarning(const std::string &message) { printError("warning: " + message); }

std::vector<std::string> messageLines(const std::string &text) {
    constexpr std::size_t maxLines = 1000;
    constexpr std::size_t maxLineLength = 2000;
    std::vector<std::string> lines;
    std::size_t left = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const bool isEmpty = end == start || (end == start + 1 && text[start] == '\r');
        if (!isEmpty && lines.size() < maxLines) {
            lines.push_back(shortened(std::string_view(text).substr(start, end - start), maxLineLength));
        } else if (!isEmpty) {
            ++left;
        }
        start = end + 1;
    }
    if (left > 0) lines.push_back("... and " + std::to_string(left) + " further messages");
    return lines;
}

void catchInterrupt() { std::signal(SIGINT, noteInterrupt); }

bool isInterrupted() { return interrupted != 0; }

void stopIfInterrupted() {
    if (isInterrupted()) throw Failure(Status::Cancelled, "cancelled");
}

ConsoleProgress::ConsoleProgress() : isShown_(Tools::Terminal::isErrorOutput()) {}

ConsoleProgress::~ConsoleProgress() { clear(); }

void ConsoleProgress::setText(const std::string &text) {
    if (text == text_) return;
    text_ = text;
    draw();
}

bool ConsoleProgress::isCancelled() {
    if (isInterrupted()) wasCancelled_ = true;
    return wasCancelled_;
}

void ConsoleProgress::finish() { clear(); }

void ConsoleProgress::showValue(int value, const AdditionalProgress &) {
    const int percent =
        maximum_ > 0 ? static_cast<int>(100.0 * std::clamp(value, 0, maximum_) / maximum_) : 0;
    if (percent == percent_ && drawn_ > 0) return;
    percent_ = percent;
    draw();
}

void ConsoleProgress::draw() {
    if (!isShown_) return;
    constexpr int barWidth = 30;
    constexpr std::size_t textWidth = 40;
    const auto filled = static_cast<std::size_t>(barWidth * percent_ / 100);
    const std::string percent = std::to_string(percent_);
    std::string line = "[" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "] " +
                       std::string(3 - percent.size(), ' ') + percent + "% " + shortened(text_, textWidth);
    const std::size_t length = countCharacters(line);
    if (length < drawn_) line += std::string(drawn_ - length, ' ');
    drawn_ = std::max(drawn_, length);
    write(stderr, "\r" + line);
    std::fflush(stderr);
}

void ConsoleProgress::clear() {
    if (drawn_ == 0) return;
    write(stderr, "\r" + std::string(drawn_, ' ') + "\r");
    std::fflush(stderr);
    drawn_ = 0;
}

} // namespace EDATool
