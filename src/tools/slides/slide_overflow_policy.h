// SlideOverflowPolicy: what a slot does with content larger than its rect, persisted as its
// snake-case word: cut it off (`clip`), scale it down (`shrink`) or grow the slot (`expand`).
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class SlideOverflowPolicy { clip, shrink, expand };

template <>
struct EnumRawValues<SlideOverflowPolicy> {
  static constexpr std::string_view typeName = "SlideOverflowPolicy";
  static constexpr std::array table{
      std::pair{SlideOverflowPolicy::clip, std::string_view("clip")},
      std::pair{SlideOverflowPolicy::shrink, std::string_view("shrink")},
      std::pair{SlideOverflowPolicy::expand, std::string_view("expand")},
  };
};

}  // namespace zorvik
