#include "cli/discovery_commands.h"

#include "cli/project_discovery.h"
#include "cli/zorvik_cli_error.h"
#include "foundation/json/json_writer.h"
#include "tools/bridge/runtime_control_bridge.h"

namespace zorvik {
namespace {

AnyCodableValue nullableText(const std::optional<std::string>& text) {
  return text ? AnyCodableValue(*text) : AnyCodableValue();
}

}  // namespace

void printCurrentProject(const ProjectCurrentOptions& options, std::ostream& out) {
  const std::optional<DiscoveredProject> project = discoverCurrentProject(options.appBundlePath);
  if (!project) throw ZorvikCLIError::runtimeUnavailable();
  if (options.asJSON) {
    out << project->encode().jsonString().value_or("{}") << '\n';
  } else {
    out << project->projectPath << '\n';
  }
}

void runDoctor(const FlagOnlyOptions& options, std::ostream& out) {
  printDoctorReport(options.asJSON, out);
}

void printDoctorReport(bool asJSON, std::ostream& out) {
  const std::optional<DiscoveredProject> project = discoverCurrentProject(std::nullopt);
  const bool bridge = project && RuntimeControlBridge().isRuntimeAvailable(
                                     std::filesystem::path(project->projectPath));
  const std::optional<std::string> path =
      project ? std::optional(project->projectPath) : std::nullopt;
  const std::optional<std::string> source = project ? std::optional(project->source) : std::nullopt;
  const bool foreground = project && project->isForeground;

  if (asJSON) {
    const AnyCodableValue report = JSONObject{
        {"command", "doctor"},
        {"status", "ok"},
        {"current_project", nullableText(path)},
        {"project_source", nullableText(source)},
        {"project_foreground", foreground},
        {"runtime_write_bridge_available", bridge},
        {"recommended_next_commands", AnyCodableValue::Array{"zorvik project validate <path>",
                                                             "zorvik project inspect <tool> ...",
                                                             "zorvik runtime inspect <tool> ...",
                                                             "zorvik agent list-tools --json"}},
    };
    out << writeJSON(report, JSONStyle::pretty).value_or("{}") << '\n';
    return;
  }
  out << "zorvik doctor\n"
      << "- current project: " << path.value_or("none") << '\n'
      << "- project source: " << source.value_or("none") << '\n'
      << "- project foreground: " << (foreground ? "yes" : "no") << '\n'
      << "- runtime write bridge: " << (bridge ? "available" : "unavailable") << '\n'
      << "- headless validation: zorvik project validate <path>\n"
      << "- headless inspect: zorvik project inspect <tool> ...\n"
      << "- runtime inspect: zorvik runtime inspect <tool> ...\n";
}

}  // namespace zorvik
