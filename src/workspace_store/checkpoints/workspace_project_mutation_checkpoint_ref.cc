#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_ref.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceProjectMutationCheckpointRef WorkspaceProjectMutationCheckpointRef::of(
    const WorkspaceProjectMutationCheckpoint& checkpoint) {
  return WorkspaceProjectMutationCheckpointRef{
      .checkpointID = checkpoint.checkpointID,
      .command = checkpoint.command,
      .beforeStateHash = checkpoint.beforeStateHash,
      .afterStateHash = checkpoint.afterStateHash,
      .changedAny = checkpoint.changedAny,
  };
}

WorkspaceProjectMutationCheckpointRef WorkspaceProjectMutationCheckpointRef::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectMutationCheckpointRef{
      .checkpointID = object.required<std::string>("checkpoint_id"),
      .command = object.required<std::string>("command"),
      .beforeStateHash = object.required<std::string>("before_state_hash"),
      .afterStateHash = object.required<std::string>("after_state_hash"),
      .changedAny = object.required<bool>("changed_any"),
  };
}

AnyCodableValue WorkspaceProjectMutationCheckpointRef::encode() const {
  return ObjectEncoder()
      .add("checkpoint_id", checkpointID)
      .add("command", command)
      .add("before_state_hash", beforeStateHash)
      .add("after_state_hash", afterStateHash)
      .add("changed_any", changedAny)
      .build();
}

}  // namespace zorvik
