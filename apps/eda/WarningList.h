// Many warnings of one kind, of which a person wants to see a few.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace EDATool {

// Keeps the first ten warnings and counts the others.
class WarningList {
public:
    void add(std::string warning) {
        if (kept_.size() < limit)
            kept_.push_back(std::move(warning));
        else
            ++others_;
    }

    // Appends those that were kept, and a line with the number of the others: "... and 5 more " + kind.
    void moveTo(std::vector<std::string> &warnings, const std::string &kind) {
        for (std::string &warning : kept_)
            warnings.push_back(std::move(warning));
        if (others_ > 0) warnings.push_back("... and " + std::to_string(others_) + " more " + kind);
    }

private:
    static constexpr std::size_t limit = 10;
    std::vector<std::string> kept_;
    std::size_t others_ = 0;
};

} // namespace EDATool
