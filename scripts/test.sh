#!/usr/bin/env bash
# Builds everything under AddressSanitizer and UndefinedBehaviorSanitizer, runs the fuzz targets for
# a bounded time, then runs every test with CTest, and last the release program's main job.
set -euo pipefail
cd "$(dirname "$0")/.."

fuzz_seconds="${ZORVIK_FUZZ_SECONDS:-20}"

# Fuzz targets: clang with libFuzzer, only the libraries they need. Line tables are enough for
# the reports, and full debug information would double the build.
CC=clang CXX=clang++ cmake -S . -B build/fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g1" -DZORVIK_BUILD_FUZZ=ON -DZORVIK_BUILD_TESTS=OFF \
  >/dev/null
cmake --build build/fuzz --target fuzz_targets -j2

# The targets fuzz side by side, each for the bounded time; any crash fails the run.
fuzz() {
  local target=$1 name corpus
  name=$(basename "$target")
  corpus=$(mktemp -d)
  cp fuzz/corpus/"${name#fuzz_}"/* "$corpus"/ 2>/dev/null || true
  if "$target" -max_total_time="$fuzz_seconds" -print_final_stats=0 "$corpus" 2>"$corpus.log"; then
    echo "$name, ${fuzz_seconds}s: $(tail -n 1 "$corpus.log")"
    rm -rf "$corpus" "$corpus.log"
  else
    echo "$name failed:"
    tail -n 60 "$corpus.log"
    return 1
  fi
}
pids=()
for target in build/fuzz/bin/fuzz_*; do
  fuzz "$target" &
  pids+=($!)
done
for pid in "${pids[@]}"; do wait "$pid"; done

cmake -S . -B build/test -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-g1" \
  -DZORVIK_SANITIZE=ON >/dev/null
cmake --build build/test -j2
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir build/test --output-on-failure -j2

# The shipped program (release, on mimalloc) runs the main job on the example board; a command
# that fails fails the run.
bash scripts/demo.sh >/dev/null
