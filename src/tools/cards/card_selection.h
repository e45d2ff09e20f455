// Card selection by requested ids and the board scope of the answers, shared by the card reading
// and search tools.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/json/value_encoder.h"
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

// The output schema of a board tool: the scope keys every such tool answers with
// (scope_requested, scope_used, scope_label, total_cards; all required) and then `properties`,
// with `required` after the scope keys.
AnyCodableValue boardScopedOutputSchema(JSONObject properties, std::vector<std::string> required);

// Adds the scope keys of an answer. Over a loaded board every scope is the board:
// scope_requested is the request's scope or "board", scope_used and scope_label are "board".
ObjectEncoder& addBoardScope(ObjectEncoder& encoder,
                             const std::optional<std::string>& requestedScope, size_t totalCards);

// The tools' name of a card type: "item" for link cards, otherwise the type's raw value.
std::string_view toolTypeWord(WorkspaceCardType type);

}  // namespace zorvik
