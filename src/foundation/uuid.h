// 128-bit universally unique identifiers (RFC 4122), a plain value type.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zorvik {

class Uuid {
 public:
  // The nil UUID (all zero).
  Uuid() = default;
  explicit Uuid(const std::array<uint8_t, 16>& bytes) : bytes_(bytes) {}

  // Accepts exactly the canonical 8-4-4-4-12 hexadecimal form, digits in any case.
  static std::optional<Uuid> parse(std::string_view text);

  // A version 4 (random) UUID from the cryptographic random generator. Thread-safe.
  static Uuid random();

  std::string uppercaseString() const;
  std::string lowercaseString() const;
  const std::array<uint8_t, 16>& bytes() const { return bytes_; }

  auto operator<=>(const Uuid&) const = default;
  bool operator==(const Uuid&) const = default;

 private:
  std::string format(const char* digits) const;

  std::array<uint8_t, 16> bytes_{};
};

}  // namespace zorvik

template <>
struct std::hash<zorvik::Uuid> {
  size_t operator()(const zorvik::Uuid& uuid) const noexcept;
};
