// normalizedCardIDs: the clean form of a caller's list of card ids. Each id is trimmed of white
// space and line ends, empty ones are dropped, duplicates removed, and the rest sorted ascending by
// their UTF-8 bytes. Case is kept: "abc" and "ABC" stay two ids. Pure; safe from any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zorvik {

std::vector<std::string> normalizedCardIDs(const std::vector<std::string>& ids);

// `id` with ASCII letters upper-cased: the key under which card and checkpoint ids compare
// ignoring case (they are UUID text, hexadecimal digits and dashes).
std::string caseInsensitiveIDKey(std::string_view id);

}  // namespace zorvik
