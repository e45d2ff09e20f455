#!/usr/bin/env bash
# Builds zorvik (release) and runs the main job on the bundled example board: what an external
# coding agent does first on a board.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
zorvik=build/release/bin/zorvik
board=examples/research-board

run() {
  echo
  echo "\$ zorvik $*"
  "$zorvik" "$@"
}

run version
run agent list-tools --project "$board"
run agent tool-details tool_details --project "$board"
run agent call list_tools --project "$board"
