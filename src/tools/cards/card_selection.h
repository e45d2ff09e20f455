// Card selection by requested ids, shared by the card reading and search tools.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workspace_store/card_model/workspace_card.h"
#include "workspace_store/card_model/workspace_card_type.h"

namespace zorvik {

// Pointers into the card list given to filterCards; valid as long as that list is.
struct CardSelection {
  std::vector<const WorkspaceCard*> cards;
  std::vector<std::string> notFound;
};

// Absent or empty `cardIDs` select every card in board order. Otherwise ids are trimmed and
// compared as lower-cased UUID text with the cards' ids; the cards come in requested order, each
// once, and ids that match no card are listed in `notFound` verbatim (each once).
CardSelection filterCards(const std::vector<WorkspaceCard>& cards,
                          const std::optional<std::vector<std::string>>& cardIDs);

// The tools' name of a card type: "item" for link cards, otherwise the type's raw value.
std::string_view toolTypeWord(WorkspaceCardType type);

}  // namespace zorvik
