// Counting what a reading skipped, by kind, and the text of the log.
#include "host/QvDbWrap/WrapperLog.h"

namespace QvDbWrap {

namespace {

constexpr std::size_t maxLength = 500; // bytes of a kind

std::string timesText(std::size_t count) {
    return count > 1 ? " (" + std::to_string(count) + " times)" : std::string();
}

// Who reads the log takes it line by line, and a line with "Error:" for a failure of the read. Names out of a
// design must be able to cause neither.
std::string asOneLine(std::string text) {
    if (text.size() > maxLength) {
        text.resize(maxLength);
        text += "...";
    }
    for (char &c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
    }
    static const std::string error = "Error:";
    for (std::size_t at = text.find(error); at != std::string::npos; at = text.find(error, at))
        text.replace(at, error.size(), "Error,");
    return text;
}

} // namespace

void WrapperLog::warn(const std::string &kind, std::size_t count) {
    if (count == 0) return;
    const std::string line = asOneLine(kind);
    const auto found = indices_.find(line);
    if (found != indices_.end()) {
        counts_[found->second] += count;
    } else if (kinds_.size() == maxKinds) {
        numBeyond_ += count;
    } else {
        indices_.emplace(line, kinds_.size());
        kinds_.push_back(line);
        counts_.push_back(count);
    }
}

std::size_t WrapperLog::count(const std::string &kind) const {
    const auto found = indices_.find(asOneLine(kind));
    return found == indices_.end() ? 0 : counts_[found->second];
}

std::string WrapperLog::text() const {
    std::string text;
    for (std::size_t index = 0; index < kinds_.size(); ++index)
        text += "Warning: " + kinds_[index] + timesText(counts_[index]) + "\n";
    if (numBeyond_ > 0) text += "Warning: further kinds of messages" + timesText(numBeyond_) + "\n";
    return text;
}

} // namespace QvDbWrap
