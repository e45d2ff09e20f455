// Which project an agent command works on: an explicit path, else ZORVIK_PROJECT_PATH, else the
// live heartbeats of the desktop application.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"

namespace zorvik {

struct DiscoveredProject {
  std::string projectPath;
  std::string source;  // "env", "runtime_registry" or "runtime_scan"
  bool runtimeConnected = false;
  std::optional<Date> heartbeatAt;
  bool isForeground = false;
  std::optional<std::string> bundleIdentifier;
  std::optional<int64_t> processID;

  AnyCodableValue encode() const;
};

// The project the user is looking at, or nullopt. A non-blank ZORVIK_PROJECT_PATH answers at once
// with its value as written. Heartbeat discovery is not part of this build yet: without the
// variable there is no answer.
std::optional<DiscoveredProject> discoverCurrentProject(
    const std::optional<std::string>& appBundlePath);

// The standardised folder of an agent command: `explicitPath` when it is not blank, else the
// discovered project (none: ZorvikCLIError::runtimeUnavailable). The folder must exist, else
// invalidArguments("agent commands require an existing project directory.").
std::filesystem::path resolveAgentProjectURL(const std::optional<std::string>& explicitPath,
                                             const std::optional<std::string>& appBundlePath);

}  // namespace zorvik
