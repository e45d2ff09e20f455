#!/usr/bin/env bash
# Builds everything under AddressSanitizer and UndefinedBehaviorSanitizer, runs the fuzz targets for
# a bounded time, then runs every test with CTest.
set -euo pipefail
cd "$(dirname "$0")/.."

fuzz_seconds="${ZORVIK_FUZZ_SECONDS:-20}"

# Fuzz targets: clang with libFuzzer, only the libraries they need.
CC=clang CXX=clang++ cmake -S . -B build/fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZORVIK_BUILD_FUZZ=ON -DZORVIK_BUILD_TESTS=OFF >/dev/null
cmake --build build/fuzz --target fuzz_targets -j2
for target in build/fuzz/bin/fuzz_*; do
  name=$(basename "$target")
  corpus=$(mktemp -d)
  cp fuzz/corpus/"${name#fuzz_}"/* "$corpus"/ 2>/dev/null || true
  echo "Fuzzing $name for ${fuzz_seconds}s"
  "$target" -max_total_time="$fuzz_seconds" -print_final_stats=0 "$corpus" 2>"$corpus.log" \
    || { tail -n 60 "$corpus.log"; exit 1; }
  tail -n 1 "$corpus.log"
  rm -rf "$corpus" "$corpus.log"
done

cmake -S . -B build/test -DCMAKE_BUILD_TYPE=Debug -DZORVIK_SANITIZE=ON >/dev/null
cmake --build build/test -j2
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir build/test --output-on-failure -j2
