// SlideTemplateCatalog: the versioned catalogue of slide templates and themes, and the validator
// that keeps its data honest.
//
// `standard()` is the built-in catalogue (15 templates, 4 themes), built once on first use and
// immutable afterwards, so any thread may read it; pointers it hands out stay valid for the life of
// the process. A catalogue made from other lists (for tests and tools that wrap one) is a plain
// value. Nothing here throws.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/slides/slide_template_spec.h"
#include "tools/slides/slide_theme_spec.h"

namespace zorvik {

class SlideTemplateCatalog {
 public:
  static constexpr int64_t version = 3;
  static constexpr std::string_view defaultThemeId = "editorial_light";
  // The card types a slot may name, as slide card type words.
  static constexpr std::array<std::string_view, 3> supportedCardTypes{"image", "rich_text",
                                                                      "table"};

  static const SlideTemplateCatalog& standard();

  SlideTemplateCatalog(std::vector<SlideTemplateSpec> templates,
                       std::vector<SlideThemeSpec> themes);

  const std::vector<SlideTemplateSpec>& templates() const { return templates_; }
  const std::vector<SlideThemeSpec>& themes() const { return themes_; }

  // The entry with exactly this id (case-sensitive), or nullptr. Points into this catalogue.
  const SlideTemplateSpec* templateWithId(std::string_view id) const;
  const SlideThemeSpec* themeWithId(std::string_view id) const;

  // The problems of one template, in rule order: "canvas size must be positive", then for each
  // slot texts that begin "slot <id>", e.g. "slot hero_image rect is out of normalized bounds".
  // Empty for a healthy template.
  static std::vector<std::string> validate(const SlideTemplateSpec& spec);
  // `validate` over all templates, each text prefixed with "<template id>: ".
  std::vector<std::string> validationIssues() const;

 private:
  std::vector<SlideTemplateSpec> templates_;
  std::vector<SlideThemeSpec> themes_;
};

}  // namespace zorvik
