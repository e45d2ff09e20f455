// SlideTemplateRect: where a slot lies on the slide, as fractions of the canvas (top-left x, y
// and size, each between 0 and 1). JSON {"x", "y", "width", "height"}. A plain value.
#pragma once

#include "foundation/json/any_codable_value.h"

namespace zorvik {

struct SlideTemplateRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  // Inside the unit square with a positive size (edges may touch 1 up to a rounding error).
  bool isNormalized() const;
  // The area the two rects share; 0 when they only touch or lie apart.
  double intersectionArea(const SlideTemplateRect& other) const;

  AnyCodableValue encode() const;
  bool operator==(const SlideTemplateRect&) const = default;
};

}  // namespace zorvik
