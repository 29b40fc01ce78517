// Collects the profiling sections of a thread and writes them for a trace viewer.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace Profiling {

// A section that has ended. Times are in microseconds since the recorder started.
struct TraceSection {
    std::string name;
    std::string group;
    std::string file;
    std::string function;
    int line = 0;
    std::int64_t start = 0;
    std::int64_t duration = 0;
};

// Between start and stop, notes every section of the calling thread that begins and ends in that time.
// Starts no thread, prints nothing, writes nothing by itself.
//
// One recorder of a thread is active at a time: starting a second one pauses the first until the second
// stops. A recorder is stopped by its destructor at the latest, on the thread that started it.
class TraceRecorder {
public:
    // Sections beyond this number are counted, not kept.
    static constexpr std::size_t maxSections = 1'000'000;

    TraceRecorder() = default;
    ~TraceRecorder();
    TraceRecorder(const TraceRecorder &) = delete;
    TraceRecorder &operator=(const TraceRecorder &) = delete;

    // Forgets what was collected and begins anew. Nothing happens when it already runs.
    void start();
    void stop();
    bool isRunning() const { return running_; }

    // In the order in which the sections ended.
    const std::vector<TraceSection> &sections() const { return sections_; }
    std::size_t numDropped() const { return dropped_; }

    // Writes the sections as trace events in JSON ({"traceEvents":[...]}, one complete event, phase "X", a
    // section, times in microseconds), which the common trace viewers open. Bytes of names that are not
    // ASCII are written as they stand. The result is that of the stream.
    bool writeJson(std::ostream &stream) const;

private:
    friend class ProfileSectionProxy;

    static TraceRecorder *&active();
    std::int64_t microsecondsNow() const;
    void add(TraceSection &&section);

    std::vector<TraceSection> sections_;
    std::size_t dropped_ = 0;
    bool running_ = false;
    std::uint64_t run_ = 0; // tells the runs of all recorders of a thread apart
    TraceRecorder *paused_ = nullptr;
    std::chrono::steady_clock::time_point origin_;
};

} // namespace Profiling
