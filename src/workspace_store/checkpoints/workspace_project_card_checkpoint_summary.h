// WorkspaceProjectCardCheckpointSummary: what the recent mutations did to one card, and whether
// the card is on the board now.
//
// JSON keys "card_id", "present_in_current_snapshot", "current_hash",
// "last_mutation_checkpoint_id", "last_mutation_command", "last_mutation_at", "last_change_type",
// "last_before_hash", "last_after_hash", "mutation_count", "added_count", "removed_count",
// "updated_count". The current_hash and last_* keys are optional (left out when absent, absent and
// null alike on decoding); the others are required. A plain value.
#pragma once

#include <optional>
#include <string>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_mutation_change_type.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectCardCheckpointSummary {
  std::string cardID;  // upper-case
  bool presentInCurrentSnapshot = false;
  std::optional<std::string> currentHash;  // the card hash now; absent when not on the board
  // From the newest mutation in the window that changed the card.
  std::optional<std::string> lastMutationCheckpointID;
  std::optional<std::string> lastMutationCommand;
  std::optional<Date> lastMutationAt;
  std::optional<WorkspaceProjectMutationChangeType> lastChangeType;
  std::optional<std::string> lastBeforeHash;
  std::optional<std::string> lastAfterHash;
  // Over all mutations in the window.
  int mutationCount = 0;
  int addedCount = 0;
  int removedCount = 0;
  int updatedCount = 0;

  static WorkspaceProjectCardCheckpointSummary decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectCardCheckpointSummary&) const = default;
};

}  // namespace zorvik
