// Progress objects for tests: one that notes all it is told, and one that cancels at a chosen poll.
#pragma once

#include "host/Tools/ToolProgress.h"

#include <limits>
#include <string>
#include <vector>

namespace TestSupport {

// Notes everything and cancels: the allowed number of polls answers false, all later ones true.
class CancelAfter : public Tools::ToolProgress {
public:
    explicit CancelAfter(int allowed) : allowed_(allowed) {}

    void setText(const std::string &text) override { texts.push_back(text); }
    bool isCancelled() override { return ++polls > allowed_; }
    void start() override { ++starts; }
    void finish() override { ++finishes; }
    void setIndeterminate(bool indeterminate) override { indeterminates.push_back(indeterminate); }

    std::vector<std::string> texts;
    std::vector<int> maxima; // as shown, after mapping
    std::vector<int> values; // as shown, after mapping
    std::vector<bool> indeterminates;
    int polls = 0; // how often isCancelled was asked
    int starts = 0;
    int finishes = 0;

protected:
    void showMaximum(int maximum) override { maxima.push_back(maximum); }
    void showValue(int value, const AdditionalProgress &) override { values.push_back(value); }

private:
    int allowed_;
};

// Notes everything and never cancels.
class RecordingProgress : public CancelAfter {
public:
    RecordingProgress() : CancelAfter(std::numeric_limits<int>::max()) {}
};

} // namespace TestSupport
