#!/usr/bin/env bash
# Start-up cost: `zorvik version` beside an empty C++ program, timed together by hyperfine.
# Goal: zorvik at most 3 times the empty program.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=OFF -DZORVIK_BUILD_BENCH=ON >/dev/null
cmake --build build/bench --target zorvik empty_program -j2 >/dev/null
hyperfine -N --warmup 50 --runs "${RUNS:-1000}" \
  --export-markdown build/bench/startup.md \
  "build/bench/bin/empty_program" "build/bench/bin/zorvik version"
echo "Shared libraries loaded by zorvik:"
ldd build/bench/bin/zorvik | awk '{print "  " $1}'
