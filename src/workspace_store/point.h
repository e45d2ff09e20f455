// Point: a position or offset in board coordinates, the JSON object {"x": ..., "y": ...} with both
// keys required. A plain value.
#pragma once

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct Point {
  double x = 0;
  double y = 0;

  static Point decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const Point&) const = default;
};

}  // namespace zorvik
