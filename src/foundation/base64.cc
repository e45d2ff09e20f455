#include "foundation/base64.h"

#include <openssl/evp.h>

#include <algorithm>

namespace zorvik {
namespace {

bool isAlphabetCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
         c == '/';
}

}  // namespace

std::string base64Encode(std::string_view bytes) {
  std::string text(4 * ((bytes.size() + 2) / 3), '\0');
  if (bytes.empty()) return text;
  const int written = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                      reinterpret_cast<const unsigned char*>(bytes.data()),
                                      static_cast<int>(bytes.size()));
  text.resize(static_cast<size_t>(written));
  return text;
}

std::optional<std::string> base64Decode(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  if (text.empty()) return std::string();
  size_t padding = 0;
  while (padding < 2 && text[text.size() - 1 - padding] == '=') ++padding;
  if (!std::all_of(text.begin(), text.end() - static_cast<std::ptrdiff_t>(padding),
                   isAlphabetCharacter)) {
    return std::nullopt;
  }
  std::string bytes(text.size() / 4 * 3, '\0');
  const int decoded = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                                      reinterpret_cast<const unsigned char*>(text.data()),
                                      static_cast<int>(text.size()));
  if (decoded < 0) return std::nullopt;
  // The decoder counts padding as zero bytes.
  bytes.resize(static_cast<size_t>(decoded) - padding);
  return bytes;
}

}  // namespace zorvik
