// WorkspaceProjectMutationCardDiff: how one card differs between the states before and after a
// mutation, with the card hashes of both sides.
//
// JSON keys "card_id", "change_type", "before_hash", "after_hash"; the hashes are optional, left
// out when absent and accepted as absent or null. An "added" card has only after_hash, a "removed"
// one only before_hash, an "updated" one both. A plain value.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_mutation_change_type.h"
#include "workspace_store/workspace_project_snapshot.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectMutationCardDiff {
  std::string cardID;  // upper-case UUID text
  WorkspaceProjectMutationChangeType changeType = WorkspaceProjectMutationChangeType::updated;
  std::optional<std::string> beforeHash;
  std::optional<std::string> afterHash;

  // The diffs of two states, sorted by card id. Cards are matched by upper-case id; a card on one
  // side only is added or removed, a card on both sides is updated when its card hashes differ and
  // left out when they are equal. Pure.
  static std::vector<WorkspaceProjectMutationCardDiff> between(
      const WorkspaceProjectSnapshot& before, const WorkspaceProjectSnapshot& after);

  static WorkspaceProjectMutationCardDiff decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectMutationCardDiff&) const = default;
};

}  // namespace zorvik
