#!/usr/bin/env bash
# Whole-command timings of the agent commands, side by side in one hyperfine run each:
#  1. `zorvik agent call get_card_content` on the example board beside `zorvik version`
#     (goal: at most 3x).
#  2. `grep_cards` and `search_cards` over the 10k-card synthetic board beside `rg -F` over the
#     same files (goal for grep_cards: at most 3x rg).
#  3. The two search tools alone, on that board loaded once (card_search_benchmark).
set -euo pipefail
cd "$(dirname "$0")/.."
command -v rg >/dev/null || { sudo=""; [ "$(id -u)" -ne 0 ] && sudo=sudo; $sudo apt-get install -y -qq ripgrep; }
cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=OFF -DZORVIK_BUILD_BENCH=ON >/dev/null
cmake --build build/bench --target zorvik generate_board card_search_benchmark -j2 >/dev/null
zorvik=build/bench/bin/zorvik
example=examples/research-board
board="${ZORVIK_BENCH_BOARDS:-build/bench/boards}/board-10000"
[ -f "$board/.zorvik/workspace.json" ] || build/bench/bin/generate_board "$board" 10000

hyperfine -N --warmup 20 --runs "${RUNS:-300}" \
  "$zorvik version" \
  "$zorvik agent call get_card_content --project $example --args-json '{\"card_ids\":[\"A3B4C5D6-E7F8-4A1B-9C2D-3E4F5A6B7C8D\"],\"mode\":\"summary\"}'"

hyperfine -N --warmup 2 --runs "${BOARD_RUNS:-10}" \
  "rg -F -c subsidy $board" \
  "$zorvik agent call grep_cards --project $board --args-json '{\"query\":\"subsidy\"}'" \
  "$zorvik agent call search_cards --project $board --args-json '{\"query\":\"subsidy\"}'" || true

ZORVIK_BENCH_BOARDS="$(dirname "$board")" build/bench/bin/card_search_benchmark
