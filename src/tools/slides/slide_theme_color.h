// SlideThemeColor: one color token of a slide theme, each channel a fraction from 0 to 1. JSON
// {"red", "green", "blue", "opacity"}. A plain value.
#pragma once

#include "foundation/json/any_codable_value.h"

namespace zorvik {

struct SlideThemeColor {
  double red = 0;
  double green = 0;
  double blue = 0;
  double opacity = 1;

  AnyCodableValue encode() const;
  bool operator==(const SlideThemeColor&) const = default;
};

}  // namespace zorvik
