// WorkspaceProjectCheckpointDigest: a bounded picture of a board's progress for planners: the
// recent state checkpoints, the recent mutations, and for each card what last happened to it.
//
// JSON keys "project_path", "latest_project_checkpoint" (optional: left out when absent, absent and
// null alike on decoding), "recent_project_checkpoints", "recent_mutation_checkpoints",
// "card_checkpoint_summaries", "generated_at". A plain value.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_card_checkpoint_summary.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_summary.h"
#include "workspace_store/checkpoints/workspace_project_state_checkpoint.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectCheckpointDigest {
  std::string projectPath;
  // The first of recentProjectCheckpoints.
  std::optional<WorkspaceProjectStateCheckpoint> latestProjectCheckpoint;
  std::vector<WorkspaceProjectStateCheckpoint> recentProjectCheckpoints;             // newest first
  std::vector<WorkspaceProjectMutationCheckpointSummary> recentMutationCheckpoints;  // newest first
  std::vector<WorkspaceProjectCardCheckpointSummary> cardCheckpointSummaries;
  Date generatedAt;

  static WorkspaceProjectCheckpointDigest decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectCheckpointDigest&) const = default;
};

}  // namespace zorvik
