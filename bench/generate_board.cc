// generate_board <folder> <card count> [seed]: writes a synthetic board for benchmarks.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "board_generator.h"

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: generate_board <folder> <card count> [seed]\n");
    return 2;
  }
  const auto board = zorvik::bench::generateBoard(argv[1], std::stoul(argv[2]),
                                                  argc > 3 ? std::stoull(argv[3]) : 42);
  std::printf("%zu cards, %zu files, %ju bytes\n", board.cards, board.files, board.bytes);
  return 0;
}
