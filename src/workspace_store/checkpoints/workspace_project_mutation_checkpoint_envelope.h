// WorkspaceProjectMutationCheckpointEnvelope: a whole mutation checkpoint, or why there is none.
//
// JSON keys "status" ("ok", "unavailable"), "checkpoint" (the full record) and "message". Both
// optional keys are always written, as null when absent; on decoding absent and null mean the
// same. A plain value.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_checkpoint_envelope_status.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectMutationCheckpointEnvelope {
  WorkspaceProjectCheckpointEnvelopeStatus status = WorkspaceProjectCheckpointEnvelopeStatus::ok;
  std::optional<WorkspaceProjectMutationCheckpoint> checkpoint;
  std::optional<std::string> message;

  // Status "ok" with the checkpoint and no message.
  static WorkspaceProjectMutationCheckpointEnvelope ok(
      WorkspaceProjectMutationCheckpoint checkpoint);
  // Status "unavailable", no checkpoint, the message as given.
  static WorkspaceProjectMutationCheckpointEnvelope unavailable(std::string message);

  static WorkspaceProjectMutationCheckpointEnvelope decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectMutationCheckpointEnvelope&) const = default;
};

}  // namespace zorvik
