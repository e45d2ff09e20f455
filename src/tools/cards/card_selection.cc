#include "tools/cards/card_selection.h"

#include "tools/framework/json_schema.h"

#include <unordered_map>
#include <unordered_set>

#include "foundation/text.h"

namespace zorvik {

CardSelection filterCards(const std::vector<WorkspaceCard>& cards,
                          const std::optional<std::vector<std::string>>& cardIDs) {
  CardSelection selection;
  if (!cardIDs || cardIDs->empty()) {
    selection.cards.reserve(cards.size());
    for (const WorkspaceCard& card : cards) selection.cards.push_back(&card);
    return selection;
  }
  std::unordered_map<std::string, const WorkspaceCard*> byID;
  byID.reserve(cards.size());
  for (const WorkspaceCard& card : cards) byID.emplace(card.id.lowercaseString(), &card);

  std::unordered_set<const WorkspaceCard*> taken;
  std::unordered_set<std::string> missing;
  for (const std::string& requested : *cardIDs) {
    auto found = byID.find(lowercased(trimWhitespaceAndNewlines(requested)));
    if (found == byID.end()) {
      if (missing.insert(requested).second) selection.notFound.push_back(requested);
    } else if (taken.insert(found->second).second) {
      selection.cards.push_back(found->second);
    }
  }
  return selection;
}

AnyCodableValue boardScopedOutputSchema(JSONObject properties, std::vector<std::string> required) {
  properties.set("scope_requested", schema::string());
  properties.set("scope_used", schema::string());
  properties.set("scope_label", schema::string());
  properties.set("total_cards", schema::integer("Cards on the board."));
  required.insert(required.begin(),
                  {"scope_requested", "scope_used", "scope_label", "total_cards"});
  return schema::object(std::move(properties), std::move(required));
}

ObjectEncoder& addBoardScope(ObjectEncoder& encoder,
                             const std::optional<std::string>& requestedScope, size_t totalCards) {
  return encoder.add("scope_requested", requestedScope.value_or("board"))
      .add("scope_used", "board")
      .add("scope_label", "board")
      .add("total_cards", totalCards);
}

std::string_view toolTypeWord(WorkspaceCardType type) {
  return type == WorkspaceCardType::link ? std::string_view("item") : rawValue(type);
}

}  // namespace zorvik
