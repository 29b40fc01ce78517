// The count of key changes, shared by all look-up tables.
#include "model/KeyWatch.h"

#include <atomic>

namespace EDA {

namespace {

// Atomic since boards on different threads share it.
std::atomic<std::uint64_t> changeCount{0};

} // namespace

KeyWatch &KeyWatch::operator=(KeyWatch const &) noexcept {
    keyChanged();
    return *this;
}

KeyWatch &KeyWatch::operator=(KeyWatch &&other) noexcept {
    keyChanged();
    watched_ = watched_ || other.watched_;
    return *this;
}

std::uint64_t KeyWatch::changes() { return changeCount.load(std::memory_order_relaxed); }

void KeyWatch::countChange() { changeCount.fetch_add(1, std::memory_order_relaxed); }

} // namespace EDA
