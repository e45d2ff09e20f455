// Whether a card's URL text can be parsed as a URL at all.
#pragma once

#include <string_view>

namespace zorvik {

// True when `text` is an absolute URI by the RFC 3986 grammar:
//   scheme ":" ["//" authority] path ["?" query] ["#" fragment]
// - the scheme is a letter followed by letters, digits, "+", "-" or ".";
// - the authority is [userinfo "@"] host [":" port]: the port is digits only, the host a
//   registered name or a bracketed IP literal (hexadecimal digits, ":" and "." with at least one
//   ":", or an IPvFuture "v<hex>.<chars>");
// - path, query and fragment hold unreserved characters, sub-delimiters, ":", "@", "/" (and "?"
//   after the path), and "%" only as the start of a two-digit hexadecimal escape.
// Non-ASCII characters in valid UTF-8 are accepted wherever a registered name, userinfo, path,
// query or fragment character may stand (the internationalised form of RFC 3987), so a URL with
// accented path segments is not malformed. A relative reference ("example.com/page"), white space,
// control characters, characters such as "<", ">", "\"", "{", "}", "|", "\\", "^", "`", a second
// "#", a bad escape or a non-numeric port make the text unparsable. Thread-safe.
bool isParsableURL(std::string_view text);

}  // namespace zorvik
