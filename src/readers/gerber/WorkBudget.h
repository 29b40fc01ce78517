// What may still be spent on the shapes of a file.
#pragma once

#include <cstddef>
#include <string>

namespace EDA {

// Counts work down, in steps that take about as long as taking up one vertex in a union. Once it is used up,
// nothing more is granted.
class WorkBudget {
public:
    explicit WorkBudget(std::size_t steps) : steps_(steps), left_(steps) {}

    bool spend(std::size_t steps) {
        isUsedUp_ = isUsedUp_ || steps > left_;
        if (!isUsedUp_) left_ -= steps;
        return !isUsedUp_;
    }
    bool isUsedUp() const { return isUsedUp_; }

    // What one of many shapes may use, so that a costly one leaves something to those after it.
    WorkBudget share() const { return WorkBudget(isUsedUp_ ? 0 : left_ / partsOfShare); }
    // Counts what a share has used; all of it, where it is used up.
    void take(const WorkBudget &share) { spend(share.isUsedUp_ ? share.steps_ : share.steps_ - share.left_); }

private:
    static constexpr std::size_t partsOfShare = 4;

    std::size_t steps_;
    std::size_t left_;
    bool isUsedUp_ = false;
};

} // namespace EDA
