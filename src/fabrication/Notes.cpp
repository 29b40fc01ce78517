// Notes of one file, gathered by kind.
#include "fabrication/Notes.h"

#include <algorithm>

namespace EDA::Fabrication {

namespace {

constexpr std::string_view overflow = "more kinds of notes than are kept";

} // namespace

void Notes::add(NoteKind kind, std::string_view what, std::size_t line, std::size_t count) {
    if (count == 0) return;
    const auto find = [this, kind](std::string_view text) {
        return std::find_if(notes_.begin(), notes_.end(),
                            [=](Note const &note) { return note.kind == kind && note.what == text; });
    };
    auto found = find(what);
    if (found == notes_.end() && notes_.size() >= maxNotes) {
        what = overflow;
        found = find(what);
    }
    if (found == notes_.end()) {
        notes_.push_back({kind, std::string(what), line, count});
    } else {
        found->count += count;
    }
}

bool Notes::has(NoteKind kind) const {
    return std::any_of(notes_.begin(), notes_.end(), [kind](Note const &note) { return note.kind == kind; });
}

} // namespace EDA::Fabrication
