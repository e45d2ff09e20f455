// WorkspaceProjectMutationCheckpointRef: the compact reference to a mutation checkpoint that tool
// results carry. JSON keys "checkpoint_id", "command", "before_state_hash", "after_state_hash",
// "changed_any"; all required on decoding. A plain value.
#pragma once

#include <string>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectMutationCheckpointRef {
  std::string checkpointID;
  std::string command;
  std::string beforeStateHash;
  std::string afterStateHash;
  bool changedAny = false;

  static WorkspaceProjectMutationCheckpointRef of(
      const WorkspaceProjectMutationCheckpoint& checkpoint);

  static WorkspaceProjectMutationCheckpointRef decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectMutationCheckpointRef&) const = default;
};

}  // namespace zorvik
