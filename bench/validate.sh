#!/usr/bin/env bash
# `zorvik project validate --json` on the 10k-card synthetic board beside the snapshot load alone
# (`load_board`), timed together by hyperfine. Goal: validation at most 1.3x the load.
# With ZORVIK_BUILD_LOCK set, the build step runs under `flock` on that file.
set -euo pipefail
cd "$(dirname "$0")/.."
lock=()
[ -n "${ZORVIK_BUILD_LOCK:-}" ] && lock=(flock "$ZORVIK_BUILD_LOCK")
"${lock[@]}" cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=OFF \
  -DZORVIK_BUILD_BENCH=ON >/dev/null
"${lock[@]}" cmake --build build/bench --target zorvik load_board generate_board -j2 >/dev/null
board="${ZORVIK_BENCH_BOARDS:-build/bench/boards}/board-10000"
[ -f "$board/.zorvik/workspace.json" ] || build/bench/bin/generate_board "$board" 10000

results=build/bench/validate.json
hyperfine -N --warmup 3 --runs "${RUNS:-20}" --export-json "$results" \
  "build/bench/bin/load_board $board" \
  "build/bench/bin/zorvik project validate $board --json"
jq -r '.results as $r | ($r[1].mean / $r[0].mean) as $ratio |
  "validate / load: \($ratio * 1000 | round / 1000)x (\($r[1].mean * 1000 | round) ms vs " +
  "\($r[0].mean * 1000 | round) ms; goal at most 1.3x)"' "$results"
