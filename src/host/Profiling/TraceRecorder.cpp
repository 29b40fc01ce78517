// Collecting profiling sections and writing them as trace events.
#include "host/Profiling/TraceRecorder.h"

#include <cstdio>
#include <string_view>
#include <utility>

namespace Profiling {

namespace {

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            result += escape;
        } else {
            result += c;
        }
    }
    return result + '"';
}

std::string event(const TraceSection &section) {
    const std::string group = section.group.empty() ? "section" : section.group;
    return "{\"name\":" + quoted(section.name) + ",\"cat\":" + quoted(group) +
           ",\"ph\":\"X\",\"pid\":1,\"tid\":1,\"ts\":" + std::to_string(section.start) +
           ",\"dur\":" + std::to_string(section.duration) +
           ",\"args\":{\"function\":" + quoted(section.function) + ",\"file\":" + quoted(section.file) +
           ",\"line\":" + std::to_string(section.line) + "}}";
}

} // namespace

TraceRecorder *&TraceRecorder::active() {
    thread_local TraceRecorder *recorder = nullptr;
    return recorder;
}

TraceRecorder::~TraceRecorder() { stop(); }

void TraceRecorder::start() {
    thread_local std::uint64_t lastRun = 0;
    if (running_) return;
    sections_.clear();
    dropped_ = 0;
    run_ = ++lastRun;
    running_ = true;
    paused_ = std::exchange(active(), this);
    origin_ = std::chrono::steady_clock::now();
}

void TraceRecorder::stop() {
    if (!running_) return;
    running_ = false;
    // A paused recorder may stop before the one that pauses it: take it out of the chain.
    for (TraceRecorder **link = &active(); *link != nullptr; link = &(*link)->paused_) {
        if (*link != this) continue;
        *link = paused_;
        break;
    }
    paused_ = nullptr;
}

std::int64_t TraceRecorder::microsecondsNow() const {
    const auto elapsed = std::chrono::steady_clock::now() - origin_;
    return std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count();
}

void TraceRecorder::add(TraceSection &&section) {
    if (sections_.size() < maxSections)
        sections_.push_back(std::move(section));
    else
        ++dropped_;
}

bool TraceRecorder::writeJson(std::ostream &stream) const {
    stream << "{\"displayTimeUnit\":\"ms\",\"traceEvents\":[";
    const char *separator = "\n";
    for (const TraceSection &section : sections_) {
        stream << separator << event(section);
        separator = ",\n";
    }
    stream << "\n]}\n";
    return stream.good();
}

} // namespace Profiling
