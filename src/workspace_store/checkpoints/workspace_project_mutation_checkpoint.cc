#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_summary.h"

namespace zorvik {

// The checkpoint is its summary plus "project_path" and "card_diffs".
WorkspaceProjectMutationCheckpoint WorkspaceProjectMutationCheckpoint::decode(
    const ValueDecoder& decoder) {
  auto summary = WorkspaceProjectMutationCheckpointSummary::decode(decoder);
  auto object = decoder.object();
  return WorkspaceProjectMutationCheckpoint{
      .checkpointID = std::move(summary.checkpointID),
      .command = std::move(summary.command),
      .createdAt = summary.createdAt,
      .projectPath = object.required<std::string>("project_path"),
      .targetCardIDs = std::move(summary.targetCardIDs),
      .changedCardIDs = std::move(summary.changedCardIDs),
      .addedCount = summary.addedCount,
      .removedCount = summary.removedCount,
      .updatedCount = summary.updatedCount,
      .changedAny = summary.changedAny,
      .beforeStateHash = std::move(summary.beforeStateHash),
      .afterStateHash = std::move(summary.afterStateHash),
      .cardDiffs = object.required<std::vector<WorkspaceProjectMutationCardDiff>>("card_diffs"),
  };
}

AnyCodableValue WorkspaceProjectMutationCheckpoint::encode() const {
  AnyCodableValue value = WorkspaceProjectMutationCheckpointSummary::of(*this).encode();
  value.asObject()->set("project_path", projectPath);
  value.asObject()->set("card_diffs", encodeValue(cardDiffs));
  return value;
}

}  // namespace zorvik
