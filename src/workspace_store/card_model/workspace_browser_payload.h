// WorkspaceBrowserPayload: the body of a browser card. `current_url` is required; `summary`,
// `page_title`, `favicon_url` and `last_error` are optional.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceBrowserPayload {
  std::optional<std::string> summary;
  std::string currentURL;                 // "current_url"
  std::optional<std::string> pageTitle;   // "page_title"
  std::optional<std::string> faviconURL;  // "favicon_url"
  std::optional<std::string> lastError;   // "last_error"

  static WorkspaceBrowserPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceBrowserPayload&) const = default;
};

}  // namespace zorvik
