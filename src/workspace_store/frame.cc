#include "workspace_store/frame.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

Frame Frame::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return Frame{
      .x = object.required<double>("x"),
      .y = object.required<double>("y"),
      .width = object.required<double>("width"),
      .height = object.required<double>("height"),
  };
}

AnyCodableValue Frame::encode() const {
  return ObjectEncoder().add("x", x).add("y", y).add("width", width).add("height", height).build();
}

}  // namespace zorvik
