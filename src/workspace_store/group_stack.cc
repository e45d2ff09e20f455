#include "workspace_store/group_stack.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

GroupStack GroupStack::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return GroupStack{
      .axis = object.required<std::string>("axis"),
      .anchorId = object.required<Uuid>("anchorId"),
      .orderedIds = object.required<std::vector<Uuid>>("orderedIds"),
      .crossOffset = object.required<double>("crossOffset"),
  };
}

AnyCodableValue GroupStack::encode() const {
  return ObjectEncoder()
      .add("axis", axis)
      .add("anchorId", anchorId)
      .add("orderedIds", orderedIds)
      .add("crossOffset", crossOffset)
      .build();
}

}  // namespace zorvik
