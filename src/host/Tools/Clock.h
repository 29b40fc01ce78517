// The date and time of day.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace Tools {

// A moment as a calendar and a wall clock show it.
struct DateTime {
    int year = 1970;
    int month = 1; // 1 to 12
    int day = 1;   // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// The clock that files are stamped from. A program that must give the same bytes on every run, such as a
// test, puts a source of its own in place of the system's clock. Set the source before other threads ask.
class Clock {
public:
    using Source = std::function<DateTime()>;

    // The moment in the local time zone, or what the source that was set gives.
    static DateTime now();

    // An empty source brings the system's clock back.
    static void setSource(Source source);

    // Universal time of a number of seconds after the start of 1970. Nothing for moments outside the years
    // 1970 to 9999.
    static std::optional<DateTime> utc(std::int64_t seconds);
};

} // namespace Tools
