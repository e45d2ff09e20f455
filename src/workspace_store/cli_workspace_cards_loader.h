// CLIWorkspaceCardsLoader: the cards of a project as the command line and the agent tools see
// them. A card whose payload does not decode as a WorkspaceCardPayload is left out silently; the
// snapshot's load diagnostics are passed on unchanged. A project that fails to load throws.
#pragma once

#include <filesystem>
#include <vector>

#include "workspace_store/card_model/workspace_card.h"
#include "workspace_store/workspace_compile_diagnostic.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {

struct CLIWorkspaceLoadedBoard {
  std::vector<WorkspaceCard> cards;
  std::vector<WorkspaceCompileDiagnostic> loadDiagnostics;
};

class CLIWorkspaceCardsLoader {
 public:
  static CLIWorkspaceLoadedBoard loadBoard(const std::filesystem::path& projectURL,
                                           const WorkspaceProjectSnapshotStore& snapshotStore);
  static std::vector<WorkspaceCard> loadWorkspaceCards(
      const std::filesystem::path& projectURL, const WorkspaceProjectSnapshotStore& snapshotStore);
};

}  // namespace zorvik
