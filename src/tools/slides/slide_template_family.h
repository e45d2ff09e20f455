// SlideTemplateFamily: the kind of story a slide template tells, persisted as its snake-case word.
#pragma once

#include <array>
#include <string_view>
#include <utility>

#include "foundation/json/coding_traits.h"

namespace zorvik {

enum class SlideTemplateFamily {
  narrative,
  sectionOpener,
  kpiDashboard,
  roadmap,
  caseStudy,
  testimonial,
  problemSolution,
  process,
  timeline,
  gallery,
  comparison,
  dataStory,
};

template <>
struct EnumRawValues<SlideTemplateFamily> {
  static constexpr std::string_view typeName = "SlideTemplateFamily";
  static constexpr std::array table{
      std::pair{SlideTemplateFamily::narrative, std::string_view("narrative")},
      std::pair{SlideTemplateFamily::sectionOpener, std::string_view("section_opener")},
      std::pair{SlideTemplateFamily::kpiDashboard, std::string_view("kpi_dashboard")},
      std::pair{SlideTemplateFamily::roadmap, std::string_view("roadmap")},
      std::pair{SlideTemplateFamily::caseStudy, std::string_view("case_study")},
      std::pair{SlideTemplateFamily::testimonial, std::string_view("testimonial")},
      std::pair{SlideTemplateFamily::problemSolution, std::string_view("problem_solution")},
      std::pair{SlideTemplateFamily::process, std::string_view("process")},
      std::pair{SlideTemplateFamily::timeline, std::string_view("timeline")},
      std::pair{SlideTemplateFamily::gallery, std::string_view("gallery")},
      std::pair{SlideTemplateFamily::comparison, std::string_view("comparison")},
      std::pair{SlideTemplateFamily::dataStory, std::string_view("data_story")},
  };
};

}  // namespace zorvik
