#!/usr/bin/env bash
# Bridge round trip with the stand-in application answering at once: median added latency per
# call (goal: under one poll interval, 50 ms). The stand-in is built with the tests, so this
# script uses a Release build of its own with tests enabled.
set -euo pipefail
cd "$(dirname "$0")/.."
lock=/tmp/zorvik-build.lock
flock "$lock" cmake -S . -B build/bench-bridge -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=ON \
  -DZORVIK_BUILD_BENCH=ON >/dev/null
flock "$lock" cmake --build build/bench-bridge --target bridge_round_trip zorvik_fake_app -j2 >/dev/null
build/bench-bridge/bin/bridge_round_trip "${CALLS:-200}"
