// Helpers of the tests of hostile files.
#pragma once

#include "GerberTestSupport.h"

#include <algorithm>
#include <ctime>

namespace TestSupport {

inline bool isFinite(const EDA::EDAOutline &outline) {
    return std::all_of(outline.beginPoints(), outline.endPoints(),
                       [](const EDA::EDAOutline::EDAPoint &point) {
                           return std::isfinite(point.x) && std::isfinite(point.y) &&
                                  std::isfinite(point.angle) && std::isfinite(point.centreX) &&
                                  std::isfinite(point.centreY);
                       }) &&
           std::all_of(outline.beginInternalOutlines(), outline.endInternalOutlines(), isFinite);
}

// Every number of a board is one.
inline void expectFinite(const EDA::EDABoard &board) {
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        for (auto trace = layer->beginTraces(); trace != layer->endTraces(); ++trace)
            EXPECT_TRUE(isFinite(trace->getOutline()));
    }
    for (auto via = board.beginVias(); via != board.endVias(); ++via) {
        EXPECT_TRUE(std::isfinite(via->getXCentre()) && std::isfinite(via->getYCentre()));
        EXPECT_TRUE(std::isfinite(via->getDiameter()));
        for (int i = 0; i < static_cast<int>(via->numInstances()); ++i) {
            EXPECT_TRUE(std::isfinite(via->getInstanceXCentre(i)) &&
                        std::isfinite(via->getInstanceYCentre(i)));
        }
    }
}

inline std::string repeated(const std::string &text, int times) {
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

inline std::string replaced(std::string text, const std::string &what, const std::string &with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

// The sanitizers slow everything down several times.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define EDA_TEST_IS_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define EDA_TEST_IS_SANITIZED
#endif
#if defined(EDA_TEST_IS_SANITIZED)
constexpr double mostSeconds = 60.0;
#else
constexpr double mostSeconds = 10.0;
#endif

// Bounds the time of a read: one that grows with the square of its text takes far longer. It is processor
// time, so a busy machine makes no failure.
class Clock {
public:
    ~Clock() { EXPECT_LT(static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC, mostSeconds); }

private:
    std::clock_t start_ = std::clock();
};

} // namespace TestSupport
