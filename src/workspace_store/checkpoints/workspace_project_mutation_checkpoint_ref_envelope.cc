#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_ref_envelope.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceProjectMutationCheckpointRefEnvelope WorkspaceProjectMutationCheckpointRefEnvelope::ok(
    const WorkspaceProjectMutationCheckpoint& checkpoint) {
  return {WorkspaceProjectCheckpointEnvelopeStatus::ok,
          WorkspaceProjectMutationCheckpointRef::of(checkpoint), std::nullopt};
}

WorkspaceProjectMutationCheckpointRefEnvelope
WorkspaceProjectMutationCheckpointRefEnvelope::unavailable(std::string message) {
  return {WorkspaceProjectCheckpointEnvelopeStatus::unavailable, std::nullopt, std::move(message)};
}

WorkspaceProjectMutationCheckpointRefEnvelope WorkspaceProjectMutationCheckpointRefEnvelope::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectMutationCheckpointRefEnvelope{
      .status = object.required<WorkspaceProjectCheckpointEnvelopeStatus>("status"),
      .checkpoint = object.optional<WorkspaceProjectMutationCheckpointRef>("checkpoint"),
      .message = object.optional<std::string>("message"),
  };
}

AnyCodableValue WorkspaceProjectMutationCheckpointRefEnvelope::encode() const {
  return ObjectEncoder()
      .add("status", status)
      .addNullable("checkpoint", checkpoint)
      .addNullable("message", message)
      .build();
}

}  // namespace zorvik
