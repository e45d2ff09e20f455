// SlideTemplateSpec: a named arrangement of slots on a fixed canvas. JSON keys: id, name, summary,
// template_family, canvas_size, slots (in their order). A plain value.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "tools/slides/slide_template_family.h"
#include "tools/slides/slide_template_size.h"
#include "tools/slides/slide_template_slot_spec.h"

namespace zorvik {

struct SlideTemplateSpec {
  std::string id;
  std::string name;
  std::string summary;
  SlideTemplateFamily templateFamily = SlideTemplateFamily::narrative;
  SlideTemplateSize canvasSize;
  std::vector<SlideTemplateSlotSpec> slots;

  // The slot with exactly this id, or nullptr. Points into `slots`.
  const SlideTemplateSlotSpec* slot(std::string_view slotId) const;

  AnyCodableValue encode() const;
  bool operator==(const SlideTemplateSpec&) const = default;
};

}  // namespace zorvik
