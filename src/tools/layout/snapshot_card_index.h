// SnapshotCardIndex: the lookups the layout tools make over a loaded project snapshot, a card by
// id and the children of a folder card in the document's entry order.
//
// Holds pointers into the snapshot, which must outlive the index. A plain value once built;
// concurrent reads are safe. When the document repeats an id, the first card keeps it.
#pragma once

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/uuid.h"
#include "workspace_store/card_record.h"
#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

class SnapshotCardIndex {
 public:
  explicit SnapshotCardIndex(const WorkspaceProjectSnapshot& snapshot);

  // nullptr when no card has the id.
  const CardRecord* card(const Uuid& id) const;
  // The cards whose parentID is `folderID`, in entry order; empty when there are none.
  const std::vector<const CardRecord*>& children(const Uuid& folderID) const;

 private:
  std::unordered_map<Uuid, const CardRecord*> byID_;
  std::unordered_map<Uuid, std::vector<const CardRecord*>> childrenByParent_;
};

// The UUID written in `text`, white space around it ignored, digits in any case; nullopt when the
// text is no UUID.
std::optional<Uuid> parseCardUUID(std::string_view text);

}  // namespace zorvik
