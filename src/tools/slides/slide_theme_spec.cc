#include "tools/slides/slide_theme_spec.h"

#include "foundation/json/value_encoder.h"

namespace zorvik {

AnyCodableValue SlideThemeSpec::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("name", name)
      .add("summary", summary)
      .add("text_primary", textPrimary)
      .add("text_secondary", textSecondary)
      .add("text_inverse", textInverse)
      .add("surface_primary", surfacePrimary)
      .add("surface_secondary", surfaceSecondary)
      .add("surface_muted", surfaceMuted)
      .add("accent_primary", accentPrimary)
      .add("border_subtle", borderSubtle)
      .add("group_color", groupColor)
      .build();
}

}  // namespace zorvik
