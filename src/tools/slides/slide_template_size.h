// SlideTemplateSize: the canvas a slide template is laid out on, in points. JSON
// {"width", "height"}. A plain value.
#pragma once

#include "foundation/json/any_codable_value.h"

namespace zorvik {

struct SlideTemplateSize {
  double width = 0;
  double height = 0;

  AnyCodableValue encode() const;
  bool operator==(const SlideTemplateSize&) const = default;
};

}  // namespace zorvik
