#include "tools/slides/slide_template_catalog.h"

#include <gtest/gtest.h>

#include <functional>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"

namespace zorvik {
namespace {

const SlideTemplateCatalog& catalog() { return SlideTemplateCatalog::standard(); }

TEST(SlideTemplateCatalogTest, StandardCatalogIsHealthy) {
  EXPECT_EQ(catalog().validationIssues(), std::vector<std::string>{});
  EXPECT_NE(catalog().themeWithId(SlideTemplateCatalog::defaultThemeId), nullptr);
  for (const auto& spec : catalog().templates()) {
    EXPECT_EQ(catalog().templateWithId(spec.id), &spec);
    for (const auto& slot : spec.slots) EXPECT_EQ(spec.slot(slot.id), &slot) << spec.id;
  }
}

TEST(SlideTemplateCatalogTest, LookupIsExactAndCaseSensitive) {
  ASSERT_NE(catalog().templateWithId("hero_left"), nullptr);
  EXPECT_EQ(catalog().templateWithId("hero_left")->name, "Hero Left");
  EXPECT_EQ(catalog().templateWithId("Hero_Left"), nullptr);
  EXPECT_EQ(catalog().templateWithId("hero_left "), nullptr);
  EXPECT_EQ(catalog().templateWithId(""), nullptr);
  ASSERT_NE(catalog().themeWithId("noir_focus"), nullptr);
  EXPECT_EQ(catalog().themeWithId("noir_focus")->name, "Noir Focus");
  EXPECT_EQ(catalog().themeWithId("NOIR_FOCUS"), nullptr);
}

TEST(SlideTemplateRectTest, IntersectionIgnoresTouchingEdges) {
  const SlideTemplateRect left{0.05, 0.2, 0.45, 0.5};
  EXPECT_EQ(left.intersectionArea({0.5, 0.2, 0.45, 0.5}), 0);   // shares the edge x = 0.5
  EXPECT_EQ(left.intersectionArea({0.05, 0.7, 0.45, 0.2}), 0);  // shares the edge y = 0.7
  EXPECT_NEAR(left.intersectionArea({0.4, 0.6, 0.5, 0.3}), 0.1 * 0.1, 1e-12);
  EXPECT_NEAR(left.intersectionArea({0.1, 0.3, 0.1, 0.1}), 0.01, 1e-12);  // contained
}

TEST(SlideTemplateCatalogTest, SlotsDoNotOverlapAndTitlesLeadFromTheTop) {
  for (const auto& spec : catalog().templates()) {
    for (size_t i = 0; i < spec.slots.size(); ++i) {
      for (size_t j = i + 1; j < spec.slots.size(); ++j) {
        EXPECT_EQ(spec.slots[i].rect.intersectionArea(spec.slots[j].rect), 0)
            << spec.id << ": " << spec.slots[i].id << " overlaps " << spec.slots[j].id;
      }
    }
    for (const auto& title : spec.slots) {
      if (title.role != SlideSlotRole::title) continue;
      for (const auto& other : spec.slots) {
        EXPECT_LE(title.rect.y, other.rect.y) << spec.id << ": " << other.id << " above title";
      }
    }
  }
}

// A healthy one-slot template; each case breaks it in one way.
SlideTemplateSlotSpec textSlot() {
  SlideTemplateSlotSpec slot;
  slot.id = "s";
  slot.title = "S";
  slot.role = SlideSlotRole::body;
  slot.rect = {0.1, 0.1, 0.5, 0.5};
  slot.allowedCardTypes = {"rich_text"};
  slot.required = true;
  slot.priority = 1;
  return slot;
}

SlideTemplateSlotSpec imageSlot() {
  SlideTemplateSlotSpec slot = textSlot();
  slot.allowedCardTypes = {"image"};
  slot.imageRole = SlideImageRole::hero;
  slot.aspectPolicy = SlideAspectPolicy::range(0.5, 2);
  slot.fitPolicy = SlideFitPolicy::cover;
  return slot;
}

SlideTemplateSpec templateWith(SlideTemplateSlotSpec slot) {
  return {"t", "T", "test", SlideTemplateFamily::narrative, {1600, 900}, {std::move(slot)}};
}

void setFactors(SlideTemplateSlotSpec& slot, double minWidth, double maxWidth, double minHeight,
                double maxHeight) {
  slot.minWidthFactor = minWidth;
  slot.maxWidthFactor = maxWidth;
  slot.minHeightFactor = minHeight;
  slot.maxHeightFactor = maxHeight;
}

TEST(SlideTemplateValidateTest, EachRuleReportsItsText) {
  using Slot = SlideTemplateSlotSpec;
  struct Case {
    Slot base;
    std::function<void(Slot&)> breakIt;
    std::vector<std::string> issues;
  };
  const std::string bounds = "slot s rect is out of normalized bounds";
  const std::string aspect = "slot s has invalid aspect_policy";
  const std::vector<Case> cases = {
      {textSlot(), [](Slot&) {}, {}},
      {imageSlot(), [](Slot&) {}, {}},
      {textSlot(), [](Slot& s) { s.rect.x = 0.6; }, {bounds}},
      {textSlot(), [](Slot& s) { s.rect.y = -0.01; }, {bounds}},
      {textSlot(), [](Slot& s) { s.rect.width = 0; }, {bounds}},
      {textSlot(),
       [](Slot& s) { s.allowedCardTypes.clear(); },
       {"slot s has no allowed card types"}},
      {textSlot(),
       [](Slot& s) {
         s.allowedCardTypes = {"rich_text", "video", "richText"};
       },
       {"slot s uses unsupported card type: video", "slot s uses unsupported card type: richText"}},
      {imageSlot(),
       [](Slot& s) { s.allowedCardTypes = {"rich_text"}; },
       {"slot s has image_role but does not allow image card type"}},
      {textSlot(),
       [](Slot& s) { s.allowedCardTypes = {"image"}; },
       {"slot s allows image but image_role is missing"}},
      {imageSlot(), [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::range(2, 1); }, {aspect}},
      {imageSlot(), [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::range(0, 1); }, {aspect}},
      {imageSlot(), [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::fixed(0); }, {aspect}},
      {imageSlot(), [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::any(); }, {}},
      {imageSlot(),
       [](Slot& s) { s.fitPolicy.reset(); },
       {"slot s has image_role but missing fit_policy"}},
      {textSlot(),
       [](Slot& s) { setFactors(s, -1, 0, -0.5, 0); },
       {"slot s has invalid min_width_factor", "slot s has invalid max_width_factor",
        "slot s has invalid min_height_factor", "slot s has invalid max_height_factor"}},
      {textSlot(),
       [](Slot& s) { setFactors(s, 1.5, 1.2, 1, 1); },
       {"slot s has min_width_factor > max_width_factor"}},
      {textSlot(),
       [](Slot& s) { setFactors(s, 1, 1, 2, 1); },
       {"slot s has min_height_factor > max_height_factor"}},
      {textSlot(),
       [](Slot& s) { setFactors(s, 2, 1, 3, 1); },
       {"slot s has min_width_factor > max_width_factor",
        "slot s has min_height_factor > max_height_factor"}},
      {textSlot(), [](Slot& s) { setFactors(s, 1, 1, 1, 1); }, {}},
      {textSlot(), [](Slot& s) { s.priority = -1; }, {"slot s has negative priority"}},
  };
  for (size_t index = 0; index < cases.size(); ++index) {
    Slot slot = cases[index].base;
    cases[index].breakIt(slot);
    EXPECT_EQ(SlideTemplateCatalog::validate(templateWith(slot)), cases[index].issues)
        << "case " << index;
  }
}

TEST(SlideTemplateValidateTest, CanvasAndCatalogIssues) {
  SlideTemplateSpec flat = templateWith(textSlot());
  flat.canvasSize = {0, 900};
  EXPECT_EQ(SlideTemplateCatalog::validate(flat),
            std::vector<std::string>{"canvas size must be positive"});

  SlideTemplateSlotSpec broken = textSlot();
  broken.priority = -3;
  broken.allowedCardTypes = {};
  SlideTemplateSpec brokenTemplate = templateWith(broken);
  brokenTemplate.id = "broken";
  const SlideTemplateCatalog mixed({catalog().templates()[0], brokenTemplate, flat}, {});
  EXPECT_EQ(mixed.validationIssues(),
            (std::vector<std::string>{"broken: slot s has no allowed card types",
                                      "broken: slot s has negative priority",
                                      "t: canvas size must be positive"}));
}

TEST(SlideAspectPolicyTest, JSONCarriesTheMode) {
  const std::vector<std::pair<SlideAspectPolicy, std::string>> cases = {
      {SlideAspectPolicy::range(0.6, 2.4), R"({"max":2.4,"min":0.6,"mode":"range"})"},
      {SlideAspectPolicy::fixed(1.5), R"({"mode":"fixed","value":1.5})"},
      {SlideAspectPolicy::any(), R"({"mode":"any"})"},
  };
  for (const auto& [policy, json] : cases) {
    EXPECT_EQ(policy.encode().compactJSONString(), json);
    EXPECT_EQ(decodeValue<SlideAspectPolicy>(AnyCodableValue::parse(json)), policy) << json;
  }
  EXPECT_THROW(decodeValue<SlideAspectPolicy>(AnyCodableValue::parse(R"({"mode":"wide"})")),
               DecodingError);
  EXPECT_THROW(decodeValue<SlideAspectPolicy>(AnyCodableValue::parse(R"({"mode":"range"})")),
               DecodingError);
}

}  // namespace
}  // namespace zorvik
