#include "workspace_store/cli_workspace_cards_loader.h"

#include <optional>
#include <vector>

#include "foundation/json/value_decoder.h"
#include "foundation/parallel_for.h"

namespace zorvik {

CLIWorkspaceLoadedBoard CLIWorkspaceCardsLoader::loadBoard(
    const std::filesystem::path& projectURL, const WorkspaceProjectSnapshotStore& snapshotStore) {
  // Commands read cards, never the fingerprint: the files are not hashed.
  WorkspaceProjectSnapshot snapshot = snapshotStore.load(projectURL, {.fingerprint = false});
  // Cards decode on several threads; each raw payload is released as soon as its card is typed,
  // so the board is not held twice. A payload that does not decode leaves its card out.
  std::vector<std::optional<WorkspaceCard>> decoded(snapshot.cards.size());
  parallelFor(snapshot.cards.size(), [&](size_t i) {
    CardRecord& record = snapshot.cards[i];
    try {
      WorkspaceCardPayload payload = decodeValue<WorkspaceCardPayload>(record.payload);
      decoded[i] = WorkspaceCard{
          .id = record.id,
          .parentID = record.parentID,
          .title = std::move(record.title),
          .type = payload.type(),
          .summary = payload.summary(),
          .isLoading = false,
          .payload = std::move(payload),
      };
    } catch (const std::exception&) {
    }
    record.payload = AnyCodableValue();
  });
  CLIWorkspaceLoadedBoard board;
  board.cards.reserve(decoded.size());
  for (std::optional<WorkspaceCard>& card : decoded) {
    if (card) board.cards.push_back(std::move(*card));
  }
  board.loadDiagnostics = std::move(snapshot.loadDiagnostics);
  return board;
}

std::vector<WorkspaceCard> CLIWorkspaceCardsLoader::loadWorkspaceCards(
    const std::filesystem::path& projectURL, const WorkspaceProjectSnapshotStore& snapshotStore) {
  return loadBoard(projectURL, snapshotStore).cards;
}

}  // namespace zorvik
