#include "tools/slides/slide_template_catalog.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "tools/slides/builtin_slide_templates.h"
#include "tools/slides/builtin_slide_themes.h"

namespace zorvik {
namespace {

bool isSupportedCardType(std::string_view type) {
  return std::ranges::find(SlideTemplateCatalog::supportedCardTypes, type) !=
         SlideTemplateCatalog::supportedCardTypes.end();
}

struct FactorRule {
  std::string_view name;
  const std::optional<double>& value;
};

// Adds the factor rules: each present factor positive, then no minimum above its maximum.
void validateFactors(const SlideTemplateSlotSpec& slot, const std::string& prefix,
                     std::vector<std::string>& issues) {
  const FactorRule factors[] = {{"min_width_factor", slot.minWidthFactor},
                                {"max_width_factor", slot.maxWidthFactor},
                                {"min_height_factor", slot.minHeightFactor},
                                {"max_height_factor", slot.maxHeightFactor}};
  for (const FactorRule& factor : factors) {
    if (factor.value && !(*factor.value > 0)) {
      issues.push_back(prefix + " has invalid " + std::string(factor.name));
    }
  }
  if (slot.minWidthFactor && slot.maxWidthFactor && *slot.minWidthFactor > *slot.maxWidthFactor) {
    issues.push_back(prefix + " has min_width_factor > max_width_factor");
  }
  if (slot.minHeightFactor && slot.maxHeightFactor &&
      *slot.minHeightFactor > *slot.maxHeightFactor) {
    issues.push_back(prefix + " has min_height_factor > max_height_factor");
  }
}

void validateSlot(const SlideTemplateSlotSpec& slot, std::vector<std::string>& issues) {
  const std::string prefix = "slot " + slot.id;
  if (!slot.rect.isNormalized()) issues.push_back(prefix + " rect is out of normalized bounds");

  if (slot.allowedCardTypes.empty()) issues.push_back(prefix + " has no allowed card types");
  for (const std::string& type : slot.allowedCardTypes) {
    if (!isSupportedCardType(type)) {
      issues.push_back(prefix + " uses unsupported card type: " + type);
    }
  }

  const bool allowsImage =
      std::ranges::find(slot.allowedCardTypes, "image") != slot.allowedCardTypes.end();
  if (slot.imageRole && !allowsImage) {
    issues.push_back(prefix + " has image_role but does not allow image card type");
  }
  if (allowsImage && !slot.imageRole) {
    issues.push_back(prefix + " allows image but image_role is missing");
  }
  if (slot.aspectPolicy && !slot.aspectPolicy->isValid()) {
    issues.push_back(prefix + " has invalid aspect_policy");
  }
  if (slot.imageRole && !slot.fitPolicy) {
    issues.push_back(prefix + " has image_role but missing fit_policy");
  }
  validateFactors(slot, prefix, issues);
  if (slot.priority < 0) issues.push_back(prefix + " has negative priority");
}

}  // namespace

const SlideTemplateCatalog& SlideTemplateCatalog::standard() {
  static const SlideTemplateCatalog catalog(builtInSlideTemplates(), builtInSlideThemes());
  return catalog;
}

SlideTemplateCatalog::SlideTemplateCatalog(std::vector<SlideTemplateSpec> templates,
                                           std::vector<SlideThemeSpec> themes)
    : templates_(std::move(templates)), themes_(std::move(themes)) {}

const SlideTemplateSpec* SlideTemplateCatalog::templateWithId(std::string_view id) const {
  auto found = std::ranges::find(templates_, id, &SlideTemplateSpec::id);
  return found == templates_.end() ? nullptr : &*found;
}

const SlideThemeSpec* SlideTemplateCatalog::themeWithId(std::string_view id) const {
  auto found = std::ranges::find(themes_, id, &SlideThemeSpec::id);
  return found == themes_.end() ? nullptr : &*found;
}

std::vector<std::string> SlideTemplateCatalog::validate(const SlideTemplateSpec& spec) {
  std::vector<std::string> issues;
  if (!(spec.canvasSize.width > 0) || !(spec.canvasSize.height > 0)) {
    issues.emplace_back("canvas size must be positive");
  }
  for (const SlideTemplateSlotSpec& slot : spec.slots) validateSlot(slot, issues);
  return issues;
}

std::vector<std::string> SlideTemplateCatalog::validationIssues() const {
  std::vector<std::string> issues;
  for (const SlideTemplateSpec& spec : templates_) {
    for (std::string& issue : validate(spec)) issues.push_back(spec.id + ": " + std::move(issue));
  }
  return issues;
}

}  // namespace zorvik
