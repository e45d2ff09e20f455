#include "foundation/resource_locator.h"

#include <system_error>

namespace zorvik {

namespace fs = std::filesystem;

namespace {

bool existsQuietly(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

// Checks `<dir>/resources/<relativePath>` for `start` and each of its ancestors.
std::optional<fs::path> findInResourceFolders(fs::path start, const fs::path& relativePath) {
  start = start.lexically_normal();
  while (!start.empty()) {
    fs::path candidate = start / "resources" / relativePath;
    if (existsQuietly(candidate)) return candidate;
    fs::path parent = start.parent_path();
    if (parent == start) break;
    start = std::move(parent);
  }
  return std::nullopt;
}

}  // namespace

std::optional<fs::path> findResource(std::string_view relativePath) {
  const fs::path relative(relativePath);
  std::error_code error;

  const fs::path executable = fs::read_symlink("/proc/self/exe", error);
  if (!error && !executable.empty()) {
    const fs::path executableDir = executable.parent_path();
    fs::path installed = (executableDir / ".." / "share" / "zorvik" / relative).lexically_normal();
    if (existsQuietly(installed)) return installed;
    if (auto found = findInResourceFolders(executableDir, relative)) return found;
  }

  const fs::path workingDir = fs::current_path(error);
  if (!error) {
    if (auto found = findInResourceFolders(workingDir, relative)) return found;
  }
  return std::nullopt;
}

}  // namespace zorvik
