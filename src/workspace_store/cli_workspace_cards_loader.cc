#include "workspace_store/cli_workspace_cards_loader.h"

#include "foundation/json/value_decoder.h"

namespace zorvik {

CLIWorkspaceLoadedBoard CLIWorkspaceCardsLoader::loadBoard(
    const std::filesystem::path& projectURL, const WorkspaceProjectSnapshotStore& snapshotStore) {
  WorkspaceProjectSnapshot snapshot = snapshotStore.load(projectURL);
  CLIWorkspaceLoadedBoard board;
  board.cards.reserve(snapshot.cards.size());
  for (const CardRecord& record : snapshot.cards) {
    WorkspaceCardPayload payload;
    try {
      payload = decodeValue<WorkspaceCardPayload>(record.payload);
    } catch (const std::exception&) {
      continue;
    }
    board.cards.push_back(WorkspaceCard{
        .id = record.id,
        .parentID = record.parentID,
        .title = record.title,
        .type = payload.type(),
        .summary = payload.summary(),
        .isLoading = false,
        .payload = std::move(payload),
    });
  }
  board.loadDiagnostics = std::move(snapshot.loadDiagnostics);
  return board;
}

std::vector<WorkspaceCard> CLIWorkspaceCardsLoader::loadWorkspaceCards(
    const std::filesystem::path& projectURL, const WorkspaceProjectSnapshotStore& snapshotStore) {
  return loadBoard(projectURL, snapshotStore).cards;
}

}  // namespace zorvik
