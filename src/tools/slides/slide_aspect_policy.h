// SlideAspectPolicy: which image aspect ratios (width over height) a slot accepts.
//
// A tagged union: `range` (min..max, both inclusive), `fixed` (one value) or `any`. JSON form:
// {"mode":"range","min":0.6,"max":2.4}, {"mode":"fixed","value":1} or {"mode":"any"}. Decoding an
// unknown mode, or a range or fixed policy without its numbers, throws DecodingError. A plain
// value.
#pragma once

#include <variant>

#include "foundation/json/any_codable_value.h"

namespace zorvik {

class ValueDecoder;

struct SlideAspectPolicy {
  struct Any {
    bool operator==(const Any&) const = default;
  };
  struct Range {
    double min = 0;
    double max = 0;
    bool operator==(const Range&) const = default;
  };
  struct Fixed {
    double value = 0;
    bool operator==(const Fixed&) const = default;
  };

  std::variant<Any, Range, Fixed> value;

  static SlideAspectPolicy any() { return {Any{}}; }
  static SlideAspectPolicy range(double min, double max) { return {Range{min, max}}; }
  static SlideAspectPolicy fixed(double aspect) { return {Fixed{aspect}}; }

  // A range needs positive bounds with min at most max; a fixed value must be positive.
  bool isValid() const;

  static SlideAspectPolicy decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const SlideAspectPolicy&) const = default;
};

}  // namespace zorvik
