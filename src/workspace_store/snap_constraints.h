// SnapConstraint and SnapConstraints: how a card's edges are snapped to other cards on the board.
//
// A SnapConstraint has all keys required (anchorId, side, crossOffset, localOffset, gap). `side` is
// kept as written; whether it names one of "left", "right", "top", "bottom" is checked by the board
// compiler, not here. SnapConstraints holds one optional constraint per edge; absent and null keys
// mean no constraint, and absent ones are left out when encoding. Plain values.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/point.h"

namespace zorvik {

class ValueDecoder;

struct SnapConstraint {
  Uuid anchorId;  // the card this edge is snapped to
  std::string side;
  double crossOffset = 0;  // offset along the edge
  Point localOffset;       // offset in the card's own space
  double gap = 0;          // distance to the anchor

  static SnapConstraint decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const SnapConstraint&) const = default;
};

struct SnapConstraints {
  std::optional<SnapConstraint> left;
  std::optional<SnapConstraint> right;
  std::optional<SnapConstraint> top;
  std::optional<SnapConstraint> bottom;

  // The constraints present, in the order left, right, top, bottom.
  std::vector<SnapConstraint> all() const;

  static SnapConstraints decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const SnapConstraints&) const = default;
};

}  // namespace zorvik
