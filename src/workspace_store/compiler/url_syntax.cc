#include "workspace_store/compiler/url_syntax.h"

#include "foundation/text.h"

namespace zorvik {
namespace {

bool isAlpha(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool isUnreserved(char c) {
  return isAlpha(c) || isDigit(c) || c == '-' || c == '.' || c == '_' || c == '~';
}
bool isSubDelimiter(char c) {
  switch (c) {
    case '!':
    case '$':
    case '&':
    case '\'':
    case '(':
    case ')':
    case '*':
    case '+':
    case ',':
    case ';':
    case '=':
      return true;
    default:
      return false;
  }
}
bool isNonASCII(char c) { return static_cast<unsigned char>(c) >= 0x80; }

// Whether every character of `text` is allowed: non-ASCII bytes, unreserved characters,
// sub-delimiters, the characters of `extra`, and "%" followed by two hexadecimal digits.
bool consistsOf(std::string_view text, std::string_view extra) {
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '%') {
      if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])) {
        return false;
      }
      i += 2;
      continue;
    }
    if (isNonASCII(c) || isUnreserved(c) || isSubDelimiter(c)) continue;
    if (extra.find(c) != std::string_view::npos) continue;
    return false;
  }
  return true;
}

bool isScheme(std::string_view text) {
  if (text.empty() || !isAlpha(text.front())) return false;
  for (char c : text) {
    if (!isAlpha(c) && !isDigit(c) && c != '+' && c != '-' && c != '.') return false;
  }
  return true;
}

bool isIPLiteral(std::string_view inside) {
  if (inside.empty()) return false;
  if (inside.front() == 'v' || inside.front() == 'V') {
    // IPvFuture: "v" 1*HEXDIG "." 1*( unreserved / sub-delims / ":" )
    const size_t dot = inside.find('.');
    if (dot == std::string_view::npos || dot < 2 || dot + 1 == inside.size()) return false;
    for (char c : inside.substr(1, dot - 1)) {
      if (!isHexDigit(c)) return false;
    }
    for (char c : inside.substr(dot + 1)) {
      if (!isUnreserved(c) && !isSubDelimiter(c) && c != ':') return false;
    }
    return true;
  }
  bool hasColon = false;
  for (char c : inside) {
    if (c == ':') {
      hasColon = true;
    } else if (!isHexDigit(c) && c != '.') {
      return false;
    }
  }
  return hasColon;
}

bool isAuthority(std::string_view authority) {
  std::string_view hostAndPort = authority;
  if (const size_t at = authority.rfind('@'); at != std::string_view::npos) {
    if (!consistsOf(authority.substr(0, at), ":")) return false;
    hostAndPort = authority.substr(at + 1);
  }
  std::string_view host = hostAndPort;
  std::string_view port;
  if (!hostAndPort.empty() && hostAndPort.front() == '[') {
    const size_t close = hostAndPort.find(']');
    if (close == std::string_view::npos || !isIPLiteral(hostAndPort.substr(1, close - 1))) {
      return false;
    }
    const std::string_view rest = hostAndPort.substr(close + 1);
    if (!rest.empty() && rest.front() != ':') return false;
    host = {};
    port = rest.empty() ? rest : rest.substr(1);
  } else if (const size_t colon = hostAndPort.rfind(':'); colon != std::string_view::npos) {
    host = hostAndPort.substr(0, colon);
    port = hostAndPort.substr(colon + 1);
  }
  for (char c : port) {
    if (!isDigit(c)) return false;
  }
  return consistsOf(host, "");
}

}  // namespace

bool isParsableURL(std::string_view text) {
  if (!isValidUTF8(text)) return false;
  const size_t colon = text.find(':');
  if (colon == std::string_view::npos || !isScheme(text.substr(0, colon))) return false;
  std::string_view rest = text.substr(colon + 1);

  std::string_view fragment;
  if (const size_t hash = rest.find('#'); hash != std::string_view::npos) {
    fragment = rest.substr(hash + 1);
    rest = rest.substr(0, hash);
    if (!consistsOf(fragment, ":@/?")) return false;  // a second "#" is no fragment character
  }
  if (const size_t question = rest.find('?'); question != std::string_view::npos) {
    if (!consistsOf(rest.substr(question + 1), ":@/?")) return false;
    rest = rest.substr(0, question);
  }
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    const size_t slash = rest.find('/');
    if (!isAuthority(rest.substr(0, slash))) return false;
    rest = slash == std::string_view::npos ? std::string_view() : rest.substr(slash);
  }
  return consistsOf(rest, ":@/");
}

}  // namespace zorvik
