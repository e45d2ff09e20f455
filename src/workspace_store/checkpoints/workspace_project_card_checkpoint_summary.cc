#include "workspace_store/checkpoints/workspace_project_card_checkpoint_summary.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceProjectCardCheckpointSummary WorkspaceProjectCardCheckpointSummary::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectCardCheckpointSummary{
      .cardID = object.required<std::string>("card_id"),
      .presentInCurrentSnapshot = object.required<bool>("present_in_current_snapshot"),
      .currentHash = object.optional<std::string>("current_hash"),
      .lastMutationCheckpointID = object.optional<std::string>("last_mutation_checkpoint_id"),
      .lastMutationCommand = object.optional<std::string>("last_mutation_command"),
      .lastMutationAt = object.optional<Date>("last_mutation_at"),
      .lastChangeType = object.optional<WorkspaceProjectMutationChangeType>("last_change_type"),
      .lastBeforeHash = object.optional<std::string>("last_before_hash"),
      .lastAfterHash = object.optional<std::string>("last_after_hash"),
      .mutationCount = object.required<int>("mutation_count"),
      .addedCount = object.required<int>("added_count"),
      .removedCount = object.required<int>("removed_count"),
      .updatedCount = object.required<int>("updated_count"),
  };
}

AnyCodableValue WorkspaceProjectCardCheckpointSummary::encode() const {
  return ObjectEncoder()
      .add("card_id", cardID)
      .add("present_in_current_snapshot", presentInCurrentSnapshot)
      .add("current_hash", currentHash)
      .add("last_mutation_checkpoint_id", lastMutationCheckpointID)
      .add("last_mutation_command", lastMutationCommand)
      .add("last_mutation_at", lastMutationAt)
      .add("last_change_type", lastChangeType)
      .add("last_before_hash", lastBeforeHash)
      .add("last_after_hash", lastAfterHash)
      .add("mutation_count", mutationCount)
      .add("added_count", addedCount)
      .add("removed_count", removedCount)
      .add("updated_count", updatedCount)
      .build();
}

}  // namespace zorvik
