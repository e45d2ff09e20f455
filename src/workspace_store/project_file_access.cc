#include "workspace_store/project_file_access.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

#include "foundation/standardized_path.h"
#include "workspace_store/workspace_project_snapshot_error.h"

namespace zorvik {
namespace {

// Closes a file descriptor when it goes out of scope.
class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

// Where an open file really is, symlinks resolved; nullopt when the system cannot say.
std::optional<std::filesystem::path> openedFileLocation(int fd) {
  char link[64];
  std::snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
  char target[PATH_MAX + 1];
  const ssize_t length = ::readlink(link, target, PATH_MAX);
  if (length <= 0) return std::nullopt;
  return std::filesystem::path(std::string(target, static_cast<size_t>(length)));
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
}

std::filesystem::path ProjectFileAccess::entryLocation(const std::string& relativePath) const {
  if (relativePath.empty() || relativePath.front() == '/') {
    throw WorkspaceProjectSnapshotError::decodeFailed(relativePath, "Invalid relative path.");
  }
  std::filesystem::path location = standardizedPath(root_ / relativePath);
  if (!isSameOrBelow(location, root_)) throwEscape(relativePath);
  return location;
}

bool ProjectFileAccess::opensInside(int fd, const std::filesystem::path& location) const {
  if (auto opened = openedFileLocation(fd)) return isSameOrBelow(*opened, canonicalRoot_);
  std::error_code error;
  const std::filesystem::path resolved = std::filesystem::weakly_canonical(location, error);
  return !error && isSameOrBelow(resolved, canonicalRoot_);
}

std::string ProjectFileAccess::read(const std::filesystem::path& location,
                                    const std::string& displayPath) const {
  const FileDescriptor file(::open(location.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
  if (file.get() < 0) {
    const int error = errno;
    // A dangling symlink that points outside is an escape, not a missing file.
    std::error_code ignored;
    if (std::filesystem::is_symlink(location, ignored)) {
      const auto resolved = std::filesystem::weakly_canonical(location, ignored);
      if (!ignored && !isSameOrBelow(resolved, canonicalRoot_)) throwEscape(displayPath);
    }
    throw WorkspaceProjectSnapshotError::decodeFailed(
        displayPath, std::string("The file could not be read: ") + std::strerror(error) + ".");
  }
  if (!opensInside(file.get(), location)) throwEscape(displayPath);
  struct stat status;
  if (::fstat(file.get(), &status) != 0) {
    throw WorkspaceProjectSnapshotError::decodeFailed(displayPath, "The file could not be read.");
  }
  if (S_ISDIR(status.st_mode)) {
    throw WorkspaceProjectSnapshotError::decodeFailed(displayPath,
                                                      "Expected a file, found a folder.");
  }
  // The buffer is sized to the file exactly; the end is confirmed with a read into a small
  // buffer, so a file that did not grow costs no second allocation and no slack.
  std::string contents(static_cast<size_t>(status.st_size), '\0');
  size_t filled = 0;
  char overflow[4096];
  while (true) {
    const bool full = filled == contents.size();
    char* target = full ? overflow : contents.data() + filled;
    const size_t room = full ? sizeof(overflow) : contents.size() - filled;
    const ssize_t count = ::read(file.get(), target, room);
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

std::optional<std::string> ProjectFileAccess::readIfPresent(const std::filesystem::path& location,
                                                            const std::string& displayPath) const {
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::symlink_status(location, error))) {
    return std::nullopt;
  }
  return read(location, displayPath);
}

bool ProjectFileAccess::isDirectory(const std::filesystem::path& location) const {
  const FileDescriptor directory(::open(location.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return directory.get() >= 0 && opensInside(directory.get(), location);
}

}  // namespace zorvik
