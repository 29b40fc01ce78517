// The words for what is noticed in layer files.
#include "fabrication/layers/LayerTallies.h"

#include <string_view>

namespace EDA::Fabrication {

namespace {

struct Words {
    NoteKind kind;
    std::string_view what;
};

// In the order of the tallies.
constexpr Words words[] = {
    {NoteKind::Normalised, "coordinates with a decimal point"},
    {NoteKind::Normalised, "flashes without an operation code"},
    {NoteKind::Normalised, "lines, arcs and moves without an operation code"},
    {NoteKind::Guessed, "coordinates before any operation, taken for moves"},
    {NoteKind::Normalised, "arcs of a single quadrant"},
    {NoteKind::Guessed, "arcs of a single quadrant that no centre fits"},
    {NoteKind::Guessed, "arcs without a quadrant mode"},
    {NoteKind::Normalised, "modes of scaled lines, taken for plain ones"},
    {NoteKind::LeftOut, "flashes inside of regions"},
    {NoteKind::Normalised, "contours of regions without area"},
    {NoteKind::Normalised, "open contours of regions, closed by a straight line"},
    {NoteKind::LeftOut, "lines and arcs drawn with a block"},
    {NoteKind::LeftOut, "objects drawn without a defined aperture"},
    {NoteKind::LeftOut, "codes that are not understood"},
    {NoteKind::Normalised, "changes of the unit within the file"},
    {NoteKind::LeftOut, "commands whose text is not understood"},
};
static_assert(sizeof(words) / sizeof(words[0]) == static_cast<std::size_t>(Tally::Count));

constexpr std::size_t maxCodes = 500;

} // namespace

void LayerTallies::countUndefined(int code, std::size_t line) {
    const auto found = undefined_.find(code);
    Entry &entry = found != undefined_.end()      ? found->second
                   : undefined_.size() < maxCodes ? undefined_[code]
                                                  : moreUndefined_;
    if (entry.count++ == 0) entry.line = line;
}

void LayerTallies::countUnknown(std::string const &letters, std::size_t line) {
    Entry &entry = unknown_[letters];
    if (entry.count++ == 0) entry.line = line;
}

void LayerTallies::addTo(Notes &notes) const {
    for (std::size_t i = 0; i < entries_.size(); ++i)
        notes.add(words[i].kind, words[i].what, entries_[i].line, entries_[i].count);
    for (auto const &[code, entry] : undefined_)
        notes.add(NoteKind::LeftOut,
                  "selections of aperture D" + std::to_string(code) + ", which is not defined", entry.line,
                  entry.count);
    notes.add(NoteKind::LeftOut, "selections of other apertures that are not defined", moreUndefined_.line,
              moreUndefined_.count);
    for (auto const &[letters, entry] : unknown_)
        notes.add(NoteKind::LeftOut, "commands \"" + letters + "\"", entry.line, entry.count);
}

} // namespace EDA::Fabrication
