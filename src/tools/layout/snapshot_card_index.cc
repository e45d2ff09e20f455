#include "tools/layout/snapshot_card_index.h"

#include "foundation/text.h"

namespace zorvik {

SnapshotCardIndex::SnapshotCardIndex(const WorkspaceProjectSnapshot& snapshot) {
  byID_.reserve(snapshot.cards.size());
  for (const CardRecord& card : snapshot.cards) {
    if (!byID_.emplace(card.id, &card).second) continue;
    if (card.parentID) childrenByParent_[*card.parentID].push_back(&card);
  }
}

const CardRecord* SnapshotCardIndex::card(const Uuid& id) const {
  const auto found = byID_.find(id);
  return found == byID_.end() ? nullptr : found->second;
}

const std::vector<const CardRecord*>& SnapshotCardIndex::children(const Uuid& folderID) const {
  static const std::vector<const CardRecord*> kNone;
  const auto found = childrenByParent_.find(folderID);
  return found == childrenByParent_.end() ? kNone : found->second;
}

std::optional<Uuid> parseCardUUID(std::string_view text) {
  return Uuid::parse(trimWhitespaceAndNewlines(text));
}

}  // namespace zorvik
