// WorkspaceProjectMutationCheckpointSummary: a mutation checkpoint without its project path and
// card diffs, the bounded form that digests carry.
//
// JSON keys as the checkpoint's: "checkpoint_id", "command", "created_at", "target_card_ids",
// "changed_card_ids", "added_count", "removed_count", "updated_count", "changed_any",
// "before_state_hash", "after_state_hash"; all required on decoding. A plain value.
#pragma once

#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectMutationCheckpointSummary {
  std::string checkpointID;
  std::string command;
  Date createdAt;
  std::vector<std::string> targetCardIDs;
  std::vector<std::string> changedCardIDs;
  int addedCount = 0;
  int removedCount = 0;
  int updatedCount = 0;
  bool changedAny = false;
  std::string beforeStateHash;
  std::string afterStateHash;

  static WorkspaceProjectMutationCheckpointSummary of(
      const WorkspaceProjectMutationCheckpoint& checkpoint);

  static WorkspaceProjectMutationCheckpointSummary decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectMutationCheckpointSummary&) const = default;
};

}  // namespace zorvik
