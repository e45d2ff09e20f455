// SlideState and its parts: the answer records of get_slide_state for one slide group. JSON keys
// are snake case; absent optionals are left out. Plain values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "tools/slides/slide_overflow_policy.h"
#include "tools/slides/slide_slot_role.h"
#include "tools/slides/slide_template_family.h"
#include "workspace_store/frame.h"

namespace zorvik {

// One slot and the card bound to it. Keys: slot_id, slot_role, required, card_id, card_type,
// in_group, frame. Role and required come from the template; the rest from the bound card.
struct SlotState {
  std::string slotId;
  std::optional<SlideSlotRole> slotRole;
  std::optional<bool> required;
  std::optional<std::string> cardId;    // upper-case UUID, or the binding's text if it is none
  std::optional<std::string> cardType;  // slide card type word (see slide_card_type.h)
  std::optional<bool> inGroup;          // the bound card is a direct child of the group
  std::optional<Frame> frame;           // the bound card's frame, board coordinates

  AnyCodableValue encode() const;
  bool operator==(const SlotState&) const = default;
};

// How a template slot may adapt. Keys: slot_id, overflow_policy, priority, min_width_factor,
// max_width_factor, min_height_factor, max_height_factor.
struct SlotConstraint {
  std::string slotId;
  SlideOverflowPolicy overflowPolicy = SlideOverflowPolicy::clip;
  int64_t priority = 0;
  std::optional<double> minWidthFactor;
  std::optional<double> maxWidthFactor;
  std::optional<double> minHeightFactor;
  std::optional<double> maxHeightFactor;

  AnyCodableValue encode() const;
  bool operator==(const SlotConstraint&) const = default;
};

// A direct child of the group. Keys: card_id, card_type, frame.
struct ChildFrame {
  Uuid cardId;
  std::optional<std::string> cardType;
  Frame frame;

  AnyCodableValue encode() const;
  bool operator==(const ChildFrame&) const = default;
};

// Keys: group_id, title, template_id, template_family, theme_id, group_kind, layout_mode,
// slide_version, slide_updated_at, group_frame, slots, slot_constraints, unresolved_slots,
// child_frames.
struct SlideState {
  Uuid groupId;
  std::string title;
  std::optional<std::string> templateId;
  std::optional<SlideTemplateFamily> templateFamily;
  std::optional<std::string> themeId;
  std::string groupKind;
  std::string layoutMode;
  std::optional<int64_t> slideVersion;
  std::optional<std::string> slideUpdatedAt;
  Frame groupFrame;
  std::vector<SlotState> slots;
  std::vector<SlotConstraint> slotConstraints;
  std::vector<std::string> unresolvedSlots;
  std::optional<std::vector<ChildFrame>> childFrames;

  AnyCodableValue encode() const;
  bool operator==(const SlideState&) const = default;
};

}  // namespace zorvik
