// The date and time of day.
#include "host/Tools/Clock.h"

#include <ctime>
#include <utility>

namespace Tools {

namespace {

constexpr std::int64_t secondsOfDay = 86400;
constexpr std::int64_t startOfYear10000 = 253402300800;

Clock::Source &source() {
    static Clock::Source instance;
    return instance;
}

DateTime localTime() {
    const std::time_t moment = std::time(nullptr);
    std::tm local = {};
#ifdef _WIN32
    const bool isKnown = localtime_s(&local, &moment) == 0;
#else
    const bool isKnown = localtime_r(&moment, &local) != nullptr;
#endif
    if (!isKnown) return {};
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

// Years are counted from March, so that the leap day is a year's last. 1 March 2000 starts a cycle of 400
// years, 11017 days after the start of 1970.
void setDate(std::int64_t daysSince1970, DateTime &date) {
    constexpr std::int64_t daysOfCycle = 146097, daysOfCentury = 36524, daysOf4Years = 1461, daysOfYear = 365;
    const std::int64_t days = daysSince1970 - 11017 + daysOfCycle; // from 1 March 1600
    const std::int64_t cycle = days / daysOfCycle;
    const std::int64_t ofCycle = days % daysOfCycle;
    const std::int64_t leapsPassed =
        ofCycle / (daysOf4Years - 1) - ofCycle / daysOfCentury + ofCycle / (daysOfCycle - 1);
    const std::int64_t year = (ofCycle - leapsPassed) / daysOfYear;
    const std::int64_t ofYear = ofCycle - (daysOfYear * year + year / 4 - year / 100);
    const std::int64_t month = (5 * ofYear + 2) / 153; // 0 is March; five months have 153 days
    date.day = static_cast<int>(ofYear - (153 * month + 2) / 5 + 1);
    date.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    date.year = static_cast<int>(1600 + 400 * cycle + year + (date.month <= 2 ? 1 : 0));
}

} // namespace

DateTime Clock::now() { return source() ? source()() : localTime(); }

void Clock::setSource(Source newSource) { source() = std::move(newSource); }

std::optional<DateTime> Clock::utc(std::int64_t seconds) {
    if (seconds < 0 || seconds >= startOfYear10000) return std::nullopt;
    DateTime result;
    setDate(seconds / secondsOfDay, result);
    const int ofDay = static_cast<int>(seconds % secondsOfDay);
    result.hour = ofDay / 3600;
    result.minute = ofDay / 60 % 60;
    result.second = ofDay % 60;
    return result;
}

} // namespace Tools
