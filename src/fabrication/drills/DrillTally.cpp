// Counts what happens in a file by kind, and tells it once.
#include "fabrication/drills/DrillTally.h"

#include <string_view>

namespace EDA::Fabrication {

namespace {

struct Telling {
    NoteKind kind;
    std::string_view what;
};

// In the order of DrillTrouble.
constexpr Telling tellings[] = {
    {NoteKind::LeftOut, "statements that are not understood"},
    {NoteKind::LeftOut, "coordinates that are no numbers"},
    {NoteKind::LeftOut, "holes more than a kilometre away"},
    {NoteKind::LeftOut, "holes before any tool is chosen"},
    {NoteKind::Guessed, "holes before any tool is chosen, drilled with the only tool there is"},
    {NoteKind::LeftOut, "holes and moves beyond the most that are read of one file"},
    {NoteKind::LeftOut, "slots beyond the most that are read of one file"},
    {NoteKind::LeftOut, "moves of routed paths beyond the most that one may have"},
    {NoteKind::LeftOut, "repeats beyond the most that one statement may have"},
    {NoteKind::LeftOut, "lines longer than any statement"},
    {NoteKind::LeftOut, "repeats with nothing to repeat"},
    {NoteKind::LeftOut, "canned cycles of several holes (G82, G83, G84)"},
    {NoteKind::LeftOut, "canned texts (M97, M98)"},
    {NoteKind::LeftOut, "stored patterns and subprograms"},
    {NoteKind::LeftOut, "cutter compensations: slots lie on the line as programmed"},
    {NoteKind::LeftOut, "coordinates after the end of the program"},
    {NoteKind::LeftOut, "arcs without a centre, taken as lines"},
    {NoteKind::Guessed, "positions of the rout mode taken as holes, as the file routs nothing"},
    {NoteKind::Guessed, "optional blocks, taken as drilled"},
    {NoteKind::Normalised, "tools defined again with another size"},
    {NoteKind::Guessed, "tool sizes without a decimal point, taken as thousandths"},
    {NoteKind::Guessed, "tool changes without numbers, tools taken in turn"},
};
static_assert(sizeof tellings / sizeof *tellings == static_cast<std::size_t>(DrillTrouble::Count));

} // namespace

void DrillTally::add(DrillTrouble trouble, std::size_t line, std::size_t count) {
    Entry &entry = entries_[static_cast<std::size_t>(trouble)];
    if (entry.count == 0) entry.line = line;
    entry.count += count;
}

void DrillTally::tell(Notes &notes) const {
    for (std::size_t i = 0; i < entries_.size(); ++i)
        notes.add(tellings[i].kind, tellings[i].what, entries_[i].line, entries_[i].count);
}

} // namespace EDA::Fabrication
