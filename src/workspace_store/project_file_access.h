// Reading the files of a project without ever leaving its root. Entry paths are checked lexically
// (absolute, lexically normal, below the root), and every file is opened so that it cannot lie
// outside: through the root's handle with the kernel confining the lookup, or else by path and
// checked again where it really is, symlinks resolved. Neither ".." nor a symlink can lead a read
// outside the project. Not copyable (it owns the root's handle); const members may run from any
// thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace zorvik {

// A file or folder of a project, opened inside its root. Owns its descriptor; move-only.
class ProjectFile {
 public:
  ProjectFile(ProjectFile&& other) noexcept;
  ProjectFile& operator=(ProjectFile&&) = delete;
  ~ProjectFile();

  bool isDirectory() const { return directory_; }

  // The whole contents of the file. Throws decodeFailed(displayPath, "Expected a file, found a
  // folder.") for a folder and decodeFailed(displayPath, "The file could not be read: ...") when
  // reading fails.
  std::string readAll(const std::string& displayPath) const;

 private:
  friend class ProjectFileAccess;
  ProjectFile(int descriptor, bool directory, size_t size)
      : descriptor_(descriptor), directory_(directory), size_(size) {}

  int descriptor_;
  bool directory_;
  size_t size_;  // the size when opened
};

class ProjectFileAccess {
 public:
  // Opens the root as a directory handle, through which files are opened relative to it with the
  // kernel refusing any resolution that leaves it (openat2 RESOLVE_BENEATH). Where that facility
  // is missing, or refuses a path, files are opened by path and checked where they really are.
  explicit ProjectFileAccess(const std::filesystem::path& root);
  ~ProjectFileAccess();
  ProjectFileAccess(const ProjectFileAccess&) = delete;
  ProjectFileAccess& operator=(const ProjectFileAccess&) = delete;

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

  // The file or folder at `location`, opened once for any number of questions; nullopt when it
  // cannot be opened inside the root (read() then says why).
  std::optional<ProjectFile> open(const std::filesystem::path& location) const;

 private:
  // Opens `location` with `flags`: through the root handle when the kernel can keep the lookup
  // beneath it, otherwise by path followed by the containment check. Returns the descriptor, or
  // -1 with errno set; a descriptor that resolved outside the root is closed and gives -1 with
  // errno EXDEV.
  int openInside(const std::filesystem::path& location, int flags) const;
  // Whether the open file `fd` (opened from `location`) lies inside the root.
  bool opensInside(int fd, const std::filesystem::path& location) const;

  std::filesystem::path root_;
  std::filesystem::path canonicalRoot_;
  int rootDescriptor_ = -1;  // an O_PATH handle on the root, or -1
};

}  // namespace zorvik
