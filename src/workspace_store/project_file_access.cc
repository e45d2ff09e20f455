#include "workspace_store/project_file_access.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

#include "foundation/standardized_path.h"
#include "workspace_store/workspace_project_snapshot_error.h"

namespace zorvik {
namespace {

// Where an open file really is, symlinks resolved; nullopt when the system cannot say.
std::optional<std::filesystem::path> openedFileLocation(int fd) {
  char link[64];
  std::snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
  char target[PATH_MAX + 1];
  const ssize_t length = ::readlink(link, target, PATH_MAX);
  if (length <= 0) return std::nullopt;
  return std::filesystem::path(std::string(target, static_cast<size_t>(length)));
}

// `location` relative to `root` (standardised, no trailing separator unless it is "/"), found by
// cutting the prefix off the text (path arithmetic costs more than the open itself); nullopt when
// the text does not begin with the root.
std::optional<std::string> relativeTo(const std::filesystem::path& location,
                                      const std::filesystem::path& root) {
  const std::string& text = location.native();
  const std::string& prefix = root.native();
  if (!text.starts_with(prefix)) return std::nullopt;
  if (text.size() == prefix.size()) return ".";
  if (prefix.ends_with('/')) return text.substr(prefix.size());
  if (text[prefix.size()] != '/') return std::nullopt;
  return text.substr(prefix.size() + 1);
}

[[noreturn]] void throwEscape(const std::string& displayPath) {
  throw WorkspaceProjectSnapshotError::decodeFailed(displayPath,
                                                    "Resolved path escapes the project root.");
}

}  // namespace

ProjectFileAccess::ProjectFileAccess(const std::filesystem::path& root)
    : root_(standardizedPath(root)) {
  std::error_code error;
  canonicalRoot_ = std::filesystem::weakly_canonical(root_, error);
  if (error) canonicalRoot_ = root_;
  rootDescriptor_ = ::open(root_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

ProjectFileAccess::~ProjectFileAccess() {
  if (rootDescriptor_ >= 0) ::close(rootDescriptor_);
}

int ProjectFileAccess::openInside(const std::filesystem::path& location, int flags) const {
  const std::optional<std::string> relative = relativeTo(location, root_);
  if (rootDescriptor_ >= 0 && relative) {
    open_how how{};
    how.flags = static_cast<uint64_t>(flags | O_CLOEXEC);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    const long fd = ::syscall(SYS_openat2, rootDescriptor_, relative->c_str(), &how, sizeof how);
    if (fd >= 0) return static_cast<int>(fd);
    // Refused escapes (EXDEV, ELOOP) and kernels without openat2 take the checked path below; an
    // absolute symlink that points back inside is allowed there.
    if (errno != EXDEV && errno != ELOOP && errno != ENOSYS && errno != EPERM) return -1;
  }
  const int fd = ::open(location.c_str(), flags | O_CLOEXEC);
  if (fd < 0) return -1;
  if (!opensInside(fd, location)) {
    ::close(fd);
    errno = EXDEV;
    return -1;
  }
  return fd;
}

std::filesystem::path ProjectFileAccess::entryLocation(const std::string& relativePath) const {
  if (relativePath.empty() || relativePath.front() == '/') {
    throw WorkspaceProjectSnapshotError::decodeFailed(relativePath, "Invalid relative path.");
  }
  std::filesystem::path location = standardizedJoin(root_, relativePath);
  if (!isSameOrBelow(location, root_)) throwEscape(relativePath);
  return location;
}

bool ProjectFileAccess::opensInside(int fd, const std::filesystem::path& location) const {
  if (auto opened = openedFileLocation(fd)) return isSameOrBelow(*opened, canonicalRoot_);
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(location, error);
  return !error && isSameOrBelow(resolved, canonicalRoot_);
}

ProjectFile::ProjectFile(ProjectFile&& other) noexcept
    : descriptor_(other.descriptor_), directory_(other.directory_), size_(other.size_) {
  other.descriptor_ = -1;
}

ProjectFile::~ProjectFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

std::string ProjectFile::readAll(const std::string& displayPath) const {
  if (directory_) {
    throw WorkspaceProjectSnapshotError::decodeFailed(displayPath,
                                                      "Expected a file, found a folder.");
  }
  // The buffer is sized to the file exactly; the end is confirmed with a read into a small
  // buffer, so a file that did not grow costs no second allocation and no slack.
  std::string contents(size_, '\0');
  size_t filled = 0;
  char overflow[4096];
  while (true) {
    const bool full = filled == contents.size();
    char* target = full ? overflow : contents.data() + filled;
    const size_t room = full ? sizeof(overflow) : contents.size() - filled;
    const ssize_t count = ::read(descriptor_, target, room);
    if (count < 0) {
      if (errno == EINTR) continue;
      throw WorkspaceProjectSnapshotError::decodeFailed(
          displayPath, std::string("The file could not be read: ") + std::strerror(errno) + ".");
    }
    if (count == 0) break;
    if (full) contents.append(overflow, static_cast<size_t>(count));  // the file grew meanwhile
    filled += static_cast<size_t>(count);
  }
  contents.resize(filled);
  return contents;
}

std::optional<ProjectFile> ProjectFileAccess::open(const std::filesystem::path& location) const {
  // Non-blocking, so that a FIFO cannot stall the load; it reads as empty.
  const int descriptor = openInside(location, O_RDONLY | O_NOCTTY | O_NONBLOCK);
  if (descriptor < 0) return std::nullopt;
  ProjectFile file(descriptor, false, 0);
  struct stat status;
  if (::fstat(descriptor, &status) != 0) return std::nullopt;
  file.directory_ = S_ISDIR(status.st_mode);
  file.size_ = S_ISREG(status.st_mode) ? static_cast<size_t>(status.st_size) : 0;
  return file;
}

std::string ProjectFileAccess::read(const std::filesystem::path& location,
                                    const std::string& displayPath) const {
  if (std::optional<ProjectFile> file = open(location)) return file->readAll(displayPath);
  const int error = errno;
  if (error == EXDEV) throwEscape(displayPath);
  // A dangling symlink that points outside is an escape, not a missing file.
  std::error_code ignored;
  if (std::filesystem::is_symlink(location, ignored)) {
    const auto resolved = std::filesystem::weakly_canonical(location, ignored);
    if (!ignored && !isSameOrBelow(resolved, canonicalRoot_)) throwEscape(displayPath);
  }
  throw WorkspaceProjectSnapshotError::decodeFailed(
      displayPath, std::string("The file could not be read: ") + std::strerror(error) + ".");
}

std::optional<std::string> ProjectFileAccess::readIfPresent(const std::filesystem::path& location,
                                                            const std::string& displayPath) const {
  if (std::optional<ProjectFile> file = open(location)) return file->readAll(displayPath);
  // Absent means no directory entry at all; a dangling symlink is present and fails to read.
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::symlink_status(location, error))) {
    return std::nullopt;
  }
  return read(location, displayPath);
}

}  // namespace zorvik
