#include "tools/project/create_project_tool.h"

#include <filesystem>
#include <stdexcept>

#include "foundation/atomic_file.h"
#include "foundation/iso8601_date.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"
#include "foundation/uuid.h"
#include "tools/framework/json_schema.h"
#include "tools/project/compile_result_schemas.h"

namespace zorvik {
namespace {

struct CreateProjectRequest {
  std::string projectPath;
  bool overwriteIfExists = false;

  static CreateProjectRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.required<std::string>("project_path"),
            object.value("overwrite_if_exists", false)};
  }
};

AgentToolSpec createProjectSpec() {
  return AgentToolSpec{
      .name = "create_project",
      .summary = "Create a new baseline Zorvik project folder and validate it.",
      .inputSchema = schema::object(
          {
              {"project_path", schema::string("Folder to create; a .zpk extension is dropped.")},
              {"overwrite_if_exists",
               schema::boolean("Default false; true removes an existing target entirely first.")},
          },
          {"project_path"}),
      .outputSchema = schema::object(
          {
              {"status", schema::stringEnum({"ok", "error"})},
              {"project_path", schema::string()},
              {"created", schema::boolean()},
              {"compile_token", schema::string()},
              {"summary", compileSummarySchema()},
          },
          {"status", "project_path", "created", "compile_token", "summary"}),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{{"project_path", "/Users/me/Boards/Research"}},
              JSONObject{{"project_path", "/Users/me/Boards/Scratch"},
                         {"overwrite_if_exists", true}},
          },
      .notes =
          "Writes only the baseline tree (resources/, .zorvik/workspace.json); existing "
          "targets need overwrite_if_exists=true, which deletes them first.",
      .execution = AgentToolExecutionMode::serial,
  };
}

// The workspace document of an empty board.
AnyCodableValue baselineDocument() {
  const std::string now = formatISO8601(currentDate());
  const AnyCodableValue null;
  return JSONObject{
      {"version", 1},
      {"projectId", Uuid::random().uppercaseString()},
      {"createdAt", now},
      {"updatedAt", now},
      {"uiState", JSONObject{{"backgroundStyle", "Dots"},
                             {"viewportCenter", null},
                             {"currentFolderId", null},
                             {"leftSidebarOpen", null},
                             {"chatSidebarWidth", null},
                             {"chatSidebarOpen", null},
                             {"boardAgentGuideCardId", null},
                             {"agentAffinityByScope", JSONObject{}},
                             {"zoomLevelsByFolder", JSONObject{}}}},
      {"entries", AnyCodableValue::Array{}},
  };
}

}  // namespace

CreateProjectTool::CreateProjectTool(WorkspaceProjectCompiler compiler)
    : compiler_(compiler), spec_(createProjectSpec()) {}

AnyCodableValue CreateProjectTool::run(const AnyCodableValue& input,
                                       const AgentToolContext&) const {
  const auto request = decodeValue<CreateProjectRequest>(input);
  const std::string trimmed = trimWhitespaceAndNewlines(request.projectPath);
  if (trimmed.empty()) {
    throw std::invalid_argument("create_project.project_path must be non-empty.");
  }
  std::filesystem::path root = standardizedPath(trimmed);
  if (lowercased(root.extension().string()) == ".zpk") root.replace_extension();

  if (std::filesystem::exists(std::filesystem::symlink_status(root))) {
    if (!request.overwriteIfExists) {
      throw std::invalid_argument(
          "create_project target already exists. Set overwrite_if_exists=true to replace it.");
    }
    std::filesystem::remove_all(root);
  }
  std::filesystem::create_directories(root);
  std::filesystem::create_directories(root / "resources");
  std::filesystem::create_directories(root / ".zorvik");
  writeFileAtomically(root / ".zorvik" / "workspace.json", *baselineDocument().jsonString());

  const WorkspaceCompileResult result = compiler_.compile(
      root,
      WorkspaceCompileRequest{.projectPath = root.string(), .mode = WorkspaceCompileMode::full});
  return ObjectEncoder()
      .add("status", result.status)
      .add("project_path", root.string())
      .add("created", true)
      .add("compile_token", result.compileToken)
      .add("summary", result.summary)
      .build();
}

}  // namespace zorvik
