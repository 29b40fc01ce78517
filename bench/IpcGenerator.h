// Seeded IPC-2581 documents of any size, for benchmarks.
#pragma once

#include <cstddef>
#include <string>

namespace EDABench {

// A board of four conductors with pads, tracks, planes with cut-outs, holes, components and nets, in the mix
// and with the attributes of documents that layout programs write; at least `bytes` long. The same arguments
// give the same text.
std::string generateIpc(std::size_t bytes, unsigned seed = 1);

} // namespace EDABench
