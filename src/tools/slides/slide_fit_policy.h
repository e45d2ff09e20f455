// SlideFitPolicy: how an image fills its slot, persisted as its snake-case word. `contain` shows
// the whole image inside the slot; `cover` fills the slot and crops what sticks out.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class SlideFitPolicy { contain, cover };

template <>
struct EnumRawValues<SlideFitPolicy> {
  static constexpr std::string_view typeName = "SlideFitPolicy";
  static constexpr std::array table{
      std::pair{SlideFitPolicy::contain, std::string_view("contain")},
      std::pair{SlideFitPolicy::cover, std::string_view("cover")},
  };
};

}  // namespace zorvik
