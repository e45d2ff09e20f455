// WorkspaceImagePayload: the body of an image card. `url` is required, `summary` optional.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceImagePayload {
  std::string url;
  std::optional<std::string> summary;

  static WorkspaceImagePayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceImagePayload&) const = default;
};

}  // namespace zorvik
