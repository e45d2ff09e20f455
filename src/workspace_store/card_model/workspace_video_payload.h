// WorkspaceVideoPayload: the body of a video card. `url` and `sourceType` are required, `summary`
// optional.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceVideoPayload {
  std::string url;
  std::string sourceType;
  std::optional<std::string> summary;

  static WorkspaceVideoPayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceVideoPayload&) const = default;
};

}  // namespace zorvik
