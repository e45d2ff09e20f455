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
run agent call list_card_metadata --project "$board" --args-json '{"card_ids":["A3B4C5D6-E7F8-4A1B-9C2D-3E4F5A6B7C8D"]}'
run agent call get_card_content --project "$board" \
  --args-json '{"card_ids":["A3B4C5D6-E7F8-4A1B-9C2D-3E4F5A6B7C8D"],"mode":"type_specific","type_options":{"table":{"row_filter":{"column":"Region","match":"South"}}}}'
run agent call search_cards --project "$board" --args-json '{"query":"price drop","top_k":3}'
run agent call grep_cards --project "$board" --args-json '{"query":"subsid","top_k":2}'
run project validate "$board"
run project inspect list_card_layouts --project "$board" \
  --args-json '{"card_ids":["A3B4C5D6-E7F8-4A1B-9C2D-3E4F5A6B7C8D"]}'
# Without the desktop application the viewport tools answer at once (exit 7 from runtime inspect).
run runtime inspect viewport_state --project "$board" || true
