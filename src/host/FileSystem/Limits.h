// Limits of what is read from files, all far above any real design.
#pragma once

#include <cstddef>
#include <cstdint>

namespace FileSystem {

// A larger file counts as unreadable.
constexpr std::uint64_t maxFileSize = std::uint64_t{1} << 30;

// A file with a longer line, or a row of more tokens, counts as unreadable to CSVParser.
constexpr std::size_t maxLineLength = std::size_t{64} << 20;
constexpr std::size_t maxRowTokens = 4'000'000;

// An archive beyond one of these is refused. The ratio is that of the unpacked bytes to the archive's own
// size, and counts only once more than archiveRatioFrom bytes are unpacked.
constexpr std::size_t maxArchiveEntries = 100'000;
constexpr std::uint64_t maxUnpackedSize = std::uint64_t{4} << 30;
constexpr std::uint64_t maxUnpackedRatio = 200;
constexpr std::uint64_t archiveRatioFrom = std::uint64_t{10} << 20;
constexpr std::size_t maxArchiveNames = std::size_t{64} << 20; // bytes of all entry names together

} // namespace FileSystem
