#include "foundation/fnv1a.h"

#include <cstdio>

namespace zorvik {

uint64_t fnv1a64(std::string_view bytes) {
  uint64_t hash = 0xcbf29ce484222325ULL;
  for (char c : bytes) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001b3ULL;
  }
  return hash;
}

std::string fnv1a64Hex(std::string_view bytes) {
  char buffer[17];
  std::snprintf(buffer, sizeof buffer, "%016llx", static_cast<unsigned long long>(fnv1a64(bytes)));
  return buffer;
}

}  // namespace zorvik
