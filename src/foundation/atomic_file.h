// Whole-file reads and replacements that never leave a torn file behind.
//
// A replacement writes a hidden temporary file (".<name>.tmp-<pid>-<counter>-<random>") beside the
// target and renames it over the target, so readers see the old contents or the new, never a mix.
// Any number of threads and processes may replace the same file at once; the last rename wins.
// No folders are created. On failure a std::system_error naming the path is thrown and the
// temporary file is removed.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zorvik {

// Durable replacement: the temporary file is flushed to disk before the rename, and the folder
// after it, so after a crash the path holds the old contents or the new.
void writeFileAtomically(const std::filesystem::path& path, std::string_view contents);

// The same replacement without flushing to disk, for short-lived exchange files that only need to
// appear whole.
void replaceFileByRename(const std::filesystem::path& path, std::string_view contents);

// The whole contents of a file; nullopt when it cannot be opened or read (a folder included).
std::optional<std::string> readFileContents(const std::filesystem::path& path);

}  // namespace zorvik
