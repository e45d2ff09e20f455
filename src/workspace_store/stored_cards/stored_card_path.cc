#include "workspace_store/stored_cards/stored_card_path.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "foundation/file_url.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"
#include "workspace_store/stored_cards/stored_card_storage_error.h"

namespace zorvik {
namespace {

[[noreturn]] void throwPath(std::string message) {
  throw StoredCardStorageError(StoredCardStorageError::Kind::invalidPath, std::move(message));
}

std::string backticked(std::string_view path) { return "`" + std::string(path) + "`"; }

std::string withSlashes(std::string_view path) {
  std::string result(path);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

std::vector<std::string_view> splitAtSlashes(std::string_view text) {
  std::vector<std::string_view> parts;
  size_t start = 0;
  while (true) {
    const size_t slash = text.find('/', start);
    parts.push_back(text.substr(start, slash - start));
    if (slash == std::string_view::npos) return parts;
    start = slash + 1;
  }
}

// The folder's text with exactly one trailing slash, for prefix tests.
std::string folderPrefix(const std::filesystem::path& folder) {
  std::string text = folder.string();
  if (!text.ends_with('/')) text += '/';
  return text;
}

std::optional<std::string> homeFolder(std::string_view user) {
  if (user.empty()) {
    if (const char* home = std::getenv("HOME"); home && *home) return std::string(home);
  }
  std::vector<char> buffer(16384);
  passwd entry{};
  passwd* found = nullptr;
  const int status =
      user.empty()
          ? getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found)
          : getpwnam_r(std::string(user).c_str(), &entry, buffer.data(), buffer.size(), &found);
  if (status != 0 || !found || !found->pw_dir) return std::nullopt;
  return std::string(found->pw_dir);
}

// "~" and "~/rest" use the current user's home, "~name/rest" that of `name`; a tilde that cannot
// be expanded stays as it is.
std::string expandingTilde(std::string_view path) {
  const size_t slash = path.find('/');
  const std::string_view user =
      path.substr(1, slash == std::string_view::npos ? path.npos : slash - 1);
  auto home = homeFolder(user);
  if (!home) return std::string(path);
  return *home + std::string(slash == std::string_view::npos ? "" : path.substr(slash));
}

}  // namespace

std::string StoredCardPath::root(const Uuid& cardID) {
  return "resources/cards/" + cardID.uppercaseString();
}
std::string StoredCardPath::richTextMarkdown(const Uuid& cardID) {
  return root(cardID) + "/content.md";
}
std::string StoredCardPath::tableCSV(const Uuid& cardID) { return root(cardID) + "/table.csv"; }
std::string StoredCardPath::htmlRoot(const Uuid& cardID) { return root(cardID) + "/html"; }
std::string StoredCardPath::htmlDocument(const Uuid& cardID) {
  return htmlRoot(cardID) + "/index.html";
}
std::string StoredCardPath::htmlCSS(const Uuid& cardID) { return htmlRoot(cardID) + "/styles.css"; }
std::string StoredCardPath::htmlJS(const Uuid& cardID) { return htmlRoot(cardID) + "/script.js"; }

std::optional<std::string> normalizedProjectResourcePath(std::string_view from) {
  const std::string trimmed = trimWhitespaceAndNewlines(from);
  if (trimmed.empty()) return std::nullopt;
  std::string path = trimmed;
  // Escapes that decode to bytes which are no UTF-8 text leave the path as it was written.
  if (auto decoded = percentDecoded(trimmed); decoded && isValidUTF8(*decoded)) path = *decoded;
  path = withSlashes(path);
  if (path.starts_with('/')) path.erase(0, 1);
  if (!path.starts_with("resources/")) return std::nullopt;
  for (std::string_view part : splitAtSlashes(path)) {
    if (part.empty() || part == "." || part == ".." || part.find(':') != part.npos) {
      return std::nullopt;
    }
  }
  return path;
}

std::optional<std::filesystem::path> externalLocalFileURL(std::string_view from) {
  const std::string trimmed = trimWhitespaceAndNewlines(from);
  if (trimmed.empty()) return std::nullopt;
  if (auto filePath = pathFromFileURL(trimmed)) return standardizedPath(*filePath);
  if (trimmed.starts_with('/')) return standardizedPath(trimmed);
  if (trimmed.starts_with('~')) return standardizedPath(expandingTilde(trimmed));
  return std::nullopt;
}

void validateRelativeSidecarPath(std::string_view path, const Uuid& cardID) {
  if (path.starts_with('/'))
    throwPath("Sidecar path " + backticked(path) + " must be project-relative.");
  const std::string normalized = withSlashes(path);
  for (std::string_view part : splitAtSlashes(normalized)) {
    if (part == "." || part == "..") {
      throwPath("Sidecar path " + backticked(path) + " must not contain `.` or `..` segments.");
    }
  }
  const std::string expected = "resources/cards/" + cardID.lowercaseString() + "/";
  if (!lowercased(normalized).starts_with(expected)) {
    throwPath("Sidecar path " + backticked(path) + " must stay under `resources/cards/" +
              cardID.uppercaseString() + "/`.");
  }
}

std::filesystem::path resolveFileURL(const std::filesystem::path& projectRoot,
                                     std::string_view path, const Uuid& cardID) {
  const std::filesystem::path root = standardizedPath(projectRoot);
  const std::filesystem::path resolved = standardizedPath(folderPrefix(root) + withSlashes(path));
  const std::string text = resolved.string();
  if (!text.starts_with(folderPrefix(root))) {
    throwPath("Sidecar path " + backticked(path) + " escapes the project root for card " +
              cardID.uppercaseString() + ".");
  }
  if (!text.starts_with(folderPrefix(root / StoredCardPath::root(cardID)))) {
    throwPath("Sidecar path " + backticked(path) + " must stay under `resources/cards/" +
              cardID.uppercaseString() + "/`.");
  }
  return resolved;
}

std::filesystem::path resolveProjectResourceFileURL(const std::filesystem::path& projectRoot,
                                                    std::string_view path, const Uuid& cardID) {
  auto normalized = normalizedProjectResourcePath(path);
  if (!normalized) {
    throwPath("Sidecar path " + backticked(path) + " must stay under `resources/` for card " +
              cardID.uppercaseString() + ".");
  }
  const std::filesystem::path root = standardizedPath(projectRoot);
  const std::filesystem::path resolved = standardizedPath(folderPrefix(root) + *normalized);
  const std::string resourcesPrefix = folderPrefix(root / "resources");
  const std::string text = resolved.string();
  if (!text.starts_with(resourcesPrefix) || text.size() <= resourcesPrefix.size()) {
    throwPath("Sidecar path " + backticked(path) + " escapes the resources root for card " +
              cardID.uppercaseString() + ".");
  }
  return resolved;
}

}  // namespace zorvik
