#include "foundation/uuid.h"

#include <openssl/rand.h>

#include <cstring>
#include <stdexcept>

#include "foundation/crypto_library.h"

namespace zorvik {
namespace {

// Positions of the dashes in the canonical 36-character form.
constexpr bool isDashPosition(size_t i) { return i == 8 || i == 13 || i == 18 || i == 23; }

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::optional<Uuid> Uuid::parse(std::string_view text) {
  if (text.size() != 36) return std::nullopt;
  std::array<uint8_t, 16> bytes{};
  size_t nibble = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (isDashPosition(i)) {
      if (text[i] != '-') return std::nullopt;
      continue;
    }
    const int value = hexValue(text[i]);
    if (value < 0) return std::nullopt;
    bytes[nibble / 2] = static_cast<uint8_t>(bytes[nibble / 2] << 4 | value);
    ++nibble;
  }
  return Uuid(bytes);
}

Uuid Uuid::random() {
  std::array<uint8_t, 16> bytes{};
  initializeCryptoLibrary();
  if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) {
    throw std::runtime_error("the random generator failed to produce a UUID");
  }
  bytes[6] = static_cast<uint8_t>((bytes[6] & 0x0f) | 0x40);  // version 4
  bytes[8] = static_cast<uint8_t>((bytes[8] & 0x3f) | 0x80);  // RFC 4122 variant
  return Uuid(bytes);
}

std::string Uuid::uppercaseString() const { return format("0123456789ABCDEF"); }

std::string Uuid::lowercaseString() const { return format("0123456789abcdef"); }

std::string Uuid::format(const char* digits) const {
  std::string text;
  text.reserve(36);
  for (size_t i = 0; i < bytes_.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text.push_back('-');
    text.push_back(digits[bytes_[i] >> 4]);
    text.push_back(digits[bytes_[i] & 0x0f]);
  }
  return text;
}

}  // namespace zorvik

size_t std::hash<zorvik::Uuid>::operator()(const zorvik::Uuid& uuid) const noexcept {
  uint64_t halves[2];
  std::memcpy(halves, uuid.bytes().data(), sizeof halves);
  return static_cast<size_t>(halves[0] ^ (halves[1] * 0x9e3779b97f4a7c15ULL));
}
