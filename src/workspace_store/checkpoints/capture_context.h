// CaptureContext: what WorkspaceProjectMutationCheckpointStore::beginCapture noted before a
// mutation, handed back to finishCapture after it. It lives in the caller's memory only; a mutation
// that never finishes leaves no checkpoint. A plain value that owns its snapshot.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

struct CaptureContext {
  std::filesystem::path projectURL;  // standardised, symbolic links resolved
  std::string command;
  std::vector<std::string> targetCardIDs;  // normalised
  WorkspaceProjectSnapshot beforeSnapshot;
  std::string beforeStateHash;
  Date startedAt;
};

}  // namespace zorvik
