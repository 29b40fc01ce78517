// Seeded IDF 3 pairs of any size, for benchmarks.
#pragma once

#include <string>

namespace EDABench {

struct IdfPair {
    std::string board;   // text of the board file
    std::string library; // text of the library file
};

// A square board with rounded corners, 8 round cut-outs, 10 keepouts, placements / 5 drilled holes, notes, and
// `placements` placements of `definitions` parts. The same arguments always give the same texts.
IdfPair generateIdf(int placements, int definitions = 200, unsigned seed = 1);

// Writes the pair as PREFIX.emn and PREFIX.emp. False when a file cannot be written.
bool writeIdf(const IdfPair &pair, const std::string &prefix);

} // namespace EDABench
