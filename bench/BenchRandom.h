// Random numbers for generated inputs.
#pragma once

#include <cstddef>
#include <random>

namespace EDABench {

// The same numbers with every standard library, whose own distributions differ.
class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    double unit() { return engine_() / 4294967296.0; }
    double uniform(double low, double high) { return low + (high - low) * unit(); }
    template <typename T, std::size_t n> const T &choice(const T (&values)[n]) {
        return values[below(static_cast<int>(n))];
    }

private:
    std::mt19937 engine_;
};

} // namespace EDABench
