// What the reading of a design skipped or amended, counted by kind, and the log file that tells it.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace QvDbWrap {

class WrapperLog {
public:
    // Different texts that are kept; what comes beyond them is counted together.
    static constexpr std::size_t maxKinds = 1000;

    // Counts one more of this kind: "element Slot is not read". The same text counts as the same kind.
    void warn(const std::string &kind, std::size_t count = 1);

    bool isEmpty() const { return kinds_.empty(); }

    // How often this kind was told.
    std::size_t count(const std::string &kind) const;

    // The lines "Warning: KIND" or, for more than one, "Warning: KIND (N times)", in the order of first
    // telling.
    std::string text() const;

private:
    std::vector<std::string> kinds_;
    std::vector<std::size_t> counts_;
    std::unordered_map<std::string, std::size_t> indices_;
    std::size_t numBeyond_ = 0;
};

} // namespace QvDbWrap
