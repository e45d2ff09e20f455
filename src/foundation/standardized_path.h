// Standardised paths: absolute and lexically normal, symlinks not resolved.
#pragma once

#include <filesystem>
#include <string_view>

namespace zorvik {

// An absolute, lexically normal path without a trailing separator; symlinks are not resolved.
std::filesystem::path standardizedPath(const std::filesystem::path& path);

// `relative` joined to `root` (itself standardised), standardised: a path of plain names is
// joined as it is, anything with ".", "..", empty components or a leading separator is normalised.
std::filesystem::path standardizedJoin(const std::filesystem::path& root,
                                       std::string_view relative);

// Whether `path` equals `root` or lies below it, comparing whole components.
bool isSameOrBelow(const std::filesystem::path& path, const std::filesystem::path& root);

}  // namespace zorvik
