#include "tools/layout/layout_item.h"

#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"

namespace zorvik {

LayoutItem LayoutItem::fromCard(const CardRecord& card, bool includeConstraints) {
  return LayoutItem{
      .cardID = card.id,
      .parentID = card.parentID,
      .frame = card.frame,
      .center = {card.frame.x + card.frame.width / 2, card.frame.y + card.frame.height / 2},
      .zIndex = card.zIndex,
      .snapConstraints = includeConstraints ? card.snapConstraints : std::nullopt,
  };
}

AnyCodableValue LayoutItem::encode() const {
  return ObjectEncoder()
      .add("card_id", cardID)
      .addNullable("parent_id", parentID)
      .add("frame", frame)
      .add("center", center)
      .add("z_index", zIndex)
      .add("snap_constraints", snapConstraints)
      .build();
}

AnyCodableValue LayoutItem::jsonSchema() {
  const AnyCodableValue number = schema::number();
  return schema::object(
      {
          {"card_id", schema::string()},
          {"parent_id", JSONObject{{"type", AnyCodableValue::Array{"string", "null"}},
                                   {"description", "Parent folder or group; null on the board."}}},
          {"frame",
           schema::object({{"x", number}, {"y", number}, {"width", number}, {"height", number}},
                          {"x", "y", "width", "height"})},
          {"center", schema::object({{"x", number}, {"y", number}}, {"x", "y"})},
          {"z_index", schema::integer()},
          {"snap_constraints",
           schema::typed("object",
                         "Edge snaps (left, right, top, bottom: anchorId, side, crossOffset, "
                         "localOffset, gap); only with include_constraints=true.")},
      },
      {"card_id", "parent_id", "frame", "center", "z_index"});
}

}  // namespace zorvik
