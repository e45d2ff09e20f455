#include "cli/project_discovery.h"

#include <plist/plist.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <limits>
#include <memory>
#include <system_error>

#include "cli/zorvik_cli_error.h"
#include "foundation/atomic_file.h"
#include "foundation/json/value_encoder.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"
#include "tools/bridge/runtime_control_bridge.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRegistrySource = "runtime_registry";
constexpr const char* kScanSource = "runtime_scan";

std::optional<std::string> environmentValue(const char* name) {
  const char* value = std::getenv(name);
  if (!value) return std::nullopt;
  return std::string(value);
}

std::optional<fs::path> homeFolder() {
  if (auto home = environmentValue("HOME"); home && !home->empty()) return fs::path(*home);
  long size = sysconf(_SC_GETPW_R_SIZE_MAX);
  std::string buffer(size > 0 ? static_cast<size_t>(size) : 16384, '\0');
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found &&
      found->pw_dir) {
    return fs::path(found->pw_dir);
  }
  return std::nullopt;
}

// $XDG_DATA_HOME when it is an absolute path, else ~/.local/share.
std::optional<fs::path> applicationSupportFolder() {
  if (auto data = environmentValue("XDG_DATA_HOME"); data && fs::path(*data).is_absolute()) {
    return fs::path(*data);
  }
  if (auto home = homeFolder()) return *home / ".local" / "share";
  return std::nullopt;
}

bool isPackage(const std::string& name) {
  const std::string lower = lowercased(name);
  for (std::string_view extension : {".app", ".bundle", ".framework", ".zpk"}) {
    if (lower.size() > extension.size() && lower.ends_with(extension)) return true;
  }
  return false;
}

// Visits every directory below `folder`, depth first, each before its contents and siblings in
// name order. Hidden entries are left out with everything below them; a package is visited but
// not entered; symbolic links are not followed. Entries that cannot be read are passed over.
void forEachDescendantFolder(const fs::path& folder,
                             const std::function<void(const fs::path&)>& visit) {
  std::vector<fs::path> children;
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    const std::string name = it->path().filename().string();
    if (name.starts_with(".")) continue;
    std::error_code statusError;
    if (!fs::is_directory(it->symlink_status(statusError)) || statusError) continue;
    children.push_back(it->path());
  }
  std::sort(children.begin(), children.end());
  for (const fs::path& child : children) {
    visit(child);
    if (!isPackage(child.filename().string())) forEachDescendantFolder(child, visit);
  }
}

// The candidate a heartbeat file stands for, or nullopt when it does not read, is stale, belongs
// to another bundle than `bundleFilter` or names a folder that does not exist.
std::optional<RuntimeDiscoveryCandidate> candidateFrom(
    const fs::path& heartbeatFile, const std::optional<std::string>& bundleFilter,
    const char* source, const RuntimeControlBridge& bridge) {
  std::optional<RuntimeHeartbeatRecord> heartbeat = readRuntimeHeartbeat(heartbeatFile);
  if (!heartbeat || !isHeartbeatFresh(heartbeat->timestamp, currentDate())) return std::nullopt;
  if (bundleFilter && (!heartbeat->bundleIdentifier ||
                       lowercased(*heartbeat->bundleIdentifier) != lowercased(*bundleFilter))) {
    return std::nullopt;
  }
  fs::path folder = standardizedPath(heartbeat->projectPath);
  std::error_code error;
  if (!fs::is_directory(folder, error)) return std::nullopt;
  const bool connected = bridge.isRuntimeAvailable(folder);
  return RuntimeDiscoveryCandidate{std::move(folder), std::move(*heartbeat), connected, source};
}

struct PlistDeleter {
  void operator()(plist_t plist) const { plist_free(plist); }
};

}  // namespace

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

std::vector<fs::path> candidateRuntimeRegistryURLs() {
  std::vector<fs::path> files;
  if (auto support = applicationSupportFolder()) {
    files.push_back(*support / "Zorvik" / "active-runtime.json");
  }
  // Distinct paths, first occurrence kept.
  std::vector<fs::path> distinct;
  for (const fs::path& file : files) {
    if (std::find(distinct.begin(), distinct.end(), file) == distinct.end())
      distinct.push_back(file);
  }
  return distinct;
}

std::vector<fs::path> candidateProjectRoots() {
  std::vector<fs::path> roots;
  if (auto support = applicationSupportFolder()) roots.push_back(*support / "Zorvik");
  std::error_code error;
  fs::path workingDirectory = fs::current_path(error);
  if (!error) roots.push_back(std::move(workingDirectory));
  return roots;
}

std::optional<std::string> resolveBundleIdentifier(
    const std::optional<std::string>& appBundlePath) {
  if (!appBundlePath) return std::nullopt;
  const std::string trimmed = trimWhitespaceAndNewlines(*appBundlePath);
  if (trimmed.empty()) return std::nullopt;
  const std::optional<std::string> contents =
      readFileContents(fs::path(trimmed) / "Contents" / "Info.plist");
  if (!contents || contents->empty() || contents->size() > std::numeric_limits<uint32_t>::max()) {
    return std::nullopt;
  }
  plist_t parsed = nullptr;
  plist_from_memory(contents->data(), static_cast<uint32_t>(contents->size()), &parsed);
  const std::unique_ptr<void, PlistDeleter> root(parsed);
  if (!root || plist_get_node_type(root.get()) != PLIST_DICT) return std::nullopt;
  plist_t identifier = plist_dict_get_item(root.get(), "CFBundleIdentifier");
  if (!identifier || plist_get_node_type(identifier) != PLIST_STRING) return std::nullopt;
  char* text = nullptr;
  plist_get_string_val(identifier, &text);
  if (!text) return std::nullopt;
  std::string result(text);
  std::free(text);
  return result;
}

bool isPreferredCandidate(const RuntimeDiscoveryCandidate& candidate,
                          const RuntimeDiscoveryCandidate& best) {
  if (candidate.heartbeat.isForeground != best.heartbeat.isForeground) {
    return candidate.heartbeat.isForeground;
  }
  return candidate.heartbeat.timestamp > best.heartbeat.timestamp;
}

std::optional<DiscoveredProject> discoverProjectFromRuntime(
    const std::optional<std::string>& appBundlePath) {
  const std::optional<std::string> bundleFilter = resolveBundleIdentifier(appBundlePath);
  const bool appGiven = appBundlePath && !trimWhitespaceAndNewlines(*appBundlePath).empty();
  if (appGiven && !bundleFilter) return std::nullopt;

  const RuntimeControlBridge bridge{};
  std::optional<RuntimeDiscoveryCandidate> best;
  const auto consider = [&](const fs::path& heartbeatFile, const char* source) {
    auto candidate = candidateFrom(heartbeatFile, bundleFilter, source, bridge);
    if (candidate && (!best || isPreferredCandidate(*candidate, *best)))
      best = std::move(candidate);
  };

  for (const fs::path& registry : candidateRuntimeRegistryURLs())
    consider(registry, kRegistrySource);
  // A registry hit does not end the search: a scanned project may be in the foreground.
  for (const fs::path& root : candidateProjectRoots()) {
    std::error_code error;
    if (!fs::is_directory(root, error)) continue;
    forEachDescendantFolder(root, [&](const fs::path& folder) {
      const fs::path heartbeatFile = RuntimeControlPaths::forProject(folder).heartbeatFile;
      std::error_code missing;
      if (fs::exists(heartbeatFile, missing)) consider(heartbeatFile, kScanSource);
    });
  }

  if (!best) return std::nullopt;
  return DiscoveredProject{
      .projectPath = best->url.string(),
      .source = best->source,
      .runtimeConnected = best->runtimeConnected,
      .heartbeatAt = best->heartbeat.timestamp,
      .isForeground = best->heartbeat.isForeground,
      .bundleIdentifier = best->heartbeat.bundleIdentifier,
      .processID = best->heartbeat.processID,
  };
}

std::optional<DiscoveredProject> discoverCurrentProject(
    const std::optional<std::string>& appBundlePath) {
  if (auto value = environmentValue("ZORVIK_PROJECT_PATH");
      value && !trimWhitespaceAndNewlines(*value).empty()) {
    const bool connected = RuntimeControlBridge().isRuntimeAvailable(fs::path(*value));
    return DiscoveredProject{.projectPath = *value, .source = "env", .runtimeConnected = connected};
  }
  return discoverProjectFromRuntime(appBundlePath);
}

fs::path resolveAgentProjectURL(const std::optional<std::string>& explicitPath,
                                const std::optional<std::string>& appBundlePath) {
  std::string path;
  if (explicitPath && !trimWhitespaceAndNewlines(*explicitPath).empty()) {
    path = *explicitPath;
  } else {
    auto discovered = discoverCurrentProject(appBundlePath);
    if (!discovered) throw ZorvikCLIError::runtimeUnavailable();
    path = discovered->projectPath;
  }
  fs::path folder = standardizedPath(path);
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    throw ZorvikCLIError::invalidArguments("agent commands require an existing project directory.");
  }
  return folder;
}

}  // namespace zorvik
