// WorkspaceProjectSnapshotStore: the single read path from a project folder to a
// WorkspaceProjectSnapshot.
//
// A damaged `.zorvik/workspace.json` fails the whole load (WorkspaceProjectSnapshotError, or the
// read error); a damaged card does not: it is left out of `cards` and reported as one "parse.card"
// diagnostic in `loadDiagnostics`. A folder without the document loads as an empty project whose
// identity is stable. No read ever leaves the project root. Every file that a card resolves to is
// read and hashed at each load, so `projectFingerprint` is exact and independent of entry order.
// The store keeps no state; it may be used from any thread.
#pragma once

#include <filesystem>

#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

class WorkspaceProjectSnapshotStore {
 public:
  WorkspaceProjectSnapshot load(const std::filesystem::path& projectURL) const;
};

}  // namespace zorvik
