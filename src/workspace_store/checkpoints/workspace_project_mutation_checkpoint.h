// WorkspaceProjectMutationCheckpoint: the persisted record of one mutation of a board, with the
// cards it changed and the state hashes before and after it.
//
// JSON keys "checkpoint_id", "command", "created_at" (ISO 8601, whole seconds), "project_path",
// "target_card_ids", "changed_card_ids", "added_count", "removed_count", "updated_count",
// "changed_any", "before_state_hash", "after_state_hash", "card_diffs"; all required on decoding.
// checkpoint_id is a lower-case UUID. A plain value.
#pragma once

#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_mutation_card_diff.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectMutationCheckpoint {
  std::string checkpointID;
  std::string command;  // the tool or action that mutated
  Date createdAt;
  std::string projectPath;                  // the resolved project root
  std::vector<std::string> targetCardIDs;   // normalised: trimmed, no blanks, unique, sorted
  std::vector<std::string> changedCardIDs;  // the ids of cardDiffs, sorted
  int addedCount = 0;
  int removedCount = 0;
  int updatedCount = 0;
  bool changedAny = false;  // whether any card changed; metadata alone never sets it
  std::string beforeStateHash;
  std::string afterStateHash;
  std::vector<WorkspaceProjectMutationCardDiff> cardDiffs;  // sorted by card id

  static WorkspaceProjectMutationCheckpoint decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectMutationCheckpoint&) const = default;
};

}  // namespace zorvik
