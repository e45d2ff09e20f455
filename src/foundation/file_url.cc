#include "foundation/file_url.h"

#include <cctype>

namespace zorvik {
namespace {

bool staysUnencoded(unsigned char c) {
  return std::isalnum(c) || std::string_view("-._~/!$&'()*+,;=:@").find(static_cast<char>(c)) !=
                                std::string_view::npos;
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (size_t i = 0; i < prefix.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(text[i])) != prefix[i]) return false;
  }
  return true;
}

}  // namespace

std::string fileURLString(const std::filesystem::path& absolutePath) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string url = "file://";
  for (unsigned char c : absolutePath.string()) {
    if (staysUnencoded(c)) {
      url += static_cast<char>(c);
    } else {
      url += '%';
      url += kHex[c >> 4];
      url += kHex[c & 0xF];
    }
  }
  return url;
}

std::optional<std::string> percentDecoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return std::nullopt;
    const int high = hexValue(text[i + 1]);
    const int low = hexValue(text[i + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    decoded += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return decoded;
}

std::optional<std::filesystem::path> pathFromFileURL(std::string_view url) {
  if (!startsWithIgnoringCase(url, "file:")) return std::nullopt;
  std::string_view rest = url.substr(5);
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    const size_t slash = rest.find('/');
    if (slash == std::string_view::npos) return std::nullopt;
    const std::string_view host = rest.substr(0, slash);
    if (!host.empty() && host != "localhost") return std::nullopt;
    rest.remove_prefix(slash);
  }
  if (!rest.starts_with("/")) return std::nullopt;
  // A query or fragment is no part of the path.
  rest = rest.substr(0, rest.find_first_of("?#"));
  auto decoded = percentDecoded(rest);
  if (!decoded) return std::nullopt;
  return std::filesystem::path(*decoded).lexically_normal();
}

}  // namespace zorvik
