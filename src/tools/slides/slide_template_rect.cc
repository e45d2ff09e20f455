#include "tools/slides/slide_template_rect.h"

#include <algorithm>

#include "foundation/json/value_encoder.h"

namespace zorvik {
namespace {

// Fractions such as 0.05 + 0.9 do not add up exactly in binary.
constexpr double kTolerance = 1e-9;

}  // namespace

bool SlideTemplateRect::isNormalized() const {
  return x >= 0 && y >= 0 && width > 0 && height > 0 && x + width <= 1 + kTolerance &&
         y + height <= 1 + kTolerance;
}

double SlideTemplateRect::intersectionArea(const SlideTemplateRect& other) const {
  const double overlapWidth = std::min(x + width, other.x + other.width) - std::max(x, other.x);
  const double overlapHeight = std::min(y + height, other.y + other.height) - std::max(y, other.y);
  if (overlapWidth <= kTolerance || overlapHeight <= kTolerance) return 0;
  return overlapWidth * overlapHeight;
}

AnyCodableValue SlideTemplateRect::encode() const {
  return ObjectEncoder().add("x", x).add("y", y).add("width", width).add("height", height).build();
}

}  // namespace zorvik
