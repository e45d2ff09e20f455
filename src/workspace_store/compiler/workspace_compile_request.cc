#include "workspace_store/compiler/workspace_compile_request.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceCompileRequest WorkspaceCompileRequest::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceCompileRequest{
      .projectPath = object.optional<std::string>("project_path"),
      .mode = object.value("mode", WorkspaceCompileMode::incremental),
      .changedPaths = object.optional<std::vector<std::string>>("changed_paths"),
      .includeWarnings = object.value("include_warnings", true),
      .maxDiagnostics = object.value<int64_t>("max_diagnostics", 200),
  };
}

AnyCodableValue WorkspaceCompileRequest::encode() const {
  return ObjectEncoder()
      .add("project_path", projectPath)
      .add("mode", mode)
      .add("changed_paths", changedPaths)
      .add("include_warnings", includeWarnings)
      .add("max_diagnostics", maxDiagnostics)
      .build();
}

}  // namespace zorvik
