// Sections and the recorder that collects them.
#include "host/Profiling/ProfileSectionProxy.h"
#include "host/Profiling/TraceRecorder.h"

#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using Profiling::ProfileSectionProxy;
using Profiling::TraceRecorder;
using testing::ElementsAre;

namespace {

std::vector<std::string> names(const TraceRecorder &recorder) {
    std::vector<std::string> result;
    for (const auto &section : recorder.sections())
        result.push_back(section.name);
    return result;
}

void section(const std::string &name, bool enabled = true) {
    const ProfileSectionProxy proxy("File", 12, "function", name, enabled, "");
}

QJsonArray written(const TraceRecorder &recorder) {
    std::ostringstream stream;
    EXPECT_TRUE(recorder.writeJson(stream));
    const QByteArray bytes = QByteArray::fromStdString(stream.str());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << stream.str();
    return document.object()["traceEvents"].toArray();
}

} // namespace

TEST(Profiling, SectionsOutsideARunAreNotKept) {
    TraceRecorder recorder;
    section("before");
    recorder.start();
    section("in");
    recorder.stop();
    section("after");
    EXPECT_THAT(names(recorder), ElementsAre("in"));
}

TEST(Profiling, SectionKeepsWhatItWasGiven) {
    TraceRecorder recorder;
    recorder.start();
    {
        const ProfileSectionProxy proxy("IDFReader", 12, "EDA::IDFReader::readFile", "ReadIDFFile", true,
                                        "io");
    }
    ASSERT_EQ(recorder.sections().size(), 1u);
    const auto &kept = recorder.sections().front();
    EXPECT_EQ(kept.name, "ReadIDFFile");
    EXPECT_EQ(kept.file, "IDFReader");
    EXPECT_EQ(kept.function, "EDA::IDFReader::readFile");
    EXPECT_EQ(kept.line, 12);
    EXPECT_EQ(kept.group, "io");
    EXPECT_GE(kept.start, 0);
    EXPECT_GE(kept.duration, 0);
}

TEST(Profiling, InnerSectionLiesWithinTheOuterOne) {
    TraceRecorder recorder;
    recorder.start();
    {
        const ProfileSectionProxy outer("", 0, "", "outer", true, "");
        section("inner");
    }
    ASSERT_THAT(names(recorder), ElementsAre("inner", "outer"));
    const auto &inner = recorder.sections()[0];
    const auto &outer = recorder.sections()[1];
    EXPECT_LE(outer.start, inner.start);
    EXPECT_GE(outer.start + outer.duration, inner.start + inner.duration);
}

TEST(Profiling, EndSectionClosesOnce) {
    TraceRecorder recorder;
    recorder.start();
    {
        ProfileSectionProxy proxy("", 0, "", "once", true, "");
        proxy.endSection();
        proxy.endSection();
        EXPECT_EQ(recorder.sections().size(), 1u);
    }
    EXPECT_EQ(recorder.sections().size(), 1u);
}

TEST(Profiling, SectionClosesWhenAnExceptionPasses) {
    TraceRecorder recorder;
    recorder.start();
    try {
        const ProfileSectionProxy proxy("", 0, "", "thrown", true, "");
        throw std::runtime_error("x");
    } catch (const std::runtime_error &) {
    }
    EXPECT_THAT(names(recorder), ElementsAre("thrown"));
}

TEST(Profiling, DisabledSectionIsNotKept) {
    TraceRecorder recorder;
    recorder.start();
    section("off", false);
    EXPECT_TRUE(recorder.sections().empty());
}

TEST(Profiling, NullTextsAreEmpty) {
    TraceRecorder recorder;
    recorder.start();
    { const ProfileSectionProxy proxy(nullptr, 0, nullptr, "n", true, ""); }
    EXPECT_EQ(recorder.sections().front().file, "");
}

TEST(Profiling, SectionThatOutlivesItsRunBelongsToNone) {
    auto recorder = std::make_unique<TraceRecorder>();
    recorder->start();
    auto proxy = std::make_unique<ProfileSectionProxy>("", 0, "", "long", true, "");
    recorder->stop();
    recorder->start();
    proxy.reset();
    EXPECT_TRUE(recorder->sections().empty());
    proxy = std::make_unique<ProfileSectionProxy>("", 0, "", "longer", true, "");
    recorder.reset();
    proxy.reset(); // must not touch the recorder that is gone
}

TEST(Profiling, SecondRecorderPausesTheFirst) {
    TraceRecorder first, second;
    first.start();
    section("a");
    second.start();
    section("b");
    second.stop();
    section("c");
    EXPECT_THAT(names(first), ElementsAre("a", "c"));
    EXPECT_THAT(names(second), ElementsAre("b"));
}

TEST(Profiling, PausedRecorderMayStopFirst) {
    TraceRecorder second;
    {
        TraceRecorder first;
        first.start();
        second.start();
    }
    section("b");
    second.stop();
    section("c");
    EXPECT_THAT(names(second), ElementsAre("b"));
}

TEST(Profiling, SectionsBeyondTheLimitAreCounted) {
    TraceRecorder recorder;
    recorder.start();
    for (std::size_t i = 0; i < TraceRecorder::maxSections + 3; ++i)
        section("s");
    EXPECT_EQ(recorder.sections().size(), TraceRecorder::maxSections);
    EXPECT_EQ(recorder.numDropped(), 3u);
}

TEST(Profiling, TraceIsJsonOfCompleteEvents) {
    TraceRecorder recorder;
    recorder.start();
    { const ProfileSectionProxy proxy("a\\b", 3, "f<\"x\">", "tab\there \xC2\xB5", true, ""); }
    section("two");
    const QJsonArray events = written(recorder);
    ASSERT_EQ(events.size(), 2);
    const QJsonObject event = events[0].toObject();
    EXPECT_EQ(event["ph"].toString(), "X");
    EXPECT_EQ(event["name"].toString(), QString::fromUtf8("tab\there \xC2\xB5"));
    EXPECT_TRUE(event["ts"].isDouble() && event["dur"].isDouble());
    EXPECT_EQ(event["args"].toObject()["function"].toString(), "f<\"x\">");
    EXPECT_EQ(event["args"].toObject()["file"].toString(), "a\\b");
    EXPECT_EQ(event["args"].toObject()["line"].toInt(), 3);
}

TEST(Profiling, EmptyTraceIsJsonToo) { EXPECT_TRUE(written(TraceRecorder()).isEmpty()); }
