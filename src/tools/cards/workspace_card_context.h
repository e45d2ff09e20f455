// WorkspaceCardContext: the board around a card, as the card toolkit needs it to render folders
// (their children) and images (board resource URLs).
//
// Built once from a card list and then only read; a built context is a plain value and safe to
// share between threads for reading.
#pragma once

#include <filesystem>
#include <optional>
#include <unordered_map>
#include <vector>

#include "foundation/uuid.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

struct WorkspaceCardContext {
  std::unordered_map<Uuid, const WorkspaceCard*> cardsByID;
  // The ids of each parent's children, in the order of the card list.
  std::unordered_map<Uuid, std::vector<Uuid>> childrenByParent;
  // The project folder, when known; without it no board resource URL can be made.
  std::optional<std::filesystem::path> projectURL;

  // A card id seen twice keeps the first card. The context points into `cards`, which must outlive
  // it.
  static WorkspaceCardContext build(const std::vector<WorkspaceCard>& cards,
                                    std::optional<std::filesystem::path> projectURL);
  // A context of a temporary list would point into freed cards.
  static WorkspaceCardContext build(std::vector<WorkspaceCard>&& cards,
                                    std::optional<std::filesystem::path> projectURL) = delete;
};

}  // namespace zorvik
