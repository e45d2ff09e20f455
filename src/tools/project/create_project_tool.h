// create_project: writes the baseline tree of a new project and validates it.
//
// The tree is the root folder, `resources/`, `.zorvik/` and `.zorvik/workspace.json` (version 1, a
// new project id, both dates now, the default uiState with its optional keys null, no entries),
// written pretty-printed with sorted keys and atomically. A `.zpk` extension (any case) is dropped
// from the path before anything else. An existing target is refused unless overwrite_if_exists is
// true, which removes it entirely first.
//
// Answer: status (of the compile), project_path, created (true), compile_token, summary.
// Failures throw: DecodingError for undecodable input; std::invalid_argument with
// "create_project.project_path must be non-empty." or "create_project target already exists. Set
// overwrite_if_exists=true to replace it."; std::filesystem::filesystem_error (a system_error
// with the platform's message) when the file system refuses. Nothing is rolled back, so a failure
// can leave a partial tree. Immutable; runs may happen concurrently on different targets
// (execution "serial", since it writes).
#pragma once

#include "tools/framework/agent_tool.h"
#include "workspace_store/compiler/workspace_project_compiler.h"

namespace zorvik {

class CreateProjectTool final : public AgentTool {
 public:
  explicit CreateProjectTool(WorkspaceProjectCompiler compiler = WorkspaceProjectCompiler());

  const AgentToolSpec& spec() const override { return spec_; }
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  WorkspaceProjectCompiler compiler_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
