// SlideTemplateSlotSpec: one slot of a slide template: where it lies, which cards it takes and how
// its content is fitted.
//
// JSON keys are snake case: id, title, role, rect, allowed_card_types, required, image_role,
// aspect_policy, fit_policy, min_width_factor, max_width_factor, min_height_factor,
// max_height_factor, overflow_policy, priority; absent optionals are left out. The factors bound
// how far an adaptive layout may scale the slot's width or height against its rect. A higher
// priority is laid out first. A plain value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "tools/slides/slide_aspect_policy.h"
#include "tools/slides/slide_fit_policy.h"
#include "tools/slides/slide_image_role.h"
#include "tools/slides/slide_overflow_policy.h"
#include "tools/slides/slide_slot_role.h"
#include "tools/slides/slide_template_rect.h"

namespace zorvik {

struct SlideTemplateSlotSpec {
  std::string id;
  std::string title;  // display title
  SlideSlotRole role = SlideSlotRole::body;
  SlideTemplateRect rect;
  std::vector<std::string> allowedCardTypes;  // slide card type words: image, rich_text, table
  bool required = false;
  std::optional<SlideImageRole> imageRole;
  std::optional<SlideAspectPolicy> aspectPolicy;
  std::optional<SlideFitPolicy> fitPolicy;
  std::optional<double> minWidthFactor;
  std::optional<double> maxWidthFactor;
  std::optional<double> minHeightFactor;
  std::optional<double> maxHeightFactor;
  SlideOverflowPolicy overflowPolicy = SlideOverflowPolicy::clip;
  int64_t priority = 0;

  AnyCodableValue encode() const;
  bool operator==(const SlideTemplateSlotSpec&) const = default;
};

}  // namespace zorvik
