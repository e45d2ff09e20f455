#include "foundation/standardized_path.h"

#include <algorithm>
#include <string>

namespace zorvik {

std::filesystem::path standardizedPath(const std::filesystem::path& path) {
  // An absolute path needs no working directory (asking for it is a system call).
  std::error_code error;
  std::filesystem::path absolute =
      path.is_absolute() ? path : std::filesystem::absolute(path, error);
  if (error) absolute = path;
  std::filesystem::path normal = absolute.lexically_normal();
  if (normal.has_relative_path() && normal.filename().empty()) normal = normal.parent_path();
  return normal;
}

namespace {

// Whether every component of `relative` is a name: no leading, doubled or trailing separator and
// no "." or ".." component.
bool isPlainRelativePath(std::string_view relative) {
  if (relative.empty()) return false;
  size_t start = 0;
  while (true) {
    const size_t end = std::min(relative.find('/', start), relative.size());
    const std::string_view name = relative.substr(start, end - start);
    if (name.empty() || name == "." || name == "..") return false;
    if (end == relative.size()) return true;
    start = end + 1;
  }
}

}  // namespace

std::filesystem::path standardizedJoin(const std::filesystem::path& root,
                                       std::string_view relative) {
  if (!isPlainRelativePath(relative)) return standardizedPath(root / relative);
  std::string joined = root.native();
  if (!joined.ends_with('/')) joined += '/';
  joined += relative;
  return std::filesystem::path(std::move(joined));
}

bool isSameOrBelow(const std::filesystem::path& path, const std::filesystem::path& root) {
  auto pathPart = path.begin();
  for (auto rootPart = root.begin(); rootPart != root.end(); ++rootPart, ++pathPart) {
    if (rootPart->empty()) continue;  // a trailing separator of the root
    if (pathPart == path.end() || *pathPart != *rootPart) return false;
  }
  return true;
}

}  // namespace zorvik
