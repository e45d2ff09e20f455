#include "tools/slides/slide_theme_color.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

AnyCodableValue SlideThemeColor::encode() const {
  return ObjectEncoder()
      .add("red", red)
      .add("green", green)
      .add("blue", blue)
      .add("opacity", opacity)
      .build();
}

}  // namespace zorvik
