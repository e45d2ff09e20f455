// File URLs: "file://" plus the percent-encoded absolute path, and back.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zorvik {

// "file:///a/b%20c.md" for "/a/b c.md". Unreserved characters, "/" and the RFC 3986 sub-delimiters
// stay as they are; every other byte is percent-encoded.
std::string fileURLString(const std::filesystem::path& absolutePath);

// The path of a "file:" URL ("file:///p", "file://localhost/p", "file:/p"), percent-decoded and
// lexically normal; nullopt for other schemes, other hosts or bad escapes.
std::optional<std::filesystem::path> pathFromFileURL(std::string_view url);

// `text` with every %XX escape decoded; nullopt when an escape is malformed.
std::optional<std::string> percentDecoded(std::string_view text);

}  // namespace zorvik
