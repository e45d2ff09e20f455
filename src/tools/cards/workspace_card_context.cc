#include "tools/cards/workspace_card_context.h"

namespace zorvik {

WorkspaceCardContext WorkspaceCardContext::build(const std::vector<WorkspaceCard>& cards,
                                                 std::optional<std::filesystem::path> projectURL) {
  WorkspaceCardContext context;
  context.projectURL = std::move(projectURL);
  context.cardsByID.reserve(cards.size());
  for (const WorkspaceCard& card : cards) {
    if (!context.cardsByID.emplace(card.id, &card).second) continue;
    if (card.parentID) context.childrenByParent[*card.parentID].push_back(card.id);
  }
  return context;
}

}  // namespace zorvik
