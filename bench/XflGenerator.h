// Seeded XFL files of any size, for benchmarks.
#pragma once

#include <string>

namespace EDABench {

// A board of four conductor layers and `rows` rows of nets, twenty to a net: shapes of the table, tracks,
// vias, shapes in place and voids. The same arguments give the same text.
std::string generateXfl(int rows, unsigned seed = 1);

// A board with `sizes` vias, no two of one size.
std::string generateXflVias(int sizes);

} // namespace EDABench
