#include "workspace_store/checkpoints/workspace_project_state_checkpoint.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceProjectStateCheckpoint WorkspaceProjectStateCheckpoint::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectStateCheckpoint{
      .checkpointID = object.required<std::string>("checkpoint_id"),
      .createdAt = object.required<Date>("created_at"),
      .projectPath = object.required<std::string>("project_path"),
      .trigger = object.required<WorkspaceProjectCheckpointTrigger>("trigger"),
      .reason = object.optional<std::string>("reason"),
      .stateHash = object.required<std::string>("state_hash"),
      .projectFingerprint = object.required<std::string>("project_fingerprint"),
      .cardCount = object.required<int>("card_count"),
      .folderCount = object.required<int>("folder_count"),
      .checkedFiles = object.required<int>("checked_files"),
      .snapshotPath = object.optional<std::string>("snapshot_path"),
  };
}

AnyCodableValue WorkspaceProjectStateCheckpoint::encode() const {
  return ObjectEncoder()
      .add("checkpoint_id", checkpointID)
      .add("created_at", createdAt)
      .add("project_path", projectPath)
      .add("trigger", trigger)
      .add("reason", reason)
      .add("state_hash", stateHash)
      .add("project_fingerprint", projectFingerprint)
      .add("card_count", cardCount)
      .add("folder_count", folderCount)
      .add("checked_files", checkedFiles)
      .add("snapshot_path", snapshotPath)
      .build();
}

}  // namespace zorvik
