// What may still be spent on the shapes of a file.
#pragma once

#include <cstddef>
#include <string>

namespace EDA {

// Counts work down, in steps that take about as long as taking up one vertex in a union. Once it is used up,
// nothing more is granted.
class WorkBudget {
public:
    explicit WorkBudget(std::size_t steps) : steps_(steps) {}

    bool spend(std::size_t steps) {
        isUsedUp_ = isUsedUp_ || steps > steps_;
        if (!isUsedUp_) steps_ -= steps;
        return !isUsedUp_;
    }
    bool isUsedUp() const { return isUsedUp_; }

private:
    std::size_t steps_;
    bool isUsedUp_ = false;
};

} // namespace EDA
