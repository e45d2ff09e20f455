// Where a card's sidecar files live, and the rules that every sidecar path of a stored card must
// pass before a file is read.
//
// Paths are project-relative with "/" separators. "Standardised" means absolute and lexically
// normal: the checks are lexical only and symlinks are not resolved, so a symlink inside the card
// folder is followed when the file is read. Failures throw StoredCardStorageError (invalidPath)
// with `{path}` being the path as the caller gave it and `{card_id}` the upper-case card id. All
// functions are pure (reading $HOME and the working directory aside) and thread-safe.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/uuid.h"

namespace zorvik {

// The fixed sidecar locations of one card.
struct StoredCardPath {
  static std::string root(const Uuid& cardID);              // resources/cards/{card_id}
  static std::string richTextMarkdown(const Uuid& cardID);  // .../content.md
  static std::string tableCSV(const Uuid& cardID);          // .../table.csv
  static std::string htmlRoot(const Uuid& cardID);          // .../html
  static std::string htmlDocument(const Uuid& cardID);      // .../html/index.html
  static std::string htmlCSS(const Uuid& cardID);           // .../html/styles.css
  static std::string htmlJS(const Uuid& cardID);            // .../html/script.js
};

// `from`, trimmed, percent-decoded where that succeeds, backslashes turned into slashes and one
// leading slash dropped, when it then begins with "resources/" and no segment is empty, ".", ".."
// or holds a colon; nullopt otherwise.
std::optional<std::string> normalizedProjectResourcePath(std::string_view from);

// The standardised file a path outside the project names: a "file:" URL (percent-decoded), or a
// path beginning with "/" or "~" (the tilde expanded from $HOME, or the named user's home). nullopt
// for anything else, relative paths included.
std::optional<std::filesystem::path> externalLocalFileURL(std::string_view from);

// Throws unless `path` is relative, has no "." or ".." segment, and lies under
// resources/cards/{card_id}/ compared without regard to case.
void validateRelativeSidecarPath(std::string_view path, const Uuid& cardID);

// `path` appended to the project root and standardised. Throws when the result leaves the root or
// does not lie under the card's folder (compared exactly).
std::filesystem::path resolveFileURL(const std::filesystem::path& projectRoot,
                                     std::string_view path, const Uuid& cardID);

// The standardised file of a project resource path (see normalizedProjectResourcePath), which may
// lie anywhere under resources/. Throws when `path` is no such path or escapes resources/.
std::filesystem::path resolveProjectResourceFileURL(const std::filesystem::path& projectRoot,
                                                    std::string_view path, const Uuid& cardID);

}  // namespace zorvik
