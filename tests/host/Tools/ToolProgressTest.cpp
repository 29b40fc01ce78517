// Mapping of progress through sub-ranges.
#include "host/Tools/ToolProgress.h"

#include "support/CancelAfter.h"

#include <gmock/gmock.h>

#include <climits>

using testing::ElementsAre;
using TestSupport::CancelAfter;
using TestSupport::RecordingProgress;
using Tools::ToolProgressRange;

TEST(ToolProgress, DefaultObjectDoesNothingAndIsNeverCancelled) {
    Tools::ToolProgress progress;
    progress.start();
    progress.setText("text");
    progress.setIndeterminate(true);
    progress.setMaximum(3);
    progress.setValue(1);
    progress.finish();
    EXPECT_FALSE(progress.isCancelled());
}

TEST(ToolProgress, WithoutARangeValuesAreShownAsTheyAre) {
    RecordingProgress progress;
    progress.setMaximum(10);
    progress.setValue(4);
    progress.setValue(400);
    EXPECT_THAT(progress.maxima, ElementsAre(10));
    EXPECT_THAT(progress.values, ElementsAre(4, 400));
}

TEST(ToolProgress, ValueIsMappedIntoTheRange) {
    RecordingProgress progress;
    const ToolProgressRange range(&progress, 20, 60);
    progress.setMaximum(8);
    for (const int value : {0, 1, 4, 8})
        progress.setValue(value);
    EXPECT_THAT(progress.values, ElementsAre(20, 25, 40, 60));
    EXPECT_TRUE(progress.maxima.empty()) << "the maximum is that of the range, not of the bar";
}

TEST(ToolProgress, FractionIsCutNotRounded) {
    RecordingProgress progress;
    const ToolProgressRange range(&progress, 0, 10, 3);
    progress.setValue(2);
    EXPECT_THAT(progress.values, ElementsAre(6));
}

TEST(ToolProgress, MaximumOfZeroIsAllDone) {
    RecordingProgress progress;
    const ToolProgressRange range(&progress, 10, 30, 0);
    progress.setValue(0);
    EXPECT_THAT(progress.values, ElementsAre(30));
}

TEST(ToolProgress, ValuesAreClampedToTheRange) {
    RecordingProgress progress;
    const ToolProgressRange range(&progress, 10, 30, 5);
    progress.setValue(50);
    progress.setValue(-50);
    EXPECT_THAT(progress.values, ElementsAre(30, 10));
}

TEST(ToolProgress, RangeThatRunsDownwardsIsClampedToo) {
    RecordingProgress progress;
    const ToolProgressRange range(&progress, 30, 10, 4);
    for (const int value : {0, 1, 9})
        progress.setValue(value);
    EXPECT_THAT(progress.values, ElementsAre(30, 25, 10));
}

TEST(ToolProgress, RangesMapFromTheTopToTheBottom) {
    RecordingProgress progress;
    const ToolProgressRange outer(&progress, 100, 200, 50);
    const ToolProgressRange inner(&progress, 10, 30, 4);
    progress.setValue(2); // 20 of 50 in the outer one
    EXPECT_THAT(progress.values, ElementsAre(140));
}

TEST(ToolProgress, MaximumSetsTheTopRangeAlone) {
    RecordingProgress progress;
    progress.pushRange(0, 100, 10);
    progress.pushRange(0, 10, 10);
    progress.setMaximum(2);
    progress.setValue(1);
    progress.popRange();
    progress.setValue(5);
    EXPECT_THAT(progress.values, ElementsAre(50, 50));
}

TEST(ToolProgress, StepsAddToTheLastValueOfTheirLevel) {
    RecordingProgress progress;
    progress.setMaximum(100);
    progress.setValue(10);
    {
        const ToolProgressRange range(&progress, 10, 20, 5);
        progress.addSteps(1);
        progress.addSteps(2);
    }
    progress.addSteps(3);
    EXPECT_THAT(progress.values, ElementsAre(10, 12, 16, 13));
}

TEST(ToolProgress, PopWithoutARangeDoesNothing) {
    RecordingProgress progress;
    progress.popRange();
    progress.setValue(1);
    EXPECT_EQ(progress.numRanges(), 0);
    EXPECT_THAT(progress.values, ElementsAre(1));
}

TEST(ToolProgress, ExtremeNumbersStayInTheRange) {
    RecordingProgress progress;
    const ToolProgressRange range(&progress, INT_MIN, INT_MAX, 1);
    progress.setValue(INT_MAX);
    progress.addSteps(INT_MAX);
    progress.setValue(INT_MIN);
    EXPECT_THAT(progress.values, ElementsAre(INT_MAX, INT_MAX, INT_MIN));
}

TEST(ToolProgress, RangeOfNoProgressDoesNothing) { const ToolProgressRange range(nullptr, 0, 1); }

TEST(ToolProgress, MoreToTellReachesTheHost) {
    struct More : Tools::Progress::AdditionalProgress {};
    struct Host : Tools::ToolProgress {
        const AdditionalProgress *seen = nullptr;
        void showValue(int, const AdditionalProgress &more) override { seen = &more; }
    } host;
    const More more;
    host.setValue(1, more);
    EXPECT_EQ(host.seen, &more);
}

TEST(CancelAfter, AnswersTrueFromTheNextPollOn) {
    CancelAfter progress(2);
    EXPECT_FALSE(progress.isCancelled());
    EXPECT_FALSE(progress.isCancelled());
    EXPECT_TRUE(progress.isCancelled());
    EXPECT_TRUE(progress.isCancelled());
    EXPECT_EQ(progress.polls, 4);
}
