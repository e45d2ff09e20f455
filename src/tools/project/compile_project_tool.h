// compile_project: validates a project folder headlessly and answers with the compiler's
// WorkspaceCompileResult (status, compile_token, summary, diagnostics).
//
// The project is the input's `project_path` (standardised) when given, else the default project
// of the session; with neither, run throws std::invalid_argument("compile_project requires
// project_path when session is not bound."). Undecodable input throws DecodingError. A project
// that fails validation or loading is an answer with status "error", never a throw. Immutable
// after construction; concurrent runs are safe (execution "parallel").
#pragma once

#include <filesystem>
#include <optional>

#include "tools/framework/agent_tool.h"
#include "workspace_store/compiler/workspace_project_compiler.h"

namespace zorvik {

class CompileProjectTool final : public AgentTool {
 public:
  CompileProjectTool(WorkspaceProjectCompiler compiler,
                     std::optional<std::filesystem::path> defaultProjectURL);

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: WorkspaceCompileRequest. Answer: WorkspaceCompileResult.
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  WorkspaceProjectCompiler compiler_;
  std::optional<std::filesystem::path> defaultProjectURL_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
