// Standardised paths: absolute and lexically normal, symlinks not resolved.
#pragma once

#include <filesystem>

namespace zorvik {

// An absolute, lexically normal path without a trailing separator; symlinks are not resolved.
std::filesystem::path standardizedPath(const std::filesystem::path& path);

// Whether `path` equals `root` or lies below it, comparing whole components.
bool isSameOrBelow(const std::filesystem::path& path, const std::filesystem::path& root);

}  // namespace zorvik
