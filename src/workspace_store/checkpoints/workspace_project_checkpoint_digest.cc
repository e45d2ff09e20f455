#include "workspace_store/checkpoints/workspace_project_checkpoint_digest.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceProjectCheckpointDigest WorkspaceProjectCheckpointDigest::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectCheckpointDigest{
      .projectPath = object.required<std::string>("project_path"),
      .latestProjectCheckpoint =
          object.optional<WorkspaceProjectStateCheckpoint>("latest_project_checkpoint"),
      .recentProjectCheckpoints = object.required<std::vector<WorkspaceProjectStateCheckpoint>>(
          "recent_project_checkpoints"),
      .recentMutationCheckpoints =
          object.required<std::vector<WorkspaceProjectMutationCheckpointSummary>>(
              "recent_mutation_checkpoints"),
      .cardCheckpointSummaries =
          object.required<std::vector<WorkspaceProjectCardCheckpointSummary>>(
              "card_checkpoint_summaries"),
      .generatedAt = object.required<Date>("generated_at"),
  };
}

AnyCodableValue WorkspaceProjectCheckpointDigest::encode() const {
  return ObjectEncoder()
      .add("project_path", projectPath)
      .add("latest_project_checkpoint", latestProjectCheckpoint)
      .add("recent_project_checkpoints", recentProjectCheckpoints)
      .add("recent_mutation_checkpoints", recentMutationCheckpoints)
      .add("card_checkpoint_summaries", cardCheckpointSummaries)
      .add("generated_at", generatedAt)
      .build();
}

}  // namespace zorvik
