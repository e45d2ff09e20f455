#include "workspace_store/point.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

Point Point::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return Point{.x = object.required<double>("x"), .y = object.required<double>("y")};
}

AnyCodableValue Point::encode() const { return ObjectEncoder().add("x", x).add("y", y).build(); }

}  // namespace zorvik
