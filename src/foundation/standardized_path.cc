#include "foundation/standardized_path.h"

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

bool isSameOrBelow(const std::filesystem::path& path, const std::filesystem::path& root) {
  auto pathPart = path.begin();
  for (auto rootPart = root.begin(); rootPart != root.end(); ++rootPart, ++pathPart) {
    if (rootPart->empty()) continue;  // a trailing separator of the root
    if (pathPart == path.end() || *pathPart != *rootPart) return false;
  }
  return true;
}

}  // namespace zorvik
