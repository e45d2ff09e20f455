// SlideSlotRole: what a slot of a slide template holds, persisted as its snake-case word.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class SlideSlotRole {
  title,
  subtitle,
  body,
  caption,
  kpi,
  quote,
  attribution,
  evidence,
  table,
  image,
  callout,
  timelineStep,
  metric,
  problem,
  solution,
  processStep,
  summary,
  challenge,
  approach,
  outcome,
  phase,
};

template <>
struct EnumRawValues<SlideSlotRole> {
  static constexpr std::string_view typeName = "SlideSlotRole";
  static constexpr std::array table{
      std::pair{SlideSlotRole::title, std::string_view("title")},
      std::pair{SlideSlotRole::subtitle, std::string_view("subtitle")},
      std::pair{SlideSlotRole::body, std::string_view("body")},
      std::pair{SlideSlotRole::caption, std::string_view("caption")},
      std::pair{SlideSlotRole::kpi, std::string_view("kpi")},
      std::pair{SlideSlotRole::quote, std::string_view("quote")},
      std::pair{SlideSlotRole::attribution, std::string_view("attribution")},
      std::pair{SlideSlotRole::evidence, std::string_view("evidence")},
      std::pair{SlideSlotRole::table, std::string_view("table")},
      std::pair{SlideSlotRole::image, std::string_view("image")},
      std::pair{SlideSlotRole::callout, std::string_view("callout")},
      std::pair{SlideSlotRole::timelineStep, std::string_view("timeline_step")},
      std::pair{SlideSlotRole::metric, std::string_view("metric")},
      std::pair{SlideSlotRole::problem, std::string_view("problem")},
      std::pair{SlideSlotRole::solution, std::string_view("solution")},
      std::pair{SlideSlotRole::processStep, std::string_view("process_step")},
      std::pair{SlideSlotRole::summary, std::string_view("summary")},
      std::pair{SlideSlotRole::challenge, std::string_view("challenge")},
      std::pair{SlideSlotRole::approach, std::string_view("approach")},
      std::pair{SlideSlotRole::outcome, std::string_view("outcome")},
      std::pair{SlideSlotRole::phase, std::string_view("phase")},
  };
};

}  // namespace zorvik
