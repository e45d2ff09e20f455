#include "cli/project_commands.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <utility>

#include "cli/project_discovery.h"
#include "cli/tool_result_reporting.h"
#include "cli/zorvik_cli_error.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"
#include "tools/layout/focus_card_tool.h"
#include "tools/layout/get_group_layout_tool.h"
#include "tools/layout/list_card_layouts_tool.h"
#include "tools/layout/screenshot_tool.h"
#include "tools/layout/viewport_state_tool.h"
#include "tools/project/compile_project_tool.h"
#include "workspace_store/compiler/workspace_project_compiler.h"

namespace zorvik {
namespace {

constexpr int kValidationFailureStatus = 5;
constexpr int kProjectInspectFailureStatus = 6;
constexpr int kRuntimeInspectFailureStatus = 7;

// A tool of an inspect command, bound to its default project.
using InspectToolFactory =
    std::function<std::unique_ptr<AgentTool>(const std::filesystem::path& projectURL)>;

// What one inspect command offers.
struct InspectCommand {
  std::string missingProjectMessage;
  std::string unknownToolPrefix;
  std::vector<std::pair<std::string, InspectToolFactory>> tools;
  int failureStatus;
};

template <class Tool, class... Arguments>
std::pair<std::string, InspectToolFactory> inspectTool(std::string name, Arguments... arguments) {
  return {std::move(name), [=](const std::filesystem::path& projectURL) {
            return std::make_unique<Tool>(arguments..., projectURL);
          }};
}

const InspectCommand& projectInspect() {
  static const InspectCommand command{
      "project inspect requires project_path.",
      "Unknown project inspect tool: ",
      {inspectTool<CompileProjectTool>("compile_project", WorkspaceProjectCompiler()),
       inspectTool<ListCardLayoutsTool>("list_card_layouts"),
       inspectTool<GetGroupLayoutTool>("get_group_layout")},
      kProjectInspectFailureStatus};
  return command;
}

// The runtime tools share one bridge (the default one: it holds no state).
const InspectCommand& runtimeInspect() {
  static const InspectCommand command{
      "runtime inspect requires project_path.",
      "Unknown runtime inspect tool: ",
      {inspectTool<ViewportStateTool>("viewport_state"), inspectTool<FocusCardTool>("focus_card"),
       inspectTool<ScreenshotTool>("screenshot")},
      kRuntimeInspectFailureStatus};
  return command;
}

// The arguments with `project_path` filled in: the caller's own, else --project, else the
// discovered project.
AnyCodableValue argumentsWithProjectPath(const InspectOptions& options,
                                         const InspectCommand& command) {
  AnyCodableValue arguments = options.arguments;
  JSONObject& members = *arguments.asObject();
  if (!members.contains("project_path")) {
    if (options.projectPath && !trimWhitespaceAndNewlines(*options.projectPath).empty()) {
      members.set("project_path", *options.projectPath);
    } else {
      auto discovered = discoverCurrentProject(options.appBundlePath);
      if (!discovered) throw ZorvikCLIError::runtimeUnavailable();
      members.set("project_path", discovered->projectPath);
    }
  }
  const AnyCodableValue* path = members.find("project_path");
  if (!path->asString()) throw ZorvikCLIError::invalidArguments(command.missingProjectMessage);
  return arguments;
}

void runInspect(const InspectOptions& options, const InspectCommand& command, std::ostream& out) {
  const AnyCodableValue arguments = argumentsWithProjectPath(options, command);
  const std::filesystem::path projectURL =
      standardizedPath(*arguments.member("project_path")->asString());
  const auto& tools = command.tools;
  const auto entry = std::find_if(tools.begin(), tools.end(),
                                  [&](const auto& tool) { return tool.first == options.toolName; });
  if (entry == tools.end()) {
    throw ZorvikCLIError::invalidArguments(command.unknownToolPrefix + options.toolName);
  }
  const std::unique_ptr<AgentTool> tool = entry->second(projectURL);
  reportToolResult(out, tool->run(arguments, AgentToolContext::forSingleCall()),
                   command.failureStatus);
}

// The text report: the counts, then one line per reported diagnostic.
void printValidationReport(std::ostream& out, const WorkspaceCompileResult& result) {
  const WorkspaceCompileSummary& summary = result.summary;
  out << "Status: " << rawValue(result.status) << '\n'
      << "Cards: " << summary.cardCount << '\n'
      << "Files checked: " << summary.checkedFiles << '\n'
      << "Errors: " << summary.errorCount << '\n'
      << "Warnings: " << summary.warningCount << '\n'
      << "Elapsed: " << summary.elapsedMS << "ms\n";
  if (result.diagnostics.empty()) return;
  out << "\nDiagnostics:\n";
  for (const WorkspaceCompileDiagnostic& diagnostic : result.diagnostics) {
    out << "  [" << rawValue(diagnostic.severity) << "] " << diagnostic.code << ": "
        << diagnostic.message;
    if (!diagnostic.path.empty()) out << " (" << diagnostic.path << ")";
    if (diagnostic.cardID) out << " card=" << diagnostic.cardID->uppercaseString();
    if (diagnostic.hint) out << " hint: " << *diagnostic.hint;
    out << '\n';
  }
}

}  // namespace

void runProjectValidate(const ProjectValidateOptions& options, std::ostream& out) {
  const std::filesystem::path projectURL = standardizedPath(options.projectPath);
  std::error_code error;
  if (!std::filesystem::is_directory(projectURL, error)) {
    throw ZorvikCLIError::invalidArguments(
        "project validate expects an existing project directory path.");
  }
  const WorkspaceCompileRequest request{
      .projectPath = projectURL.string(),
      .mode = WorkspaceCompileMode::full,
      .includeWarnings = options.includeWarnings,
      .maxDiagnostics = options.maxDiagnostics,
  };
  const WorkspaceCompileResult result =
      WorkspaceProjectCompiler(WorkspaceProjectSnapshotStore()).compile(projectURL, request);
  if (options.asJSON) {
    out << result.encode().jsonString().value_or("{}") << '\n';
  } else {
    printValidationReport(out, result);
  }
  if (result.status == WorkspaceCompileStatus::error) {
    throw ZorvikCLIError::processFailed(kValidationFailureStatus);
  }
}

void runProjectInspect(const InspectOptions& options, std::ostream& out) {
  runInspect(options, projectInspect(), out);
}

void runRuntimeInspect(const InspectOptions& options, std::ostream& out) {
  runInspect(options, runtimeInspect(), out);
}

}  // namespace zorvik
