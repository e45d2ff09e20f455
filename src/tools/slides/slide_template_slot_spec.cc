#include "tools/slides/slide_template_slot_spec.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

AnyCodableValue SlideTemplateSlotSpec::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("title", title)
      .add("role", role)
      .add("rect", rect)
      .add("allowed_card_types", allowedCardTypes)
      .add("required", required)
      .add("image_role", imageRole)
      .add("aspect_policy", aspectPolicy)
      .add("fit_policy", fitPolicy)
      .add("min_width_factor", minWidthFactor)
      .add("max_width_factor", maxWidthFactor)
      .add("min_height_factor", minHeightFactor)
      .add("max_height_factor", maxHeightFactor)
      .add("overflow_policy", overflowPolicy)
      .add("priority", priority)
      .build();
}

}  // namespace zorvik
