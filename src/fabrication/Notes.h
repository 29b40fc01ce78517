// What the front end did to a file, gathered by kind so that it can be told.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace EDA::Fabrication {

enum class NoteKind {
    Normalised, // another spelling of the same: nothing is lost
    Guessed,    // the file does not say it; it may be wrong
    LeftOut,    // something that the file holds does not arrive
};

struct Note {
    NoteKind kind = NoteKind::Normalised;
    std::string what;      // for people, in the plural: "arcs of a single quadrant"
    std::size_t line = 0;  // of the first in the file, from 1; 0: of the file as a whole
    std::size_t count = 0; // how many there were
};

// The notes of one file. Notes of one kind and text are one note with their number.
class Notes {
public:
    static constexpr std::size_t maxNotes = 1000;

    // Beyond maxNotes different ones, the rest is counted in a last note. Costs a look-up: what comes in
    // thousands is counted by its finder and added once.
    void add(NoteKind kind, std::string_view what, std::size_t line = 0, std::size_t count = 1);

    std::vector<Note> const &list() const { return notes_; }

    // Whether there is a note of this kind.
    bool has(NoteKind kind) const;

private:
    std::vector<Note> notes_;
};

} // namespace EDA::Fabrication
