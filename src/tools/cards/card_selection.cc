#include "tools/cards/card_selection.h"

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

std::string_view toolTypeWord(WorkspaceCardType type) {
  return type == WorkspaceCardType::link ? std::string_view("item") : rawValue(type);
}

}  // namespace zorvik
