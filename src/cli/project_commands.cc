#include "cli/project_commands.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "cli/project_discovery.h"
#include "cli/zorvik_cli_error.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"

namespace zorvik {
namespace {

constexpr int kProjectInspectFailureStatus = 6;
constexpr int kRuntimeInspectFailureStatus = 7;

// What one inspect command offers.
struct InspectCommand {
  std::string missingProjectMessage;
  std::string unknownToolPrefix;
  std::vector<std::string> toolNames;
  int failureStatus;
};

const InspectCommand& projectInspect() {
  static const InspectCommand command{"project inspect requires project_path.",
                                      "Unknown project inspect tool: ",
                                      {"compile_project", "list_card_layouts", "get_group_layout"},
                                      kProjectInspectFailureStatus};
  return command;
}

const InspectCommand& runtimeInspect() {
  static const InspectCommand command{"runtime inspect requires project_path.",
                                      "Unknown runtime inspect tool: ",
                                      {"viewport_state", "focus_card", "screenshot"},
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

void runInspect(const InspectOptions& options, const InspectCommand& command, std::ostream&) {
  const AnyCodableValue arguments = argumentsWithProjectPath(options, command);
  const std::filesystem::path projectURL =
      standardizedPath(*arguments.member("project_path")->asString());
  const auto& names = command.toolNames;
  if (std::find(names.begin(), names.end(), options.toolName) == names.end()) {
    throw ZorvikCLIError::invalidArguments(command.unknownToolPrefix + options.toolName);
  }
  // The layout, compile and viewport tools are not part of this build yet; this ends as an
  // unexpected error (exit 1), never as a pretended answer.
  throw std::runtime_error(options.toolName + " is not available in this build yet.");
}

}  // namespace

void runProjectValidate(const ProjectValidateOptions& options, std::ostream&) {
  std::error_code error;
  if (!std::filesystem::is_directory(standardizedPath(options.projectPath), error)) {
    throw ZorvikCLIError::invalidArguments(
        "project validate expects an existing project directory path.");
  }
  throw std::runtime_error("project validate is not available in this build yet.");
}

void runProjectInspect(const InspectOptions& options, std::ostream& out) {
  runInspect(options, projectInspect(), out);
}

void runRuntimeInspect(const InspectOptions& options, std::ostream& out) {
  runInspect(options, runtimeInspect(), out);
}

}  // namespace zorvik
