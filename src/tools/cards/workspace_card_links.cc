// URLs the toolkit hands out: board resource URLs for images, deep links to cards, and the kind
// of a link card's url.
#include <system_error>

#include "foundation/file_url.h"
#include "foundation/standardized_path.h"
#include "foundation/text.h"
#include "tools/cards/workspace_card_toolkit.h"

namespace zorvik {
namespace {

// Percent-encodes every byte but the RFC 3986 unreserved characters and "/".
std::string percentEncodedPath(std::string_view text) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(text.size());
  for (unsigned char c : text) {
    const bool keep = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                      c == '-' || c == '.' || c == '_' || c == '~' || c == '/';
    if (keep) {
      encoded.push_back(static_cast<char>(c));
    } else {
      encoded.push_back('%');
      encoded.push_back(kHex[c >> 4]);
      encoded.push_back(kHex[c & 0xF]);
    }
  }
  return encoded;
}

// The file an image url names: a file URL, or a project-relative "resources/..." path.
std::optional<std::filesystem::path> imageFile(std::string_view url,
                                               const std::filesystem::path& project) {
  if (lowercased(url.substr(0, 5)) == "file:") return pathFromFileURL(url);
  while (url.starts_with("./")) url.remove_prefix(2);
  if (!url.starts_with("resources/")) return std::nullopt;
  return project / std::filesystem::path(std::string(url));
}

}  // namespace

std::optional<std::string> WorkspaceCardToolkit::boardResourceURL(
    const WorkspaceCard& card, const WorkspaceCardContext& context) {
  const auto* image = card.payload.as<WorkspaceImagePayload>();
  if (!image || !context.projectURL) return std::nullopt;
  const std::string url = trimWhitespaceAndNewlines(image->url);
  auto file = imageFile(url, *context.projectURL);
  if (!file) return std::nullopt;

  const std::filesystem::path resources = standardizedPath(*context.projectURL / "resources");
  const std::filesystem::path candidate = standardizedPath(*file);
  if (candidate == resources || !isSameOrBelow(candidate, resources)) return std::nullopt;
  std::error_code error;
  if (!std::filesystem::is_regular_file(candidate, error)) return std::nullopt;
  return "zorvik-resource://resources/" +
         percentEncodedPath(candidate.lexically_relative(resources).generic_string());
}

std::string WorkspaceCardToolkit::deepLinkURL(const Uuid& cardID,
                                              const std::filesystem::path& projectURL) {
  return "zorvik://project/card/" + cardID.uppercaseString() +
         "?path=" + percentEncodedPath(projectURL.string());
}

std::string WorkspaceCardToolkit::linkSourceWord(const WorkspaceLinkPayload& payload) {
  const std::string url = lowercased(trimWhitespaceAndNewlines(payload.url));
  if (url.starts_with("file:") || url.starts_with("/") || url.starts_with("~")) return "local";
  if (url.starts_with("http://") || url.starts_with("https://")) return "remote";
  return std::string(rawValue(payload.source));
}

std::optional<std::string> WorkspaceCardToolkit::primaryImage(const WorkspaceLinkPayload& payload) {
  if (payload.images.empty()) return std::nullopt;
  const int64_t index = payload.currentImageIndex;
  if (index >= 0 && static_cast<uint64_t>(index) < payload.images.size()) {
    return payload.images[static_cast<size_t>(index)];
  }
  return payload.images.front();
}

}  // namespace zorvik
