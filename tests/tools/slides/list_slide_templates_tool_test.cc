#include "tools/slides/list_slide_templates_tool.h"

#include <gtest/gtest.h>

namespace zorvik {
namespace {

const std::vector<std::string> kFixedNotes = {
    "Use create_slide.layout_mode to choose fixed, adaptive, or free slide behavior.",
    "Use theme_id in create_slide to apply shared text/background/group tokens.",
    "Use operation_mode in create_slide for create/upsert/replace/reflow semantics.",
    "Use group_id + slots in create_slide for incremental upsert updates.",
};

std::string compact(const AnyCodableValue* value) {
  return value ? value->compactJSONString().value_or("<nan>") : "<absent>";
}

std::vector<std::string> strings(const AnyCodableValue& array) {
  std::vector<std::string> texts;
  for (const auto& item : *array.asArray()) texts.push_back(*item.asString());
  return texts;
}

AnyCodableValue run(const ListSlideTemplatesTool& tool) {
  return tool.run(JSONObject{}, AgentToolContext::forSingleCall());
}

TEST(ListSlideTemplatesToolTest, PublishesTheHealthyCatalog) {
  const ListSlideTemplatesTool tool;
  const AnyCodableValue answer = run(tool);
  const JSONObject& members = *answer.asObject();
  std::vector<std::string> keys;
  for (const auto& [key, value] : members) keys.push_back(key);
  EXPECT_EQ(keys, (std::vector<std::string>{"allowed_card_types", "default_theme_id", "notes",
                                            "status", "templates", "themes", "version"}));
  EXPECT_EQ(compact(answer.member("status")), R"("ok")");
  EXPECT_EQ(compact(answer.member("allowed_card_types")), R"(["image","rich_text","table"])");
  EXPECT_EQ(strings(*answer.member("notes")), kFixedNotes);
  const auto& catalog = SlideTemplateCatalog::standard();
  EXPECT_EQ(*answer.member("version"), AnyCodableValue(SlideTemplateCatalog::version));
  EXPECT_EQ(*answer.member("default_theme_id"),
            AnyCodableValue(std::string(SlideTemplateCatalog::defaultThemeId)));
  EXPECT_EQ(answer.member("templates")->asArray()->size(), catalog.templates().size());
  EXPECT_EQ(answer.member("themes")->asArray()->size(), catalog.themes().size());

  const AnyCodableValue& heroLeft = answer.member("templates")->asArray()->front();
  EXPECT_EQ(compact(heroLeft.member("canvas_size")), R"({"height":900,"width":1600})");
  EXPECT_EQ(compact(&heroLeft.member("slots")->asArray()->front()),
            R"({"allowed_card_types":["image"],"aspect_policy":{"max":2.4,"min":0.6,)"
            R"("mode":"range"},"fit_policy":"cover","id":"hero_image","image_role":"hero",)"
            R"("max_height_factor":1,"max_width_factor":1,"min_height_factor":0.8,)"
            R"("min_width_factor":0.8,"overflow_policy":"clip","priority":100,)"
            R"("rect":{"height":0.74,"width":0.42,"x":0.05,"y":0.14},"required":true,)"
            R"("role":"image","title":"Hero Image"})");
  // A text slot leaves the image-only keys out.
  EXPECT_EQ(heroLeft.member("slots")->asArray()->at(1).member("image_role"), nullptr);

  const AnyCodableValue& editorial = answer.member("themes")->asArray()->front();
  EXPECT_EQ(compact(editorial.member("text_primary")),
            R"({"blue":0.12,"green":0.1,"opacity":1,"red":0.1})");
}

TEST(ListSlideTemplatesToolTest, IssuesTurnTheAnswerIntoAWarning) {
  SlideTemplateSpec broken = SlideTemplateCatalog::standard().templates()[0];
  broken.id = "lopsided";
  broken.slots[1].rect.x = 0.9;  // the title slot now runs past the right edge
  std::vector<SlideTemplateSpec> templates = SlideTemplateCatalog::standard().templates();
  templates.push_back(broken);
  const ListSlideTemplatesTool tool(
      SlideTemplateCatalog(templates, SlideTemplateCatalog::standard().themes()));
  const AnyCodableValue answer = run(tool);
  EXPECT_EQ(compact(answer.member("status")), R"("warning")");
  std::vector<std::string> notes = kFixedNotes;
  notes.push_back("lopsided: slot title rect is out of normalized bounds");
  EXPECT_EQ(strings(*answer.member("notes")), notes);
  EXPECT_EQ(answer.member("templates")->asArray()->size(), 16u);
}

TEST(ListSlideTemplatesToolTest, EveryExampleIsAccepted) {
  const ListSlideTemplatesTool tool;
  ASSERT_TRUE(tool.spec().examples.has_value());
  for (const auto& example : *tool.spec().examples) {
    EXPECT_EQ(compact(tool.run(example, AgentToolContext::forSingleCall()).member("status")),
              R"("ok")");
  }
}

}  // namespace
}  // namespace zorvik
