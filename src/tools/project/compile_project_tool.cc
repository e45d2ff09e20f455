#include "tools/project/compile_project_tool.h"

#include "foundation/json/value_decoder.h"
#include "tools/framework/json_schema.h"
#include "tools/framework/tool_project_url.h"
#include "tools/project/compile_result_schemas.h"

namespace zorvik {
namespace {

constexpr const char* kToolName = "compile_project";

AgentToolSpec compileProjectSpec() {
  return AgentToolSpec{
      .name = kToolName,
      .summary = "Compile and validate a Zorvik project directory (parse + semantic checks).",
      .inputSchema = schema::object({
          {"project_path",
           schema::string("Project folder; defaults to the session's project when bound.")},
          {"mode", schema::stringEnum({"incremental", "full"},
                                      "Default \"incremental\"; every compile checks the whole "
                                      "project.")},
          {"changed_paths",
           schema::array(schema::string(), "Paths edited since the last compile.")},
          {"include_warnings",
           schema::boolean("Default true; false reports errors only (counts stay complete).")},
          {"max_diagnostics",
           schema::integer("Report at most this many diagnostics (default 200, minimum 1).")},
      }),
      .outputSchema = compileResultSchema(),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{},
              JSONObject{{"mode", "full"}, {"include_warnings", false}, {"max_diagnostics", 50}},
          },
      .notes = "Use before write operations or after direct file edits.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

CompileProjectTool::CompileProjectTool(WorkspaceProjectCompiler compiler,
                                       std::optional<std::filesystem::path> defaultProjectURL)
    : compiler_(compiler),
      defaultProjectURL_(std::move(defaultProjectURL)),
      spec_(compileProjectSpec()) {}

AnyCodableValue CompileProjectTool::run(const AnyCodableValue& input,
                                        const AgentToolContext&) const {
  const auto request = decodeValue<WorkspaceCompileRequest>(input);
  const std::filesystem::path projectURL =
      resolveToolProjectURL(input, defaultProjectURL_, kToolName);
  return compiler_.compile(projectURL, request).encode();
}

}  // namespace zorvik
