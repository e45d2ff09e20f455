#include "workspace_store/workspace_compile_diagnostic.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceCompileDiagnostic WorkspaceCompileDiagnostic::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceCompileDiagnostic{
      .severity = object.required<WorkspaceCompileSeverity>("severity"),
      .code = object.required<std::string>("code"),
      .message = object.required<std::string>("message"),
      .path = object.required<std::string>("path"),
      .cardID = object.optional<Uuid>("card_id"),
      .hint = object.optional<std::string>("hint"),
      .owner = object.required<WorkspaceCompileDiagnosticOwner>("owner"),
      .actionability = object.required<WorkspaceCompileDiagnosticActionability>("actionability"),
  };
}

AnyCodableValue WorkspaceCompileDiagnostic::encode() const {
  return ObjectEncoder()
      .add("severity", severity)
      .add("code", code)
      .add("message", message)
      .add("path", path)
      .add("card_id", cardID)
      .add("hint", hint)
      .add("owner", owner)
      .add("actionability", actionability)
      .build();
}

}  // namespace zorvik
