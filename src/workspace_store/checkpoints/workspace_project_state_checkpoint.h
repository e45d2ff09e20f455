// WorkspaceProjectStateCheckpoint: a small record of a board's state at one moment: its state
// hash, fingerprint and counts, and where its full archive was written, if one was.
//
// JSON keys "checkpoint_id", "created_at" (ISO 8601, whole seconds), "project_path", "trigger",
// "reason", "state_hash", "project_fingerprint", "card_count", "folder_count", "checked_files",
// "snapshot_path"; reason and snapshot_path are optional (left out when absent, absent and null
// alike on decoding), the others required. snapshot_path is relative to the project root; the
// archive it names may have been pruned since, which leaves the record valid. A plain value.
#pragma once

#include <optional>
#include <string>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_checkpoint_trigger.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectStateCheckpoint {
  std::string checkpointID;  // a lower-case UUID
  Date createdAt;
  std::string projectPath;  // the resolved project root
  WorkspaceProjectCheckpointTrigger trigger = WorkspaceProjectCheckpointTrigger::onDemand;
  std::optional<std::string> reason;  // trimmed, never empty
  std::string stateHash;
  std::string projectFingerprint;
  int cardCount = 0;
  int folderCount = 0;
  int checkedFiles = 0;
  std::optional<std::string> snapshotPath;

  static WorkspaceProjectStateCheckpoint decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectStateCheckpoint&) const = default;
};

}  // namespace zorvik
