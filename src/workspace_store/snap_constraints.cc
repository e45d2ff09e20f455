#include "workspace_store/snap_constraints.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

SnapConstraint SnapConstraint::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return SnapConstraint{
      .anchorId = object.required<Uuid>("anchorId"),
      .side = object.required<std::string>("side"),
      .crossOffset = object.required<double>("crossOffset"),
      .localOffset = object.required<Point>("localOffset"),
      .gap = object.required<double>("gap"),
  };
}

AnyCodableValue SnapConstraint::encode() const {
  return ObjectEncoder()
      .add("anchorId", anchorId)
      .add("side", side)
      .add("crossOffset", crossOffset)
      .add("localOffset", localOffset)
      .add("gap", gap)
      .build();
}

std::vector<SnapConstraint> SnapConstraints::all() const {
  std::vector<SnapConstraint> present;
  for (const auto* edge : {&left, &right, &top, &bottom}) {
    if (*edge) present.push_back(**edge);
  }
  return present;
}

SnapConstraints SnapConstraints::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return SnapConstraints{
      .left = object.optional<SnapConstraint>("left"),
      .right = object.optional<SnapConstraint>("right"),
      .top = object.optional<SnapConstraint>("top"),
      .bottom = object.optional<SnapConstraint>("bottom"),
  };
}

AnyCodableValue SnapConstraints::encode() const {
  return ObjectEncoder()
      .add("left", left)
      .add("right", right)
      .add("top", top)
      .add("bottom", bottom)
      .build();
}

}  // namespace zorvik
