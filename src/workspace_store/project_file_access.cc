#include "workspace_store/project_file_access.h"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "foundation/standardized_path.h"
#include "workspace_store/workspace_project_snapshot_error.h"

namespace zorvik {

ProjectFileAccess::ProjectFileAccess(const std::filesystem::path& root)
    : root_(standardizedPath(root)) {
  std::error_code error;
  canonicalRoot_ = std::filesystem::weakly_canonical(root_, error);
  if (error) canonicalRoot_ = root_;
}

std::filesystem::path ProjectFileAccess::entryLocation(const std::string& relativePath) const {
  if (relativePath.empty() || relativePath.front() == '/') {
    throw WorkspaceProjectSnapshotError::decodeFailed(relativePath, "Invalid relative path.");
  }
  std::filesystem::path location = standardizedPath(root_ / relativePath);
  if (!isSameOrBelow(location, root_)) {
    throw WorkspaceProjectSnapshotError::decodeFailed(relativePath,
                                                      "Resolved path escapes the project root.");
  }
  return location;
}

bool ProjectFileAccess::resolvesInside(const std::filesystem::path& location) const {
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(location, error);
  return !error && isSameOrBelow(resolved, canonicalRoot_);
}

std::string ProjectFileAccess::read(const std::filesystem::path& location,
                                    const std::string& displayPath) const {
  if (!resolvesInside(location)) {
    throw WorkspaceProjectSnapshotError::decodeFailed(displayPath,
                                                      "Resolved path escapes the project root.");
  }
  std::error_code error;
  if (std::filesystem::is_directory(location, error)) {
    throw WorkspaceProjectSnapshotError::decodeFailed(displayPath,
                                                      "Expected a file, found a folder.");
  }
  std::ifstream in(location, std::ios::binary);
  if (!in) {
    throw WorkspaceProjectSnapshotError::decodeFailed(
        displayPath, std::string("The file could not be read: ") + std::strerror(errno) + ".");
  }
  std::string contents;
  in.seekg(0, std::ios::end);
  const auto size = in.tellg();
  if (size > 0) {
    contents.resize(static_cast<size_t>(size));
    in.seekg(0);
    in.read(contents.data(), size);
  }
  if (in.bad() || (size > 0 && in.gcount() != size)) {
    throw WorkspaceProjectSnapshotError::decodeFailed(displayPath, "The file could not be read.");
  }
  return contents;
}

std::optional<std::string> ProjectFileAccess::readIfPresent(const std::filesystem::path& location,
                                                            const std::string& displayPath) const {
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::symlink_status(location, error))) {
    return std::nullopt;
  }
  return read(location, displayPath);
}

bool ProjectFileAccess::isDirectory(const std::filesystem::path& location) const {
  std::error_code error;
  return std::filesystem::is_directory(location, error) && resolvesInside(location);
}

}  // namespace zorvik
