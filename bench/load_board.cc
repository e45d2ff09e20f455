// load_board <project folder>: one snapshot load, for peak-memory measurements with /usr/bin/time.
#include <chrono>
#include <cstdio>

#include "workspace_store/workspace_project_snapshot_store.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: load_board <project folder>\n");
    return 2;
  }
  const auto start = std::chrono::steady_clock::now();
  const auto snapshot = zorvik::WorkspaceProjectSnapshotStore().load(argv[1]);
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf("%zu cards, %d files, %zu diagnostics, %.1f ms, %.0f cards/s\n",
              snapshot.cards.size(), snapshot.checkedFiles, snapshot.loadDiagnostics.size(),
              seconds * 1000, double(snapshot.cards.size()) / seconds);
  return 0;
}
