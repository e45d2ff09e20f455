#include "cli/project_discovery.h"

#include <cstdlib>

#include "cli/zorvik_cli_error.h"
#include "foundation/json/value_encoder.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"

namespace zorvik {

AnyCodableValue DiscoveredProject::encode() const {
  return ObjectEncoder()
      .add("projectPath", projectPath)
      .add("source", source)
      .add("runtimeConnected", runtimeConnected)
      .add("heartbeatAt", heartbeatAt)
      .add("isForeground", isForeground)
      .add("bundleIdentifier", bundleIdentifier)
      .add("processID", processID)
      .build();
}

std::optional<DiscoveredProject> discoverCurrentProject(const std::optional<std::string>&) {
  const char* fromEnvironment = std::getenv("ZORVIK_PROJECT_PATH");
  if (fromEnvironment && !trimWhitespaceAndNewlines(fromEnvironment).empty()) {
    return DiscoveredProject{.projectPath = fromEnvironment, .source = "env"};
  }
  return std::nullopt;
}

std::filesystem::path resolveAgentProjectURL(const std::optional<std::string>& explicitPath,
                                             const std::optional<std::string>& appBundlePath) {
  std::string path;
  if (explicitPath && !trimWhitespaceAndNewlines(*explicitPath).empty()) {
    path = *explicitPath;
  } else {
    auto discovered = discoverCurrentProject(appBundlePath);
    if (!discovered) throw ZorvikCLIError::runtimeUnavailable();
    path = discovered->projectPath;
  }
  std::filesystem::path folder = standardizedPath(path);
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    throw ZorvikCLIError::invalidArguments("agent commands require an existing project directory.");
  }
  return folder;
}

}  // namespace zorvik
