#include "tools/slides/list_slide_templates_tool.h"

#include <algorithm>
#include <string>
#include <vector>

#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

constexpr std::string_view kFixedNotes[] = {
    "Use create_slide.layout_mode to choose fixed, adaptive, or free slide behavior.",
    "Use theme_id in create_slide to apply shared text/background/group tokens.",
    "Use operation_mode in create_slide for create/upsert/replace/reflow semantics.",
    "Use group_id + slots in create_slide for incremental upsert updates.",
};

AnyCodableValue outputSchema() {
  AnyCodableValue rect = schema::object({{"x", schema::number()},
                                         {"y", schema::number()},
                                         {"width", schema::number()},
                                         {"height", schema::number()}},
                                        {"x", "y", "width", "height"});
  AnyCodableValue slot = schema::object(
      {
          {"id", schema::string()},
          {"title", schema::string()},
          {"role", schema::string()},
          {"rect", schema::with(rect, "description", "Fractions of the canvas, 0 to 1.")},
          {"allowed_card_types", schema::array(schema::string())},
          {"required", schema::boolean()},
          {"image_role", schema::stringEnum({"hero", "thumbnail", "icon"})},
          {"aspect_policy", schema::object({{"mode", schema::stringEnum({"any", "range", "fixed"})},
                                            {"min", schema::number()},
                                            {"max", schema::number()},
                                            {"value", schema::number()}},
                                           {"mode"})},
          {"fit_policy", schema::stringEnum({"contain", "cover"})},
          {"min_width_factor", schema::number()},
          {"max_width_factor", schema::number()},
          {"min_height_factor", schema::number()},
          {"max_height_factor", schema::number()},
          {"overflow_policy", schema::stringEnum({"clip", "shrink", "expand"})},
          {"priority", schema::integer()},
      },
      {"id", "title", "role", "rect", "allowed_card_types", "required", "overflow_policy",
       "priority"});
  AnyCodableValue slideTemplate = schema::object(
      {
          {"id", schema::string()},
          {"name", schema::string()},
          {"summary", schema::string()},
          {"template_family", schema::string()},
          {"canvas_size",
           schema::object({{"width", schema::number()}, {"height", schema::number()}})},
          {"slots", schema::array(slot)},
      },
      {"id", "name", "summary", "template_family", "canvas_size", "slots"});
  AnyCodableValue theme = schema::object({{"id", schema::string()},
                                          {"name", schema::string()},
                                          {"summary", schema::string()},
                                          {"group_color", schema::string()}},
                                         {"id", "name", "summary", "group_color"});
  return schema::object(
      {
          {"status", schema::stringEnum({"ok", "warning"})},
          {"version", schema::integer()},
          {"default_theme_id", schema::string()},
          {"templates", schema::array(slideTemplate)},
          {"themes", schema::array(schema::with(
                         theme, "description",
                         "Also text_primary, text_secondary, text_inverse, surface_primary, "
                         "surface_secondary, surface_muted, accent_primary and border_subtle, "
                         "each {red, green, blue, opacity} from 0 to 1."))},
          {"allowed_card_types", schema::array(schema::string())},
          {"notes", schema::array(schema::string())},
      },
      {"status", "version", "default_theme_id", "templates", "themes", "allowed_card_types",
       "notes"});
}

AgentToolSpec listSlideTemplatesSpec() {
  return AgentToolSpec{
      .name = "list_slide_templates",
      .summary = "List supported slide templates and themes for compositional slide groups.",
      .inputSchema = schema::object({}),
      .outputSchema = outputSchema(),
      .examples = std::vector<AnyCodableValue>{JSONObject{}},
      .notes =
          "Slides are 1600x900 groups whose cards fill template slots. Each slot gives its rect "
          "as fractions of the canvas, the card types it accepts (image, rich_text, table), "
          "whether it is required, and how content is fitted. Pick a template_id and theme_id "
          "from this list before create_slide; use get_slide_state to see which slots are "
          "filled.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

ListSlideTemplatesTool::ListSlideTemplatesTool(SlideTemplateCatalog catalog)
    : catalog_(std::move(catalog)), spec_(listSlideTemplatesSpec()) {}

AnyCodableValue ListSlideTemplatesTool::run(const AnyCodableValue&, const AgentToolContext&) const {
  const std::vector<std::string> issues = catalog_.validationIssues();
  std::vector<std::string> notes(std::begin(kFixedNotes), std::end(kFixedNotes));
  notes.insert(notes.end(), issues.begin(), issues.end());
  std::vector<std::string> allowedCardTypes(SlideTemplateCatalog::supportedCardTypes.begin(),
                                            SlideTemplateCatalog::supportedCardTypes.end());
  std::ranges::sort(allowedCardTypes);
  return ObjectEncoder()
      .add("status", issues.empty() ? "ok" : "warning")
      .add("version", SlideTemplateCatalog::version)
      .add("default_theme_id", SlideTemplateCatalog::defaultThemeId)
      .add("templates", catalog_.templates())
      .add("themes", catalog_.themes())
      .add("allowed_card_types", allowedCardTypes)
      .add("notes", notes)
      .build();
}

}  // namespace zorvik
