#include "tools/slides/slide_aspect_policy.h"

#include <string>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

bool SlideAspectPolicy::isValid() const {
  if (const auto* range = std::get_if<Range>(&value)) {
    return range->min > 0 && range->max > 0 && range->min <= range->max;
  }
  if (const auto* fixed = std::get_if<Fixed>(&value)) return fixed->value > 0;
  return true;
}

SlideAspectPolicy SlideAspectPolicy::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  const std::string mode = object.required<std::string>("mode");
  if (mode == "any") return any();
  if (mode == "range") return range(object.required<double>("min"), object.required<double>("max"));
  if (mode == "fixed") return fixed(object.required<double>("value"));
  object.throwDataCorrupted("mode", "Unknown aspect policy mode " + mode);
}

AnyCodableValue SlideAspectPolicy::encode() const {
  if (const auto* range = std::get_if<Range>(&value)) {
    return ObjectEncoder()
        .add("mode", "range")
        .add("min", range->min)
        .add("max", range->max)
        .build();
  }
  if (const auto* fixed = std::get_if<Fixed>(&value)) {
    return ObjectEncoder().add("mode", "fixed").add("value", fixed->value).build();
  }
  return ObjectEncoder().add("mode", "any").build();
}

}  // namespace zorvik
