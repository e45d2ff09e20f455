// Writes synthetic research boards for benchmarks: `cardCount` cards of mixed kinds with realistic
// sizes, spread over sub-folders, plus the `.zorvik/workspace.json` that lists them. The same seed
// gives the same board.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace zorvik::bench {

struct GeneratedBoard {
  size_t cards = 0;
  size_t files = 0;
  uintmax_t bytes = 0;  // all files written, the workspace document included
};

GeneratedBoard generateBoard(const std::filesystem::path& root, size_t cardCount,
                             uint64_t seed = 42);

}  // namespace zorvik::bench
