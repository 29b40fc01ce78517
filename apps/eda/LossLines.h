// Lines for the user about what was lost, a line a kind.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace EDATool {

struct LossText {
    const char *one;  // behind "1 "
    const char *many; // behind a greater number
};

// A line for each kind whose number is not 0, in the order of the kinds: "12 wirebonds are left out".
template <std::size_t kinds>
std::vector<std::string> lossLines(const std::array<LossText, kinds> &texts,
                                   const std::array<std::size_t, kinds> &numbers) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < kinds; ++i) {
        if (numbers[i] == 0) continue;
        lines.push_back(std::to_string(numbers[i]) + ' ' + (numbers[i] == 1 ? texts[i].one : texts[i].many));
    }
    return lines;
}

} // namespace EDATool
