// The stack of sub-ranges and its mapping.
#include "host/Tools/ToolProgress.h"

#include "text/Text.h"

#include <algorithm>
#include <cmath>

namespace Tools {

namespace {

int added(int a, int b) { return EDA::toInt(static_cast<double>(a) + b); }

int mapped(int value, int low, int high, int maximum) {
    const double fraction = maximum == 0 ? 1.0 : static_cast<double>(value) / maximum;
    const double width = static_cast<double>(high) - low;
    const int result = EDA::toInt(low + std::trunc(width * fraction));
    return std::clamp(result, std::min(low, high), std::max(low, high));
}

} // namespace

ToolProgress::~ToolProgress() = default;

void ToolProgress::setText(const std::string &) {}

bool ToolProgress::isCancelled() { return false; }

void ToolProgress::start() {}

void ToolProgress::finish() {}

void ToolProgress::setIndeterminate(bool) {}

void ToolProgress::showMaximum(int) {}

void ToolProgress::showValue(int, const AdditionalProgress &) {}

void ToolProgress::setMaximum(int maximum) {
    if (ranges_.empty())
        showMaximum(maximum);
    else
        ranges_.back().maximum = maximum;
}

void ToolProgress::setValue(int value, const AdditionalProgress &more) {
    (ranges_.empty() ? value_ : ranges_.back().value) = value;
    for (auto range = ranges_.rbegin(); range != ranges_.rend(); ++range)
        value = mapped(value, range->low, range->high, range->maximum);
    showValue(value, more);
}

void ToolProgress::addSteps(int steps, const AdditionalProgress &more) {
    setValue(added(ranges_.empty() ? value_ : ranges_.back().value, steps), more);
}

void ToolProgress::pushRange(int low, int high, int maximum) { ranges_.push_back({low, high, maximum, 0}); }

void ToolProgress::popRange() {
    if (!ranges_.empty()) ranges_.pop_back();
}

ToolProgressRange::ToolProgressRange(ToolProgress *progress, int low, int high, int maximum)
    : progress_(progress) {
    if (progress_ != nullptr) progress_->pushRange(low, high, maximum);
}

ToolProgressRange::~ToolProgressRange() {
    if (progress_ != nullptr) progress_->popRange();
}

} // namespace Tools
