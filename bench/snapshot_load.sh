#!/usr/bin/env bash
# Snapshot load of synthetic 1k/10k/50k-card boards beside the floor (read + SHA-256 of the same
# files), and peak memory of one load beside the board's size. Goals: at most 1.5x the floor at 10k
# cards; peak memory at most 3x the board's bytes. BM_SnapshotLoadOverFloor times the floor and the
# load in the same iteration and reports their ratio (load_over_floor), which drifts less on a
# shared machine than two separate runs.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=OFF -DZORVIK_BUILD_BENCH=ON >/dev/null
cmake --build build/bench --target generate_board snapshot_benchmark load_board -j2 >/dev/null
export ZORVIK_BENCH_BOARDS="${ZORVIK_BENCH_BOARDS:-build/bench/boards}"
for n in 1000 10000 50000; do
  board="$ZORVIK_BENCH_BOARDS/board-$n"
  [ -f "$board/.zorvik/workspace.json" ] || build/bench/bin/generate_board "$board" "$n"
done
build/bench/bin/snapshot_benchmark --benchmark_min_time=1 "$@"
peakKiB() { { /usr/bin/time -f "%M" build/bench/bin/load_board "$1" >/dev/null; } 2>&1 | tail -n 1; }
# The process's own footprint (mapped libraries, start-up), measured on an empty folder, is shown
# apart: on a small board it outweighs the load.
empty=$(mktemp -d)
baseline=$(peakKiB "$empty")
rmdir "$empty"
echo "load_board on an empty folder: peak RSS ${baseline} KiB"
for n in 1000 10000 50000; do
  board="$ZORVIK_BENCH_BOARDS/board-$n"
  bytes=$(du -sb --apparent-size "$board" | cut -f1)
  peak=$(peakKiB "$board")
  echo "board-$n: $bytes bytes on disk, peak RSS ${peak} KiB ($(( peak * 1024 * 100 / bytes ))% of the board;" \
    "$(( (peak - baseline) * 1024 * 100 / bytes ))% above the empty-folder footprint)"
done
