#include "tools/slides/slide_template_size.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

AnyCodableValue SlideTemplateSize::encode() const {
  return ObjectEncoder().add("width", width).add("height", height).build();
}

}  // namespace zorvik
