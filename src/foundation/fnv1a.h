// 64-bit FNV-1a, a fast non-cryptographic hash for stable identifiers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvik {

uint64_t fnv1a64(std::string_view bytes);

// The hash as 16 lower-case hexadecimal digits.
std::string fnv1a64Hex(std::string_view bytes);

}  // namespace zorvik
