// WorkspaceProjectMutationCheckpointRefEnvelope: the value of `project_checkpoint_ref` in a
// mutation tool's result: a reference to the mutation's checkpoint, or why there is none.
//
// JSON keys "status" ("ok", "unavailable"), "checkpoint" (a reference) and "message". Both optional
// keys are always written, as null when absent, so that every result has the same shape as the
// tools' failure answers; on decoding absent and null mean the same. A plain value.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/checkpoints/workspace_project_checkpoint_envelope_status.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_ref.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceProjectMutationCheckpointRefEnvelope {
  WorkspaceProjectCheckpointEnvelopeStatus status = WorkspaceProjectCheckpointEnvelopeStatus::ok;
  std::optional<WorkspaceProjectMutationCheckpointRef> checkpoint;
  std::optional<std::string> message;

  // Status "ok" with the reference of `checkpoint` and no message.
  static WorkspaceProjectMutationCheckpointRefEnvelope ok(
      const WorkspaceProjectMutationCheckpoint& checkpoint);
  // Status "unavailable", no checkpoint, the message as given.
  static WorkspaceProjectMutationCheckpointRefEnvelope unavailable(std::string message);

  static WorkspaceProjectMutationCheckpointRefEnvelope decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceProjectMutationCheckpointRefEnvelope&) const = default;
};

}  // namespace zorvik
