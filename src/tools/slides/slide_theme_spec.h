// SlideThemeSpec: a named set of color tokens shared by the cards of a slide, and the color word of
// the slide's group frame. JSON keys are snake case: id, name, summary, text_primary,
// text_secondary, text_inverse, surface_primary, surface_secondary, surface_muted, accent_primary,
// border_subtle, group_color. A plain value.
#pragma once

#include <string>

#include "foundation/json/any_codable_value.h"
#include "tools/slides/slide_theme_color.h"

namespace zorvik {

struct SlideThemeSpec {
  std::string id;
  std::string name;
  std::string summary;
  SlideThemeColor textPrimary;
  SlideThemeColor textSecondary;
  SlideThemeColor textInverse;
  SlideThemeColor surfacePrimary;
  SlideThemeColor surfaceSecondary;
  SlideThemeColor surfaceMuted;
  SlideThemeColor accentPrimary;
  SlideThemeColor borderSubtle;
  std::string groupColor;  // a color word of the application's group palette, e.g. "white"

  AnyCodableValue encode() const;
  bool operator==(const SlideThemeSpec&) const = default;
};

}  // namespace zorvik
