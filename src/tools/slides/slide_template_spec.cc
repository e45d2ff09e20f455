#include "tools/slides/slide_template_spec.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

const SlideTemplateSlotSpec* SlideTemplateSpec::slot(std::string_view slotId) const {
  for (const SlideTemplateSlotSpec& candidate : slots) {
    if (candidate.id == slotId) return &candidate;
  }
  return nullptr;
}

AnyCodableValue SlideTemplateSpec::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("name", name)
      .add("summary", summary)
      .add("template_family", templateFamily)
      .add("canvas_size", canvasSize)
      .add("slots", slots)
      .build();
}

}  // namespace zorvik
