// LayoutItem: the geometry of one card as the layout tools report it (list_card_layouts, and the
// child layouts of get_group_layout).
//
// JSON form: card_id (upper-case UUID), parent_id (UUID, null for a card on the board root),
// frame {x, y, width, height}, center {x, y}, z_index, and snap_constraints (the stored record
// with its left/right/top/bottom constraints), which is left out when absent. A plain value.
#pragma once

#include <cstdint>
#include <optional>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/card_record.h"
#include "workspace_store/frame.h"
#include "workspace_store/point.h"
#include "workspace_store/snap_constraints.h"

namespace zorvik {

struct LayoutItem {
  Uuid cardID;
  std::optional<Uuid> parentID;
  Frame frame;
  Point center;  // the middle of the frame
  int64_t zIndex = 0;
  std::optional<SnapConstraints> snapConstraints;

  // The card's geometry; its snap constraints are carried only when `includeConstraints`.
  static LayoutItem fromCard(const CardRecord& card, bool includeConstraints);

  AnyCodableValue encode() const;
  // The JSON schema of the encoded form.
  static AnyCodableValue jsonSchema();
  bool operator==(const LayoutItem&) const = default;
};

}  // namespace zorvik
