#include "workspace_store/compiler/workspace_compile_result.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceCompileResult WorkspaceCompileResult::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceCompileResult{
      .status = object.required<WorkspaceCompileStatus>("status"),
      .compileToken = object.required<std::string>("compile_token"),
      .summary = object.required<WorkspaceCompileSummary>("summary"),
      .diagnostics = object.required<std::vector<WorkspaceCompileDiagnostic>>("diagnostics"),
  };
}

AnyCodableValue WorkspaceCompileResult::encode() const {
  return ObjectEncoder()
      .add("status", status)
      .add("compile_token", compileToken)
      .add("summary", summary)
      .add("diagnostics", diagnostics)
      .build();
}

}  // namespace zorvik
