#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_summary.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceProjectMutationCheckpointSummary WorkspaceProjectMutationCheckpointSummary::of(
    const WorkspaceProjectMutationCheckpoint& checkpoint) {
  return WorkspaceProjectMutationCheckpointSummary{
      .checkpointID = checkpoint.checkpointID,
      .command = checkpoint.command,
      .createdAt = checkpoint.createdAt,
      .targetCardIDs = checkpoint.targetCardIDs,
      .changedCardIDs = checkpoint.changedCardIDs,
      .addedCount = checkpoint.addedCount,
      .removedCount = checkpoint.removedCount,
      .updatedCount = checkpoint.updatedCount,
      .changedAny = checkpoint.changedAny,
      .beforeStateHash = checkpoint.beforeStateHash,
      .afterStateHash = checkpoint.afterStateHash,
  };
}

WorkspaceProjectMutationCheckpointSummary WorkspaceProjectMutationCheckpointSummary::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectMutationCheckpointSummary{
      .checkpointID = object.required<std::string>("checkpoint_id"),
      .command = object.required<std::string>("command"),
      .createdAt = object.required<Date>("created_at"),
      .targetCardIDs = object.required<std::vector<std::string>>("target_card_ids"),
      .changedCardIDs = object.required<std::vector<std::string>>("changed_card_ids"),
      .addedCount = object.required<int>("added_count"),
      .removedCount = object.required<int>("removed_count"),
      .updatedCount = object.required<int>("updated_count"),
      .changedAny = object.required<bool>("changed_any"),
      .beforeStateHash = object.required<std::string>("before_state_hash"),
      .afterStateHash = object.required<std::string>("after_state_hash"),
  };
}

AnyCodableValue WorkspaceProjectMutationCheckpointSummary::encode() const {
  return ObjectEncoder()
      .add("checkpoint_id", checkpointID)
      .add("command", command)
      .add("created_at", createdAt)
      .add("target_card_ids", targetCardIDs)
      .add("changed_card_ids", changedCardIDs)
      .add("added_count", addedCount)
      .add("removed_count", removedCount)
      .add("updated_count", updatedCount)
      .add("changed_any", changedAny)
      .add("before_state_hash", beforeStateHash)
      .add("after_state_hash", afterStateHash)
      .build();
}

}  // namespace zorvik
