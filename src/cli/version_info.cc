#include "cli/version_info.h"

#include <filesystem>
#include <mutex>
#include <optional>
#include <system_error>

#include "cli/zorvik_cli_error.h"
#include "foundation/text.h"

#ifndef ZORVIK_SHORT_VERSION
#define ZORVIK_SHORT_VERSION ""
#endif
#ifndef ZORVIK_BUILD_ID
#define ZORVIK_BUILD_ID ""
#endif

namespace zorvik {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kBundleMarker = ".app/Contents/MacOS/";
constexpr std::string_view kDefaultExecutableHint =
    "/Applications/Zorvik.app/Contents/MacOS/zorvik";
constexpr std::string_view kDefaultDocsHint = "/Applications/Zorvik.app/Contents/Resources/CLI.md";

std::mutex& programPathMutex() {
  static std::mutex mutex;
  return mutex;
}

std::string& storedProgramPath() {
  static std::string path;
  return path;
}

// The absolute, lexically normal path of the program; empty when it cannot be determined.
fs::path standardisedProgramPath(std::string_view programPath) {
  std::error_code error;
  if (programPath.empty() || programPath.find('/') == std::string_view::npos) {
    fs::path running = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : running.lexically_normal();
  }
  fs::path absolute = fs::absolute(fs::path(programPath), error);
  return error ? fs::path() : absolute.lexically_normal();
}

// "<bundle>.app" when the path lies inside an application bundle's executable folder.
std::optional<std::string> enclosingBundle(const std::string& path) {
  size_t marker = path.find(kBundleMarker);
  if (marker == std::string::npos) return std::nullopt;
  return path.substr(0, marker) + ".app";
}

}  // namespace

std::string versionString(std::string_view shortVersion, std::string_view build) {
  const std::string shortText = trimWhitespaceAndNewlines(shortVersion);
  const std::string buildText = trimWhitespaceAndNewlines(build);
  if (!shortText.empty() && !buildText.empty()) {
    return "zorvik " + shortText + " (" + buildText + ")";
  }
  if (!shortText.empty()) return "zorvik " + shortText;
  if (!buildText.empty()) return "zorvik build " + buildText;
  return "zorvik dev";
}

std::string currentVersionString() { return versionString(ZORVIK_SHORT_VERSION, ZORVIK_BUILD_ID); }

void runVersion(const std::vector<std::string>& arguments, std::ostream& out) {
  if (!arguments.empty()) {
    throw ZorvikCLIError::invalidArguments("version does not accept positional arguments.");
  }
  out << currentVersionString() << "\n";
}

void setProgramPath(std::string programPath) {
  std::lock_guard lock(programPathMutex());
  storedProgramPath() = std::move(programPath);
}

std::string programPath() {
  std::lock_guard lock(programPathMutex());
  return storedProgramPath();
}

std::string bundledCLIExecutablePathHint(std::string_view programPath) {
  const fs::path program = standardisedProgramPath(programPath);
  if (program.empty()) return std::string(kDefaultExecutableHint);
  const std::string text = program.string();
  if (auto bundle = enclosingBundle(text)) return *bundle + "/Contents/MacOS/zorvik";
  return text;
}

std::string bundledCLIDocsPathHint(std::string_view programPath) {
  const fs::path program = standardisedProgramPath(programPath);
  if (program.empty()) return std::string(kDefaultDocsHint);
  if (auto bundle = enclosingBundle(program.string())) {
    return *bundle + "/Contents/Resources/CLI.md";
  }
  const fs::path prefix = program.parent_path().parent_path();
  return (prefix / "share" / "zorvik" / "CLI.md").string();
}

}  // namespace zorvik
