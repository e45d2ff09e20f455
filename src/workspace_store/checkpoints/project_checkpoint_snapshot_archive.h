// ProjectCheckpointSnapshotArchive: the full board of a project state checkpoint, enough to see
// the whole state again.
//
// JSON keys "checkpoint_id", "created_at", "trigger", "reason" (optional), "state_hash",
// "project_fingerprint", "metadata" (ProjectMetadata in its own encoding), "folders" and "cards".
// Folders are written with the keys "folder_id", "path", "viewport_center", "zoom_level"; cards
// with "id", "parent_id", "title", "created_at", "path", "folder_id", "frame", "z_index",
// "snap_constraints", "payload", "group_stacks". Absent optionals are left out; ids are upper-case
// UUID text; snap constraints, group stacks and the payload keep their own encodings. Decoding
// requires every non-optional key and throws DecodingError otherwise. A plain value.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_record.h"
#include "workspace_store/checkpoints/workspace_project_checkpoint_trigger.h"
#include "workspace_store/folder_record.h"
#include "workspace_store/project_metadata.h"

namespace zorvik {

class ValueDecoder;

struct ProjectCheckpointSnapshotArchive {
  std::string checkpointID;
  Date createdAt;
  WorkspaceProjectCheckpointTrigger trigger = WorkspaceProjectCheckpointTrigger::onDemand;
  std::optional<std::string> reason;
  std::string stateHash;
  std::string projectFingerprint;
  ProjectMetadata metadata;
  std::vector<FolderRecord> folders;
  std::vector<CardRecord> cards;

  static ProjectCheckpointSnapshotArchive decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const ProjectCheckpointSnapshotArchive&) const = default;
};

}  // namespace zorvik
