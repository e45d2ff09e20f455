// Reading the files of a project without ever leaving its root. Entry paths are checked lexically
// (absolute, lexically normal, below the root), and every opened file is checked again where it
// really is, symlinks resolved, so neither ".." nor a symlink can lead a read outside the project.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace zorvik {

class ProjectFileAccess {
 public:
  explicit ProjectFileAccess(const std::filesystem::path& root);

  // The standardised root.
  const std::filesystem::path& root() const { return root_; }

  // The standardised location of a relative entry path. Throws decodeFailed(relativePath,
  // "Invalid relative path.") for an empty or absolute path and decodeFailed(relativePath,
  // "Resolved path escapes the project root.") for one that leaves the root.
  std::filesystem::path entryLocation(const std::string& relativePath) const;

  // The bytes of the file at `location`. Throws decodeFailed(displayPath, ...) when the file
  // resolves outside the root or cannot be read.
  std::string read(const std::filesystem::path& location, const std::string& displayPath) const;
  // As read, but nullopt when nothing exists at `location`.
  std::optional<std::string> readIfPresent(const std::filesystem::path& location,
                                           const std::string& displayPath) const;

  // Whether `location` is a directory that resolves inside the root.
  bool isDirectory(const std::filesystem::path& location) const;

 private:
  // Whether the open file `fd` (opened from `location`) lies inside the root.
  bool opensInside(int fd, const std::filesystem::path& location) const;

  std::filesystem::path root_;
  std::filesystem::path canonicalRoot_;
};

}  // namespace zorvik
