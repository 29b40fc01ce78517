// Seeded IDX documents of any size, for benchmarks.
#pragma once

#include <string>

namespace EDABench {

// A square board, `instances` / 5 round curves, `definitions` parts, and `instances` placements of them, in
// the elements and with the attributes that exchange programs write. The same arguments give the same text.
std::string generateIdx(int instances, int definitions = 200, unsigned seed = 1);

} // namespace EDABench
