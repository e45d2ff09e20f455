// The bundled example board must stay a complete, clean board: every card kind, no diagnostics.
#include <gtest/gtest.h>

#include <set>

#include "workspace_store/cli_workspace_cards_loader.h"

namespace zorvik {
namespace {

TEST(ExampleBoardTest, HoldsEveryKindAndLoadsWithoutDiagnostics) {
  const std::filesystem::path board =
      std::filesystem::path(ZORVIK_SOURCE_DIR) / "examples" / "research-board";
  const WorkspaceProjectSnapshotStore store;
  const WorkspaceProjectSnapshot snapshot = store.load(board);
  EXPECT_TRUE(snapshot.loadDiagnostics.empty());
  const CLIWorkspaceLoadedBoard loaded = CLIWorkspaceCardsLoader::loadBoard(board, store);
  EXPECT_EQ(loaded.cards.size(), snapshot.cards.size()) << "every payload decodes";

  std::set<WorkspaceCardType> kinds;
  for (const auto& card : loaded.cards) kinds.insert(card.type);
  EXPECT_EQ(kinds.size(), 9u) << "a card of every kind";

  std::set<std::string> paths;
  for (const auto& card : snapshot.cards) paths.insert(card.path);
  for (const char* expected : {"notes/overview.md", "data/results.csv", "links/solar-report.md",
                               "links/grid-study.link.json", "pages/price-chart"}) {
    EXPECT_TRUE(paths.contains(expected)) << expected;
  }
}

}  // namespace
}  // namespace zorvik
