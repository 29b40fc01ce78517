// Opening and closing a profiling section.
#include "host/Profiling/ProfileSectionProxy.h"

#include "host/Profiling/TraceRecorder.h"

#include <utility>

namespace Profiling {

struct ProfileSectionProxy::Open {
    std::uint64_t run;
    TraceSection section;
};

ProfileSectionProxy::ProfileSectionProxy(const char *file, int line, const char *function,
                                         const std::string &name, bool enabled, const std::string &group) {
    const TraceRecorder *recorder = TraceRecorder::active();
    if (!enabled || recorder == nullptr) return;
    open_ = std::make_unique<Open>();
    open_->run = recorder->run_;
    open_->section.name = name;
    open_->section.group = group;
    open_->section.file = file != nullptr ? file : "";
    open_->section.function = function != nullptr ? function : "";
    open_->section.line = line;
    open_->section.start = recorder->microsecondsNow();
}

ProfileSectionProxy::~ProfileSectionProxy() { endSection(); }

void ProfileSectionProxy::endSection() {
    if (!open_) return;
    // The recorder of the beginning may be gone or started anew; such a section belongs to no run.
    TraceRecorder *recorder = TraceRecorder::active();
    if (recorder != nullptr && recorder->run_ == open_->run) {
        open_->section.duration = recorder->microsecondsNow() - open_->section.start;
        recorder->add(std::move(open_->section));
    }
    open_.reset();
}

} // namespace Profiling
