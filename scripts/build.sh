#!/usr/bin/env bash
# Builds zorvik in release form into build/release. Usage: scripts/build.sh [extra cmake args]
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DZORVIK_BUILD_TESTS=OFF "$@" >/dev/null
cmake --build build/release --target zorvik -j2
