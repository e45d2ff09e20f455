#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_envelope.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceProjectMutationCheckpointEnvelope WorkspaceProjectMutationCheckpointEnvelope::ok(
    WorkspaceProjectMutationCheckpoint checkpoint) {
  return {WorkspaceProjectCheckpointEnvelopeStatus::ok, std::move(checkpoint), std::nullopt};
}

WorkspaceProjectMutationCheckpointEnvelope WorkspaceProjectMutationCheckpointEnvelope::unavailable(
    std::string message) {
  return {WorkspaceProjectCheckpointEnvelopeStatus::unavailable, std::nullopt, std::move(message)};
}

WorkspaceProjectMutationCheckpointEnvelope WorkspaceProjectMutationCheckpointEnvelope::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceProjectMutationCheckpointEnvelope{
      .status = object.required<WorkspaceProjectCheckpointEnvelopeStatus>("status"),
      .checkpoint = object.optional<WorkspaceProjectMutationCheckpoint>("checkpoint"),
      .message = object.optional<std::string>("message"),
  };
}

AnyCodableValue WorkspaceProjectMutationCheckpointEnvelope::encode() const {
  return ObjectEncoder()
      .add("status", status)
      .addNullable("checkpoint", checkpoint)
      .addNullable("message", message)
      .build();
}

}  // namespace zorvik
