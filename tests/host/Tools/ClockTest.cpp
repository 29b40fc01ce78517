// The clock, its source, and dates of universal time.
#include "host/Tools/Clock.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace {

using Tools::Clock;
using Tools::DateTime;

std::string text(const DateTime &date) {
    std::string result;
    for (const int part : {date.year, date.month, date.day, date.hour, date.minute, date.second})
        result += (result.empty() ? "" : " ") + std::to_string(part);
    return result;
}

std::string utcText(std::int64_t seconds) {
    const auto date = Clock::utc(seconds);
    return date ? text(*date) : "none";
}

class ClockSource : public testing::Test {
protected:
    ~ClockSource() override { Clock::setSource(nullptr); }
};

TEST_F(ClockSource, GivesTheMomentThatItSays) {
    Clock::setSource([] { return DateTime{2031, 2, 3, 4, 5, 6}; });
    EXPECT_EQ(text(Clock::now()), "2031 2 3 4 5 6");
}

TEST_F(ClockSource, AnEmptyOneBringsTheSystemsClockBack) {
    Clock::setSource([] { return DateTime{1999, 1, 1, 0, 0, 0}; });
    Clock::setSource(nullptr);
    EXPECT_GE(Clock::now().year, 2024);
}

TEST(Clock, NowIsTheLocalTime) {
    // A second may pass between the two; a third look decides then.
    for (int tries = 0; tries < 3; ++tries) {
        const std::time_t before = std::time(nullptr);
        const DateTime now = Clock::now();
        if (std::time(nullptr) != before) continue;
        const std::tm &local = *std::localtime(&before);
        EXPECT_EQ(text(now), text({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                                   local.tm_min, local.tm_sec}));
        return;
    }
}

TEST(ClockUtc, OfKnownMoments) {
    EXPECT_EQ(utcText(0), "1970 1 1 0 0 0");
    EXPECT_EQ(utcText(951782399), "2000 2 28 23 59 59");
    EXPECT_EQ(utcText(951782400), "2000 2 29 0 0 0");
    EXPECT_EQ(utcText(951868800), "2000 3 1 0 0 0");
    EXPECT_EQ(utcText(1234567890), "2009 2 13 23 31 30");
    EXPECT_EQ(utcText(4107542399), "2100 2 28 23 59 59");
    EXPECT_EQ(utcText(4107542400), "2100 3 1 0 0 0");
    EXPECT_EQ(utcText(253402300799), "9999 12 31 23 59 59");
}

TEST(ClockUtc, NothingOutsideItsYears) {
    for (const std::int64_t seconds : {std::int64_t{-1}, std::int64_t{253402300800}, INT64_MIN, INT64_MAX})
        EXPECT_EQ(utcText(seconds), "none") << seconds;
}

TEST(ClockUtc, EachDayFollowsTheOneBefore) {
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    DateTime expected;
    for (std::int64_t seconds = 0; expected.year < 2410; seconds += 86400) {
        ASSERT_EQ(utcText(seconds), text(expected));
        const bool isLeap = expected.year % 4 == 0 && (expected.year % 100 != 0 || expected.year % 400 == 0);
        const int last = days[expected.month - 1] + (expected.month == 2 && isLeap ? 1 : 0);
        if (++expected.day <= last) continue;
        expected.day = 1;
        if (++expected.month <= 12) continue;
        expected.month = 1;
        ++expected.year;
    }
}

} // namespace
