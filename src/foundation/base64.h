// Standard base64 (RFC 4648 alphabet, "=" padding, no line breaks).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorvik {

std::string base64Encode(std::string_view bytes);

// Strict: the length must be a multiple of four, only alphabet characters may appear, and "=" only
// as one or two final padding characters. White space is not skipped. nullopt on anything else.
std::optional<std::string> base64Decode(std::string_view text);

}  // namespace zorvik
