#include "workspace_store/cli_workspace_cards_loader.h"

#include <optional>
#include <vector>

#include "foundation/json/value_decoder.h"

namespace zorvik {

CLIWorkspaceLoadedBoard CLIWorkspaceCardsLoader::loadBoard(
    const std::filesystem::path& projectURL, const WorkspaceProjectSnapshotStore& snapshotStore) {
  // Each card is typed on the thread that resolved it, while its payload is fresh, and the raw
  // payload is released there: the board is never held in both forms. Table rows come apart from
  // the payload, straight from the CSV, and are moved into the card rather than copied. Commands
  // read cards, never the fingerprint, so the files are not hashed.
  std::vector<std::optional<WorkspaceCard>> decoded;
  WorkspaceProjectSnapshotStore::LoadOptions options{.fingerprint = false, .tableRowsApart = true};
  options.entriesFound = [&](size_t count) { decoded.resize(count); };
  options.cardResolved = [&](size_t index, CardRecord& record) {
    try {
      WorkspaceCardPayload payload = decodeValue<WorkspaceCardPayload>(record.payload);
      if (record.tableRows) {
        if (auto* table = std::get_if<WorkspaceTablePayload>(&payload.value)) {
          table->rows = std::move(*record.tableRows);
        }
      }
      decoded[index] = WorkspaceCard{
          .id = record.id,
          .parentID = record.parentID,
          .title = std::move(record.title),
          .type = payload.type(),
          .summary = payload.summary(),
          .isLoading = false,
          .payload = std::move(payload),
      };
    } catch (const std::exception&) {
      // A payload that does not decode leaves its card out.
    }
    record.payload = AnyCodableValue();
    record.tableRows.reset();
  };
  WorkspaceProjectSnapshot snapshot = snapshotStore.load(projectURL, options);
  CLIWorkspaceLoadedBoard board;
  board.cards.reserve(snapshot.cards.size());
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
