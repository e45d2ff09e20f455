// WorkspaceTablePayload: the body of a table card. `columns`, `rows` and `showsRowHeaders` are
// required, `summary` optional.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "workspace_store/card_model/table_rows.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceTablePayload {
  std::optional<std::string> summary;
  std::vector<std::string> columns;
  TableRows rows;
  bool showsRowHeaders = false;

  static WorkspaceTablePayload decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceTablePayload&) const = default;
};

}  // namespace zorvik
