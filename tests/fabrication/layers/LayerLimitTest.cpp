// Limits of layer files, who stops the reading, and hostile bytes.
#include "fabrication/Limits.h"
#include "LayerScript.h"
#include "support/CancelAfter.h"

#include <gtest/gtest.h>

namespace {

using namespace LayerTests;

class Counter : public LayerSink {
public:
    std::size_t count = 0;
    void flash(Shape const &, Point const &, bool) override { ++count; }
    void stroke(Shape const &, Point const &, Segment const &, bool) override { ++count; }
    void region(Path const &, bool) override { ++count; }
};

const std::string head = "%FSLAX23Y23*%%MOMM*%%ADD10C,0.1*%D10*";

TEST(LayerLimits, RepeatsBeyondTheLimitAreDrawnOnceAndTold) {
    const Reading read = readBody("%SRX1000000Y1000000I1J1*%X0Y0D03*%SR*%");
    EXPECT_EQ(read.lines().size(), 1u);
    EXPECT_EQ(read.count(NoteKind::LeftOut, "steps and repeats beyond the limit"), 1u);
}

TEST(LayerLimits, RepeatCountsThatAreNoneAreOne) {
    EXPECT_EQ(readBody("%SRX0Y-5I1J1*%X0Y0D03*%SR*%").lines().size(), 1u);
}

TEST(LayerLimits, ReadingStopsAtTheLimitOfObjects) {
    Counter sink;
    Notes notes;
    const LayerFacts facts =
        readLayerFile(head + "%SRX1000Y1000I1J1*%X0Y0D03*D03*D03*D03*D03*D03*D03*D03*D03*D03*D03*%SR*%M02*",
                      {}, sink, notes);
    EXPECT_EQ(sink.count, Limits::objects);
    EXPECT_EQ(facts.numFlashes, Limits::objects);
    ASSERT_EQ(notes.list().size(), 1u);
    EXPECT_EQ(notes.list()[0].what, "objects beyond the limit of one layer");
    EXPECT_EQ(notes.list()[0].kind, NoteKind::LeftOut);
}

TEST(LayerLimits, ReadingStopsAtTheLimitOfPoints) {
    std::string body = "%SRX1000Y1000I1J1*%G36*X0Y0D02*";
    for (int i = 0; i < 100; ++i)
        body += "X" + std::to_string(i) + "Y" + std::to_string(i * i % 37) + "D01*";
    Counter sink;
    Notes notes;
    readLayerFile(head + body + "G37*%SR*%M02*", {}, sink, notes);
    EXPECT_EQ(sink.count, Limits::points / 100);
    ASSERT_FALSE(notes.list().empty());
    EXPECT_EQ(notes.list()[0].what, "points beyond the limit of one layer");
}

// Forty blocks, each with two of the one before it.
TEST(LayerLimits, BlocksThatDoubleStopAtTheLimit) {
    std::string body = "%ABD10*%%ADD11C,0.1*%D11*X0Y0D03*%AB*%";
    for (int code = 12; code < 52; ++code) {
        const std::string inner = code == 12 ? "10" : std::to_string(code - 1);
        body += "%ABD" + std::to_string(code) + "*%D" + inner + "*X0Y0D03*X1D03*%AB*%";
    }
    Counter sink;
    Notes notes;
    readLayerFile(head + body + "D51*X0Y0D03*M02*", {}, sink, notes);
    EXPECT_LE(sink.count, Limits::objects);
    EXPECT_TRUE(notes.has(NoteKind::LeftOut));
}

TEST(LayerLimits, BlocksWithinEachOtherHaveALimit) {
    std::string body = "%ABD20*%X0Y0D03*%AB*%";
    for (int code = 21; code < 200; ++code)
        body += "%ABD" + std::to_string(code) + "*%D" + std::to_string(code - 1) + "*X0Y0D03*%AB*%";
    const Reading read = readBody(body + "D199*X0Y0D03*");
    EXPECT_EQ(read.count(NoteKind::LeftOut, "blocks beyond the limit of depth"), 1u);
    EXPECT_TRUE(read.lines().empty());
}

TEST(LayerLimits, OpenBlocksHaveALimit) {
    std::string body;
    for (int code = 20; code < 200; ++code)
        body += "%ABD" + std::to_string(code) + "*%";
    EXPECT_GT(readBody(body).count(NoteKind::LeftOut, "blocks beyond the limit of depth"), 0u);
}

TEST(LayerLimits, EmptyRepeatsOfEmptyRepeatsTakeNoTime) {
    std::string body;
    for (int code = 20; code < 60; ++code)
        body += "%ABD" + std::to_string(code) + "*%%SRX1000Y1000I1J1*%D" + std::to_string(code - 1) +
                "*X0Y0D03*%SR*%%AB*%";
    EXPECT_TRUE(readBody(body + "D59*X0Y0D03*").lines().empty());
}

TEST(LayerLimits, AHugeStatementIsSkippedAndTold) {
    Counter sink;
    Notes notes;
    readLayerFile(head + "X" + std::string(Limits::statement, '0') + "D03*X0Y0D03*M02*", {}, sink, notes);
    EXPECT_EQ(sink.count, 1u);
    ASSERT_EQ(notes.list().size(), 1u);
    EXPECT_EQ(notes.list()[0].what, "statements beyond the limit of length");
}

TEST(LayerLimits, AFullSinkStopsTheReading) {
    Script script;
    script.most = 2;
    Notes notes;
    readLayerFile(head + "X0Y0D03*D03*D03*D03*M02*", {}, script, notes);
    EXPECT_EQ(script.lines.size(), 2u);
}

TEST(LayerLimits, TheProgressMayCancelAndGoesUpToTheEnd) {
    std::string text = head;
    for (int i = 0; i < 100'000; ++i)
        text += "X0Y0D03*";
    text += "M02*";
    TestSupport::CancelAfter cancel(3);
    Counter sink;
    Notes notes;
    readLayerFile(text, {}, sink, notes, &cancel);
    EXPECT_LT(sink.count, 50'000u);
    TestSupport::RecordingProgress progress;
    readLayerFile(text, {}, sink, notes, &progress);
    EXPECT_EQ(progress.maxima, std::vector<int>{100});
    EXPECT_GT(progress.values.size(), 5u);
    EXPECT_TRUE(std::is_sorted(progress.values.begin(), progress.values.end()));
}

TEST(LayerLimits, TheProgressMayCancelBetweenCopies) {
    TestSupport::CancelAfter cancel(3);
    Counter sink;
    Notes notes;
    readLayerFile(head + "%SRX1000Y1000I1J1*%X0Y0D03*%SR*%M02*", {}, sink, notes, &cancel);
    EXPECT_GT(sink.count, 0u);
    EXPECT_LT(sink.count, 100'000u);
}

TEST(LayerLimits, TransformsWithinTransformsStayFinite) {
    std::string body = "%ABD20*%X1Y0D03*%AB*%";
    for (int code = 21; code < 80; ++code)
        body +=
            "%ABD" + std::to_string(code) + "*%%LS1000000*%D" + std::to_string(code - 1) + "*X0Y0D03*%AB*%";
    const Reading read = readBody(body + "D79*X0Y0D03*");
    EXPECT_TRUE(read.lines().empty());
    EXPECT_EQ(read.count(NoteKind::LeftOut, "apertures scaled beyond all measure"), 1u);
}

TEST(LayerLimits, AnyBytesAreTaken) {
    std::string all;
    for (int i = 0; i < 1024; ++i)
        all += static_cast<char>(i * 7 % 256);
    for (const std::string &text :
         {std::string(), std::string("*"), std::string("%"), std::string(1, '\0'), all, std::string("%AM"),
          std::string("%ADD10"), std::string("G"), std::string("%SR"), std::string("\xFF\xFE"),
          std::string("\xFF\xFEX"), std::string("%AMA*1,1,1*"), std::string(100'000, '%'),
          std::string(100'000, 'D'), "%AMA*" + std::string(100'000, '(') + "*%%ADD10A*%D10*X0Y0D03*"})
        readAsItIs(text);
    const std::string valid =
        head + "%SRX2I1*%X0Y0D03*G36*X1Y1D01*X2Y0D01*G37*%SR*%%ABD12*%X0Y0D03*%AB*%M02*";
    for (std::size_t size = 0; size < valid.size(); ++size)
        readAsItIs(valid.substr(0, size));
    SUCCEED();
}

TEST(LayerLimits, ManyDifferentNotesAreOneListWithALimit) {
    std::string body;
    for (int code = 1000; code < 4000; ++code)
        body += "D" + std::to_string(code) + "*";
    const Reading read = readBody(body);
    EXPECT_LE(read.notes.list().size(), Notes::maxNotes);
    EXPECT_EQ(read.count(NoteKind::LeftOut, "selections of other apertures"), 2500u);
}

} // namespace
