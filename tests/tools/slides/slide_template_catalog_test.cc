#include "tools/slides/slide_template_catalog.h"

#include <gtest/gtest.h>

#include <functional>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {
namespace {

const SlideTemplateCatalog& catalog() { return SlideTemplateCatalog::standard(); }

std::vector<std::string> slotIds(const SlideTemplateSpec& spec) {
  std::vector<std::string> ids;
  for (const auto& slot : spec.slots) ids.push_back(slot.id);
  return ids;
}

TEST(SlideTemplateCatalogTest, StandardCatalogIsHealthy) {
  EXPECT_EQ(SlideTemplateCatalog::version, 3);
  EXPECT_EQ(SlideTemplateCatalog::defaultThemeId, "editorial_light");
  EXPECT_EQ(catalog().templates().size(), 15u);
  EXPECT_EQ(catalog().themes().size(), 4u);
  EXPECT_EQ(catalog().validationIssues(), std::vector<std::string>{});
  for (const auto& spec : catalog().templates()) {
    EXPECT_EQ(spec.canvasSize, (SlideTemplateSize{1600, 900})) << spec.id;
  }
  ASSERT_NE(catalog().themeWithId(SlideTemplateCatalog::defaultThemeId), nullptr);
}

TEST(SlideTemplateCatalogTest, TemplatesHaveTheirPublishedSlotsInOrder) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> expected = {
      {"hero_left", {"hero_image", "title", "body", "facts_table"}},
      {"hero_right", {"hero_image", "title", "body", "facts_table"}},
      {"compare_split", {"title", "left_image", "right_image", "comparison_table"}},
      {"data_story", {"title", "body", "data_table", "supporting_image"}},
      {"title_focus", {"title", "body", "facts_table"}},
      {"timeline_band", {"title", "phase_1", "phase_2", "phase_3", "timeline_table"}},
      {"quote_feature", {"quote", "portrait", "context", "evidence"}},
      {"gallery_triptych", {"title", "image_1", "image_2", "image_3", "caption", "palette_table"}},
      {"section_opener", {"title", "subtitle", "hero_strip"}},
      {"kpi_dashboard", {"title", "kpi_1", "kpi_2", "kpi_3", "kpi_4", "metrics_table"}},
      {"roadmap_lane", {"title", "phase_1", "phase_2", "phase_3", "phase_4", "milestones"}},
      {"case_study_panel",
       {"title", "challenge", "approach", "outcome", "evidence_image", "evidence_table"}},
      {"testimonial_spotlight", {"quote", "attribution", "portrait", "proof_points", "icon"}},
      {"problem_solution_split", {"title", "problem", "solution", "impact_metrics"}},
      {"process_steps",
       {"title", "step_1_icon", "step_1", "step_2_icon", "step_2", "step_3_icon", "step_3",
        "summary"}},
  };
  ASSERT_EQ(catalog().templates().size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(catalog().templates()[i].id, expected[i].first);
    EXPECT_EQ(slotIds(catalog().templates()[i]), expected[i].second) << expected[i].first;
  }
  // Display titles: the id in words unless the template names it otherwise.
  EXPECT_EQ(catalog().templateWithId("data_story")->slot("body")->title, "Narrative");
  EXPECT_EQ(catalog().templateWithId("section_opener")->slot("title")->title, "Section Title");
  EXPECT_EQ(catalog().templateWithId("kpi_dashboard")->slot("title")->title, "Headline");
  EXPECT_EQ(catalog().templateWithId("roadmap_lane")->slot("title")->title, "Roadmap Title");
  EXPECT_EQ(catalog().templateWithId("case_study_panel")->slot("title")->title, "Case Title");
  EXPECT_EQ(catalog().templateWithId("process_steps")->slot("title")->title, "Process Title");
  EXPECT_EQ(catalog().templateWithId("process_steps")->slot("step_2_icon")->title, "Step 2 Icon");
  EXPECT_EQ(catalog().templateWithId("hero_left")->slot("facts_table")->title, "Facts Table");
  const SlideTemplateSpec* kpi = catalog().templateWithId("kpi_dashboard");
  EXPECT_EQ(kpi->name, "KPI Dashboard");
  EXPECT_EQ(kpi->summary, "Headline, four KPI slots, and optional metrics table.");
  EXPECT_EQ(rawValue(kpi->templateFamily), "kpi_dashboard");
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

TEST(SlideTemplateCatalogTest, HeroLeftTellingRow) {
  const SlideTemplateSpec* spec = catalog().templateWithId("hero_left");
  ASSERT_NE(spec, nullptr);
  EXPECT_EQ(spec->summary, "Image on left, narrative and data on right.");
  const SlideTemplateSlotSpec* hero = spec->slot("hero_image");
  ASSERT_NE(hero, nullptr);
  EXPECT_EQ(hero->rect, (SlideTemplateRect{0.05, 0.14, 0.42, 0.74}));
  EXPECT_EQ(hero->allowedCardTypes, std::vector<std::string>{"image"});
  EXPECT_TRUE(hero->required);
  EXPECT_EQ(hero->role, SlideSlotRole::image);
  EXPECT_EQ(hero->aspectPolicy, SlideAspectPolicy::range(0.6, 2.4));
  EXPECT_EQ(hero->priority, 100);
  const SlideTemplateSlotSpec* title = spec->slot("title");
  ASSERT_NE(title, nullptr);
  EXPECT_EQ(title->rect, (SlideTemplateRect{0.51, 0.14, 0.44, 0.2}));
  EXPECT_EQ(title->allowedCardTypes, std::vector<std::string>{"rich_text"});
}

TEST(SlideTemplateCatalogTest, ThemesCarryTheirTokens) {
  const std::vector<std::pair<std::string, std::string>> expected = {{"editorial_light", "white"},
                                                                     {"ocean_mist", "lightBlue"},
                                                                     {"warm_studio", "warmGray"},
                                                                     {"noir_focus", "gray"}};
  ASSERT_EQ(catalog().themes().size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(catalog().themes()[i].id, expected[i].first);
    EXPECT_EQ(catalog().themes()[i].groupColor, expected[i].second);
  }
  const SlideThemeSpec* warm = catalog().themeWithId("warm_studio");
  EXPECT_EQ(warm->summary, "Neutral warm palette for styling decks.");
  EXPECT_EQ(warm->accentPrimary, (SlideThemeColor{0.64, 0.36, 0.20, 1}));
  EXPECT_EQ(catalog().themeWithId("noir_focus")->textInverse,
            (SlideThemeColor{0.08, 0.08, 0.10, 1}));
  EXPECT_EQ(encodeValue(catalog().themeWithId("ocean_mist")->surfacePrimary).compactJSONString(),
            R"({"blue":1,"green":0.97,"opacity":1,"red":0.93})");
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

TEST(SlideTemplateValidateTest, EachRuleReportsItsText) {
  struct Case {
    std::string label;
    SlideTemplateSlotSpec base;
    std::function<void(SlideTemplateSlotSpec&)> breakIt;
    std::vector<std::string> issues;
  };
  using Slot = SlideTemplateSlotSpec;
  const std::vector<Case> cases = {
      {"healthy text", textSlot(), [](Slot&) {}, {}},
      {"healthy image", imageSlot(), [](Slot&) {}, {}},
      {"rect past the right edge",
       textSlot(),
       [](Slot& s) {
         s.rect = {0.6, 0.1, 0.5, 0.5};
       },
       {"slot s rect is out of normalized bounds"}},
      {"negative origin",
       textSlot(),
       [](Slot& s) { s.rect.y = -0.01; },
       {"slot s rect is out of normalized bounds"}},
      {"zero width",
       textSlot(),
       [](Slot& s) { s.rect.width = 0; },
       {"slot s rect is out of normalized bounds"}},
      {"no types",
       textSlot(),
       [](Slot& s) { s.allowedCardTypes.clear(); },
       {"slot s has no allowed card types"}},
      {"unsupported type",
       textSlot(),
       [](Slot& s) {
         s.allowedCardTypes = {"rich_text", "video", "richText"};
       },
       {"slot s uses unsupported card type: video", "slot s uses unsupported card type: richText"}},
      {"image role on rich text only",
       textSlot(),
       [](Slot& s) {
         s.imageRole = SlideImageRole::icon;
         s.fitPolicy = SlideFitPolicy::contain;
       },
       {"slot s has image_role but does not allow image card type"}},
      {"image without role",
       imageSlot(),
       [](Slot& s) {
         s.imageRole.reset();
         s.fitPolicy.reset();
       },
       {"slot s allows image but image_role is missing"}},
      {"crossed aspect range",
       imageSlot(),
       [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::range(2, 1); },
       {"slot s has invalid aspect_policy"}},
      {"zero aspect minimum",
       imageSlot(),
       [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::range(0, 1); },
       {"slot s has invalid aspect_policy"}},
      {"zero fixed aspect",
       imageSlot(),
       [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::fixed(0); },
       {"slot s has invalid aspect_policy"}},
      {"any aspect", imageSlot(), [](Slot& s) { s.aspectPolicy = SlideAspectPolicy::any(); }, {}},
      {"image role without fit",
       imageSlot(),
       [](Slot& s) { s.fitPolicy.reset(); },
       {"slot s has image_role but missing fit_policy"}},
      {"zero factors",
       textSlot(),
       [](Slot& s) {
         s.minWidthFactor = -1;
         s.maxWidthFactor = 0;
         s.minHeightFactor = -0.5;
         s.maxHeightFactor = 0;
       },
       {"slot s has invalid min_width_factor", "slot s has invalid max_width_factor",
        "slot s has invalid min_height_factor", "slot s has invalid max_height_factor"}},
      {"crossed width factors",
       textSlot(),
       [](Slot& s) {
         s.minWidthFactor = 1.5;
         s.maxWidthFactor = 1.2;
       },
       {"slot s has min_width_factor > max_width_factor"}},
      {"crossed height factors",
       textSlot(),
       [](Slot& s) {
         s.minHeightFactor = 2;
         s.maxHeightFactor = 1;
       },
       {"slot s has min_height_factor > max_height_factor"}},
      {"crossed in both dimensions",
       textSlot(),
       [](Slot& s) {
         s.minHeightFactor = 3;
         s.maxHeightFactor = 1;
         s.minWidthFactor = 2;
         s.maxWidthFactor = 1;
       },
       {"slot s has min_width_factor > max_width_factor",
        "slot s has min_height_factor > max_height_factor"}},
      {"equal factors",
       textSlot(),
       [](Slot& s) {
         s.minHeightFactor = 1;
         s.maxHeightFactor = 1;
       },
       {}},
      {"negative priority",
       textSlot(),
       [](Slot& s) { s.priority = -1; },
       {"slot s has negative priority"}},
  };
  for (const Case& test : cases) {
    SlideTemplateSlotSpec slot = test.base;
    test.breakIt(slot);
    EXPECT_EQ(SlideTemplateCatalog::validate(templateWith(slot)), test.issues) << test.label;
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
