// WorkspaceCard and WorkspaceCardFile: a card with its typed payload, as read-side tools see it,
// and the smaller form of a card file.
//
// JSON keys equal the field names. WorkspaceCard requires all keys but `parentID` and `summary`;
// WorkspaceCardFile all but `parentID`. Absent optionals are left out on encoding. Plain values;
// decoding failures throw DecodingError.
#pragma once

#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/card_model/workspace_card_payload.h"
#include "workspace_store/card_model/workspace_card_type.h"

namespace zorvik {

class ValueDecoder;

struct WorkspaceCard {
  Uuid id;
  std::optional<Uuid> parentID;
  std::string title;
  WorkspaceCardType type = WorkspaceCardType::link;
  std::optional<std::string> summary;
  bool isLoading = false;
  WorkspaceCardPayload payload;

  static WorkspaceCard decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCard&) const = default;
};

struct WorkspaceCardFile {
  Uuid id;
  std::optional<Uuid> parentID;
  std::string title;
  WorkspaceCardPayload payload;

  static WorkspaceCardFile decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceCardFile&) const = default;
};

}  // namespace zorvik
