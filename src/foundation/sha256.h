// SHA-256 digests as lower-case hexadecimal text.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

struct evp_md_ctx_st;

namespace zorvik {

// An incremental hasher owning its digest context. Not thread-safe; movable, not copyable. A
// moved-from hasher may only be destroyed or assigned to. Throws std::runtime_error when the
// digest context cannot be set up.
class Sha256Hasher {
 public:
  Sha256Hasher();
  ~Sha256Hasher();
  Sha256Hasher(Sha256Hasher&& other) noexcept;
  Sha256Hasher& operator=(Sha256Hasher&& other) noexcept;
  Sha256Hasher(const Sha256Hasher&) = delete;
  Sha256Hasher& operator=(const Sha256Hasher&) = delete;

  void update(std::string_view bytes);
  // The digest of everything passed to update; the hasher then starts over empty.
  std::string finishHex();

 private:
  evp_md_ctx_st* context_;
};

std::string sha256Hex(std::string_view bytes);

// Streams the file in 64 KiB blocks; nullopt when it cannot be opened or read.
std::optional<std::string> sha256HexOfFile(const std::filesystem::path& path);

}  // namespace zorvik
