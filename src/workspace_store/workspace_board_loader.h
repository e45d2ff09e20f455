// WorkspaceBoardLoader: the cards of an older flat folder of card files (`card_*.json`). Unlike the
// project loader it fails as a whole: one unreadable or undecodable card file throws.
#pragma once

#include <filesystem>
#include <vector>

#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

class WorkspaceBoardLoader {
 public:
  // Files whose name begins with "card_" and ends in ".json", in name order.
  static std::vector<WorkspaceCard> loadCards(const std::filesystem::path& directory);
};

}  // namespace zorvik
