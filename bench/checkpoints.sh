#!/usr/bin/env bash
# Checkpoint costs: the state hash of the synthetic 10k-card board beside its snapshot load (goal:
# hash_over_load at most 2), and pruning and recentCheckpoints over 10,000 checkpoint files.
set -euo pipefail
cd "$(dirname "$0")/.."
# The machine's builds share one lock.
lock=/tmp/zorvik-build.lock
flock "$lock" cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=OFF \
  -DZORVIK_BUILD_BENCH=ON >/dev/null
flock "$lock" cmake --build build/bench --target generate_board checkpoint_benchmark -j2 >/dev/null
export ZORVIK_BENCH_BOARDS="${ZORVIK_BENCH_BOARDS:-build/bench/boards}"
board="$ZORVIK_BENCH_BOARDS/board-10000"
[ -f "$board/.zorvik/workspace.json" ] || build/bench/bin/generate_board "$board" 10000
build/bench/bin/checkpoint_benchmark --benchmark_min_time=1 "$@"
