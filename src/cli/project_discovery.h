// Which project an agent command works on: an explicit path, else ZORVIK_PROJECT_PATH, else the
// live heartbeats that the desktop application leaves on disk.
//
// Heartbeat discovery reads the per-user runtime registry file, then walks the scan roots for
// project folders holding `.zorvik-control/runtime.json`. Stale heartbeats (more than 5 seconds
// from now either way), records that do not decode and projects whose folder is gone are passed
// over silently; nothing here throws except resolveAgentProjectURL. Reads the process environment
// and the working directory; safe to call from several threads.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "tools/bridge/runtime_heartbeat.h"

namespace zorvik {

// The command line reads heartbeat files with the record the application writes.
using RuntimeHeartbeatRecord = RuntimeHeartbeat;

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

struct RuntimeDiscoveryCandidate {
  std::filesystem::path url;  // the standardised project folder
  RuntimeHeartbeatRecord heartbeat;
  bool runtimeConnected = false;
  std::string source;  // "runtime_registry" or "runtime_scan"
};

// The project the user is looking at, or nullopt. A ZORVIK_PROJECT_PATH that is not blank answers
// at once with its value exactly as written (source "env", the folder not checked, `appBundlePath`
// ignored); otherwise discoverProjectFromRuntime decides.
std::optional<DiscoveredProject> discoverCurrentProject(
    const std::optional<std::string>& appBundlePath);

// The best live heartbeat among the registry files and the scan roots. With an `appBundlePath`
// that is not blank, only heartbeats of that bundle's identifier count, and a path whose
// identifier cannot be read yields nothing at all.
std::optional<DiscoveredProject> discoverProjectFromRuntime(
    const std::optional<std::string>& appBundlePath);

// The standardised folder of an agent command: `explicitPath` when it is not blank, else the
// discovered project (none: ZorvikCLIError::runtimeUnavailable). The folder must exist, else
// invalidArguments("agent commands require an existing project directory.").
std::filesystem::path resolveAgentProjectURL(const std::optional<std::string>& explicitPath,
                                             const std::optional<std::string>& appBundlePath);

// CFBundleIdentifier of `<path>/Contents/Info.plist` (XML or binary) for the trimmed path;
// nullopt for an absent or blank path, a missing or unreadable property list, or a missing key.
std::optional<std::string> resolveBundleIdentifier(const std::optional<std::string>& appBundlePath);

// The runtime registry files, distinct, in the order they are read:
// <application support>/Zorvik/active-runtime.json.
std::vector<std::filesystem::path> candidateRuntimeRegistryURLs();

// The folders whose descendants are scanned, in order: <application support>/Zorvik and the
// working directory. Not filtered for existence.
std::vector<std::filesystem::path> candidateProjectRoots();

// The selection rule: whether `candidate`, met after `best`, replaces it. Foreground beats
// background; otherwise only a strictly later timestamp wins.
bool isPreferredCandidate(const RuntimeDiscoveryCandidate& candidate,
                          const RuntimeDiscoveryCandidate& best);

}  // namespace zorvik
