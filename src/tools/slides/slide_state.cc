#include "tools/slides/slide_state.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

AnyCodableValue SlotState::encode() const {
  return ObjectEncoder()
      .add("slot_id", slotId)
      .add("slot_role", slotRole)
      .add("required", required)
      .add("card_id", cardId)
      .add("card_type", cardType)
      .add("in_group", inGroup)
      .add("frame", frame)
      .build();
}

AnyCodableValue SlotConstraint::encode() const {
  return ObjectEncoder()
      .add("slot_id", slotId)
      .add("overflow_policy", overflowPolicy)
      .add("priority", priority)
      .add("min_width_factor", minWidthFactor)
      .add("max_width_factor", maxWidthFactor)
      .add("min_height_factor", minHeightFactor)
      .add("max_height_factor", maxHeightFactor)
      .build();
}

AnyCodableValue ChildFrame::encode() const {
  return ObjectEncoder()
      .add("card_id", cardId)
      .add("card_type", cardType)
      .add("frame", frame)
      .build();
}

AnyCodableValue SlideState::encode() const {
  return ObjectEncoder()
      .add("group_id", groupId)
      .add("title", title)
      .add("template_id", templateId)
      .add("template_family", templateFamily)
      .add("theme_id", themeId)
      .add("group_kind", groupKind)
      .add("layout_mode", layoutMode)
      .add("slide_version", slideVersion)
      .add("slide_updated_at", slideUpdatedAt)
      .add("group_frame", groupFrame)
      .add("slots", slots)
      .add("slot_constraints", slotConstraints)
      .add("unresolved_slots", unresolvedSlots)
      .add("child_frames", childFrames)
      .build();
}

}  // namespace zorvik
