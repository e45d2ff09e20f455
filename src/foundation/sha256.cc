#include "foundation/sha256.h"

#include <openssl/evp.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "foundation/crypto_library.h"

namespace zorvik {
namespace {

// The algorithm is looked up once per process: a lookup per digest costs as much as hashing a
// small file.
const EVP_MD* sha256Algorithm() {
  initializeCryptoLibrary();
  static EVP_MD* const algorithm = EVP_MD_fetch(nullptr, "SHA256", nullptr);
  return algorithm != nullptr ? algorithm : EVP_sha256();
}

void startDigest(EVP_MD_CTX* context) {
  if (EVP_DigestInit_ex(context, sha256Algorithm(), nullptr) != 1) {
    throw std::runtime_error("SHA-256 digest could not be initialised");
  }
}

}  // namespace

Sha256Hasher::Sha256Hasher() : context_(EVP_MD_CTX_new()) {
  if (context_ == nullptr) throw std::runtime_error("SHA-256 digest context could not be created");
  try {
    startDigest(context_);
  } catch (...) {
    EVP_MD_CTX_free(context_);
    throw;
  }
}

Sha256Hasher::~Sha256Hasher() { EVP_MD_CTX_free(context_); }

Sha256Hasher::Sha256Hasher(Sha256Hasher&& other) noexcept
    : context_(std::exchange(other.context_, nullptr)) {}

Sha256Hasher& Sha256Hasher::operator=(Sha256Hasher&& other) noexcept {
  if (this != &other) {
    EVP_MD_CTX_free(context_);
    context_ = std::exchange(other.context_, nullptr);
  }
  return *this;
}

void Sha256Hasher::update(std::string_view bytes) {
  if (EVP_DigestUpdate(context_, bytes.data(), bytes.size()) != 1) {
    throw std::runtime_error("SHA-256 digest update failed");
  }
}

std::string Sha256Hasher::finishHex() {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  if (EVP_DigestFinal_ex(context_, digest, &length) != 1) {
    throw std::runtime_error("SHA-256 digest could not be finished");
  }
  startDigest(context_);
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  hex.reserve(length * 2);
  for (unsigned int i = 0; i < length; ++i) {
    hex.push_back(kDigits[digest[i] >> 4]);
    hex.push_back(kDigits[digest[i] & 0x0f]);
  }
  return hex;
}

std::string sha256Hex(std::string_view bytes) {
  // One context per thread, reset by every finish: a digest of a small text costs no allocation.
  thread_local Sha256Hasher hasher;
  try {
    hasher.update(bytes);
    return hasher.finishHex();
  } catch (...) {
    hasher = Sha256Hasher();  // never leave a half-fed context for the next digest
    throw;
  }
}

std::optional<std::string> sha256HexOfFile(const std::filesystem::path& path) {
  std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rbe"), &std::fclose);
  if (file == nullptr) return std::nullopt;
  Sha256Hasher hasher;
  std::vector<char> block(64 * 1024);
  while (true) {
    const size_t count = std::fread(block.data(), 1, block.size(), file.get());
    hasher.update(std::string_view(block.data(), count));
    if (count < block.size()) break;
  }
  if (std::ferror(file.get())) return std::nullopt;
  return hasher.finishHex();
}

}  // namespace zorvik
