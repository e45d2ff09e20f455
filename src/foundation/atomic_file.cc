#include "foundation/atomic_file.h"

#include <fcntl.h>
#include <openssl/rand.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <random>
#include <system_error>
#include <utility>

#include "foundation/crypto_library.h"

namespace zorvik {
namespace {

class UniqueFd {
 public:
  explicit UniqueFd(int fd) : fd_(fd) {}
  ~UniqueFd() {
    if (fd_ >= 0) ::close(fd_);
  }
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;

  int get() const { return fd_; }
  bool valid() const { return fd_ >= 0; }
  // Closes now, reporting the result (a deferred write error may surface only here).
  int close() { return ::close(std::exchange(fd_, -1)); }

 private:
  int fd_;
};

enum class Durability { flushed, unflushed };

[[noreturn]] void fail(int error, const std::filesystem::path& path, const char* what) {
  throw std::system_error(error, std::generic_category(),
                          std::string(what) + " \"" + path.string() + "\"");
}

uint32_t randomTag() {
  uint32_t tag = 0;
  initializeCryptoLibrary();
  if (RAND_bytes(reinterpret_cast<unsigned char*>(&tag), sizeof tag) != 1) {
    tag = static_cast<uint32_t>(std::random_device{}());
  }
  return tag;
}

std::filesystem::path temporaryPathFor(const std::filesystem::path& path) {
  static std::atomic<uint64_t> counter{0};
  char suffix[64];
  std::snprintf(suffix, sizeof suffix, ".tmp-%ld-%llu-%08x", static_cast<long>(::getpid()),
                static_cast<unsigned long long>(counter.fetch_add(1)), randomTag());
  return path.parent_path() / ("." + path.filename().string() + suffix);
}

bool writeAll(int fd, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t written = ::write(fd, contents.data(), contents.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    contents.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

void syncFolder(const std::filesystem::path& path) {
  const std::filesystem::path folder = path.parent_path().empty() ? "." : path.parent_path();
  UniqueFd fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!fd.valid()) fail(errno, path, "cannot open the folder of");
  // Some file systems cannot sync folders at all; that is no failure of this write.
  if (::fsync(fd.get()) != 0 && errno != EINVAL && errno != ENOTSUP) {
    fail(errno, path, "cannot flush the folder of");
  }
}

void replaceFile(const std::filesystem::path& path, std::string_view contents,
                 Durability durability) {
  if (!path.has_filename()) fail(EINVAL, path, "cannot write a file without a name at");
  std::filesystem::path temporary;
  int fd = -1;
  // O_EXCL makes a clash with another writer's name visible; a fresh name settles it.
  for (int attempt = 0; attempt < 8 && fd < 0; ++attempt) {
    temporary = temporaryPathFor(path);
    fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0 && errno != EEXIST) break;
  }
  if (fd < 0) fail(errno, path, "cannot create a temporary file for");
  UniqueFd file(fd);

  const auto abandon = [&](const char* what) {
    const int error = errno;
    if (file.valid()) file.close();
    ::unlink(temporary.c_str());
    fail(error, path, what);
  };
  if (!writeAll(file.get(), contents)) abandon("cannot write");
  if (durability == Durability::flushed && ::fsync(file.get()) != 0) abandon("cannot flush");
  if (file.close() != 0) abandon("cannot write");
  if (::rename(temporary.c_str(), path.c_str()) != 0) abandon("cannot replace");
  if (durability == Durability::flushed) syncFolder(path);
}

}  // namespace

void writeFileAtomically(const std::filesystem::path& path, std::string_view contents) {
  replaceFile(path, contents, Durability::flushed);
}

void replaceFileByRename(const std::filesystem::path& path, std::string_view contents) {
  replaceFile(path, contents, Durability::unflushed);
}

std::optional<std::string> readFileContents(const std::filesystem::path& path) {
  UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.valid()) return std::nullopt;
  std::string contents;
  struct stat status {};
  if (::fstat(file.get(), &status) == 0 && status.st_size > 0) {
    contents.reserve(static_cast<size_t>(status.st_size));
  }
  char block[64 * 1024];
  while (true) {
    const ssize_t count = ::read(file.get(), block, sizeof block);
    if (count < 0) {
      if (errno == EINTR) continue;
      return std::nullopt;
    }
    if (count == 0) return contents;
    contents.append(block, static_cast<size_t>(count));
  }
}

}  // namespace zorvik
