// WorkspaceProjectSnapshotStore: the single read path from a project folder to a
// WorkspaceProjectSnapshot.
//
// A damaged `.zorvik/workspace.json` fails the whole load (WorkspaceProjectSnapshotError, or the
// read error); a damaged card does not: it is left out of `cards` and reported as one "parse.card"
// diagnostic in `loadDiagnostics`. A folder without the document loads as an empty project whose
// identity is stable. No read ever leaves the project root. Every file that a card resolves to is
// read and, unless the reader asks for no fingerprint, hashed at each load, so `projectFingerprint`
// is exact and independent of entry order. The store keeps no state; it may be used from any
// thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>

#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

class WorkspaceProjectSnapshotStore {
 public:
  struct LoadOptions {
    // False skips hashing the files: `projectFingerprint` stays empty. For readers that never
    // look at it; everything else is loaded and checked the same.
    bool fingerprint = true;
    // For readers that turn cards into something else while the board loads, so that the board is
    // never held in both forms: `entriesFound` is called once with the number of entries, then
    // `cardResolved` for every card as soon as it is built, with its entry index, on the thread
    // that resolved it (calls for different cards run concurrently). The card may be changed or
    // emptied; the snapshot keeps what is left of it.
    std::function<void(size_t entryCount)> entriesFound;
    std::function<void(size_t entryIndex, CardRecord& card)> cardResolved;
    // True hands a table card's body rows over in CardRecord::tableRows, parsed straight from the
    // CSV into one buffer, and leaves the payload's `rows` empty: for readers that type the cards
    // and would only copy the rows out of the payload again.
    bool tableRowsApart = false;
  };

  WorkspaceProjectSnapshot load(const std::filesystem::path& projectURL, LoadOptions options) const;
  WorkspaceProjectSnapshot load(const std::filesystem::path& projectURL) const {
    return load(projectURL, LoadOptions{});
  }
};

}  // namespace zorvik
