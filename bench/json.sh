#!/usr/bin/env bash
# JSON parse and write throughput on a generated 20 MB workspace document, beside simdjson's DOM.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=OFF -DZORVIK_BUILD_BENCH=ON >/dev/null
cmake --build build/bench --target json_benchmark -j2 >/dev/null
build/bench/bin/json_benchmark --benchmark_min_time=2 "$@"
