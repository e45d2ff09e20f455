// WorkspaceRichTextPayload: the body of a rich text card. `markdown` is required; `summary` and
// `font_size` (a number) are optional.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceRichTextPayload {
  std::optional<std::string> summary;
  std::string markdown;
  std::optional<double> fontSize;  // "font_size"

  static WorkspaceRichTextPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceRichTextPayload&) const = default;
};

}  // namespace zorvik
