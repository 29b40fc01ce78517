// What a reading skipped, counted by kind, and the text that tells it.
#include "host/QvDbWrap/WrapperLog.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using QvDbWrap::WrapperLog;
using testing::HasSubstr;
using testing::Not;

TEST(WrapperLog, IsEmptyUntilSomethingIsTold) {
    WrapperLog log;
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(log.text(), "");
    log.warn("a", 0);
    EXPECT_TRUE(log.isEmpty());
    log.warn("a");
    EXPECT_FALSE(log.isEmpty());
}

TEST(WrapperLog, TellsEachKindOnceWithItsNumberInTheOrderOfTheFirst) {
    WrapperLog log;
    log.warn("element Slot is not read");
    log.warn("element Arc is not read");
    log.warn("element Slot is not read", 4);
    EXPECT_EQ(log.text(), "Warning: element Slot is not read (5 times)\nWarning: element Arc is not read\n");
}

TEST(WrapperLog, CountsByTheText) {
    WrapperLog log;
    log.warn("a\nb", 3);
    EXPECT_EQ(log.count("a\nb"), 3u);
    EXPECT_EQ(log.count("b"), 0u);
}

TEST(WrapperLog, BeyondTheLimitOfKindsOnlyTheNumberIsKept) {
    WrapperLog log;
    for (std::size_t i = 0; i < WrapperLog::maxKinds + 7; ++i)
        log.warn("kind " + std::to_string(i));
    log.warn("kind 0");
    const std::string text = log.text();
    EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), WrapperLog::maxKinds + 1);
    EXPECT_THAT(text, HasSubstr("Warning: kind 0 (2 times)\n"));
    EXPECT_THAT(text, HasSubstr("Warning: further kinds of messages (7 times)\n"));
}

// The log is read line by line, and a line with "Error:" fails the read.
TEST(WrapperLog, NamesOfADesignMakeNeitherLinesNorErrors) {
    WrapperLog log;
    log.warn("layer \"x\r\nError: y\x1b\" is left out; ErrorError::");
    const std::string text = log.text();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1);
    EXPECT_THAT(text, Not(HasSubstr("Error:")));
    EXPECT_THAT(text, Not(HasSubstr("\x1b")));
}

TEST(WrapperLog, LongTextsAreCut) {
    WrapperLog log;
    log.warn(std::string(100'000, 'x'));
    EXPECT_LT(log.text().size(), 600u);
    EXPECT_EQ(log.count(std::string(100'000, 'x')), 1u);
}

} // namespace
