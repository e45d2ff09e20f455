// SlideImageRole: how prominent an image slot is, persisted as its snake-case word.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class SlideImageRole { hero, thumbnail, icon };

template <>
struct EnumRawValues<SlideImageRole> {
  static constexpr std::string_view typeName = "SlideImageRole";
  static constexpr std::array table{
      std::pair{SlideImageRole::hero, std::string_view("hero")},
      std::pair{SlideImageRole::thumbnail, std::string_view("thumbnail")},
      std::pair{SlideImageRole::icon, std::string_view("icon")},
  };
};

}  // namespace zorvik
