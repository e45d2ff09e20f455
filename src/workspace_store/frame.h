// Frame: a card's rectangle in board coordinates (top-left x, y and size), the JSON object
// {"x", "y", "width", "height"} with all keys required. A plain value.
#pragma once

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct Frame {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  static Frame decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const Frame&) const = default;
};

}  // namespace zorvik
