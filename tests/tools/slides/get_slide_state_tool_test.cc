#include "tools/slides/get_slide_state_tool.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "foundation/json/decoding_error.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

using testing::TempDirectory;

// Cards of the test board, as upper-case UUIDs.
const std::string kSlide = "5A1DE000-0000-4000-8000-000000000001";
const std::string kHeroImage = "5A1DE000-0000-4000-8000-000000000002";
const std::string kNote = "5A1DE000-0000-4000-8000-000000000003";
const std::string kOutsideTable = "5A1DE000-0000-4000-8000-000000000004";
const std::string kPlainFolder = "5A1DE000-0000-4000-8000-000000000005";
const std::string kLooseText = "5A1DE000-0000-4000-8000-000000000006";
const std::string kOddSlide = "5A1DE000-0000-4000-8000-000000000007";
const std::string kDeletedCard = "5A1DE000-0000-4000-8000-0000000000FF";

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

AnyCodableValue entry(const std::string& id, const std::string& kind, const std::string& title,
                      double x, double y, double width, double height, AnyCodableValue payload,
                      std::optional<std::string> parent = std::nullopt) {
  JSONObject object{
      {"id", id},
      {"kindRawValue", kind},
      {"title", title},
      {"shadowEnabled", true},
      {"createdAt", "2026-11-02T09:00:00Z"},
      {"layout", JSONObject{{"position", JSONObject{{"x", x}, {"y", y}}},
                            {"zIndex", 1},
                            {"actualWidth", width},
                            {"actualHeight", height}}},
      {"payload", std::move(payload)},
  };
  if (parent) object.set("parentID", *parent);
  return object;
}

// A slide on hero_left: the hero image is bound in lower case and sits in the group, the title
// slot is unbound, the body is bound to a deleted card, the facts table is bound to a table outside
// the group, and one binding names a slot the template lacks. A second slide uses snake-case keys
// and a template the catalogue does not know.
std::string boardDocument() {
  AnyCodableValue slideFolder = JSONObject{
      {"type", "folder"},
      {"folder", JSONObject{{"layout", "freeform"},
                            {"node_role", "group"},
                            {"slide_layout_mode", "fixed"},
                            {"slideTemplateId", "hero_left"},
                            {"slideThemeId", "ocean_mist"},
                            {"slideVersion", 2},
                            {"slideUpdatedAt", "2026-11-02T09:30:00Z"},
                            {"slideSlotBindings", JSONObject{{"hero_image", lower(kHeroImage)},
                                                             {"body", kDeletedCard},
                                                             {"facts_table", kOutsideTable},
                                                             {"legacy_caption", "not-a-card"}}}}}};
  AnyCodableValue oddFolder = JSONObject{
      {"type", "folder"},
      {"folder", JSONObject{{"layout", "freeform"},
                            {"slide_template_id", "mystery_layout"},
                            {"slide_slot_bindings", JSONObject{{"headline", kLooseText}}}}}};
  AnyCodableValue::Array entries{
      entry(kLooseText, "richText", "Loose", 0, 0, 300, 120,
            JSONObject{{"richText", JSONObject{{"markdown", "Loose text"}}}}),
      entry(kSlide, "folder", "Solar slide", 100, 200, 1600, 900, slideFolder),
      entry(kHeroImage, "image", "Rooftop", 180, 326, 672, 666,
            JSONObject{{"image", JSONObject{{"url", "https://example.org/r.jpg"}}}}, kSlide),
      entry(kNote, "richText", "Speaker note", 920, 400, 300, 200,
            JSONObject{{"type", "richText"}, {"richText", JSONObject{{"markdown", "n"}}}}, kSlide),
      entry(kOutsideTable, "table", "Prices", 2000, 0, 400, 300,
            JSONObject{{"table", JSONObject{{"columns", AnyCodableValue::Array{"Year"}},
                                            {"rows", AnyCodableValue::Array{}},
                                            {"showsRowHeaders", false}}}}),
      entry(kPlainFolder, "folder", "Plain", 0, 1200, 400, 400,
            JSONObject{{"folder", JSONObject{{"layout", "grid"}, {"group_kind", "regular"}}}}),
      entry(kOddSlide, "folder", "Odd slide", 1800, 1200, 1600, 900, oddFolder),
  };
  AnyCodableValue document = JSONObject{
      {"version", 1},
      {"projectId", "5A1DE000-0000-4000-8000-0000000000AA"},
      {"createdAt", "2026-11-02T09:00:00Z"},
      {"updatedAt", "2026-11-02T09:30:00Z"},
      {"uiState", JSONObject{}},
      {"entries", std::move(entries)},
  };
  return *document.jsonString();
}

std::string compact(const AnyCodableValue* value) {
  return value ? value->compactJSONString().value_or("<nan>") : "<absent>";
}

class GetSlideStateToolTest : public ::testing::Test {
 protected:
  void SetUp() override { project_.write(".zorvik/workspace.json", boardDocument()); }

  AnyCodableValue run(const std::string& input) const {
    return tool_.run(AnyCodableValue::parse(input), AgentToolContext::forSingleCall());
  }

  TempDirectory project_;
  GetSlideStateTool tool_{project_.path()};
};

// Without ids every slide group is reported, its slots held against the template's.
TEST_F(GetSlideStateToolTest, ReportsEverySlideGroupWithSlotOccupancy) {
  const AnyCodableValue answer = run("{}");
  EXPECT_EQ(compact(answer.member("status")), R"("ok")");
  EXPECT_EQ(compact(answer.member("missing_group_ids")), "[]");
  const auto& slides = *answer.member("slides")->asArray();
  ASSERT_EQ(slides.size(), 2u);  // the plain folder is no slide
  EXPECT_EQ(*slides[0].member("group_id")->asString(), kSlide);
  EXPECT_EQ(*slides[1].member("group_id")->asString(), kOddSlide);
  EXPECT_EQ(slides[0].member("child_frames"), nullptr);

  const AnyCodableValue* state = &slides[0];
  for (const auto& [key, expected] : std::vector<std::pair<std::string, std::string>>{
           {"title", R"("Solar slide")"},
           {"template_id", R"("hero_left")"},
           {"template_family", R"("narrative")"},
           {"theme_id", R"("ocean_mist")"},
           {"group_kind", R"("slide")"},
           {"layout_mode", R"("fixed")"},
           {"slide_version", "2"},
           {"slide_updated_at", R"("2026-11-02T09:30:00Z")"},
           {"group_frame", R"({"height":900,"width":1600,"x":100,"y":200})"}}) {
    EXPECT_EQ(compact(state->member(key)), expected) << key;
  }

  const auto& slots = *state->member("slots")->asArray();
  ASSERT_EQ(slots.size(), 5u);
  EXPECT_EQ(compact(&slots[0]),
            R"({"card_id":")" + kHeroImage +
                R"(","card_type":"image",)"
                R"("frame":{"height":666,"width":672,"x":180,"y":326},"in_group":true,)"
                R"("required":true,"slot_id":"hero_image","slot_role":"image"})");
  EXPECT_EQ(compact(&slots[1]), R"({"required":true,"slot_id":"title","slot_role":"title"})");
  EXPECT_EQ(compact(&slots[2]), R"({"card_id":")" + kDeletedCard +
                                    R"(","in_group":false,"required":true,"slot_id":"body",)"
                                    R"("slot_role":"body"})");
  EXPECT_EQ(compact(&slots[3]),
            R"({"card_id":")" + kOutsideTable +
                R"(","card_type":"table",)"
                R"("frame":{"height":300,"width":400,"x":2000,"y":0},"in_group":false,)"
                R"("required":false,"slot_id":"facts_table","slot_role":"table"})");
  EXPECT_EQ(compact(&slots[4]),
            R"({"card_id":"not-a-card","in_group":false,"slot_id":"legacy_caption"})");

  // The unbound title and the body bound to a deleted card; the table outside still counts.
  EXPECT_EQ(compact(state->member("unresolved_slots")), R"(["title","body"])");
  // Constraints come from the template's slots only, not from stray bindings.
  std::vector<std::string> constrained;
  for (const auto& constraint : *state->member("slot_constraints")->asArray()) {
    constrained.push_back(*constraint.member("slot_id")->asString());
  }
  EXPECT_EQ(constrained, (std::vector<std::string>{"hero_image", "title", "body", "facts_table"}));

  // An unknown template keeps the bindings visible.
  state = &slides[1];
  EXPECT_EQ(compact(state->member("template_id")), R"("mystery_layout")");
  EXPECT_EQ(state->member("template_family"), nullptr);
  EXPECT_EQ(state->member("theme_id"), nullptr);
  EXPECT_EQ(compact(state->member("group_kind")), R"("slide")");
  EXPECT_EQ(compact(state->member("layout_mode")), R"("adaptive")");
  EXPECT_EQ(compact(state->member("slots")),
            R"([{"card_id":")" + kLooseText +
                R"(","card_type":"rich_text",)"
                R"("frame":{"height":120,"width":300,"x":0,"y":0},"in_group":false,)"
                R"("slot_id":"headline"}])");
  EXPECT_EQ(compact(state->member("slot_constraints")), "[]");
  EXPECT_EQ(compact(state->member("unresolved_slots")), "[]");
}

TEST_F(GetSlideStateToolTest, ChildFramesOnRequest) {
  const AnyCodableValue answer =
      run(R"({"group_ids": [")" + kSlide + R"("], "include_child_frames": true})");
  ASSERT_EQ(answer.member("slides")->asArray()->size(), 1u);
  EXPECT_EQ(compact(answer.member("slides")->asArray()->front().member("child_frames")),
            R"([{"card_id":")" + kHeroImage +
                R"(","card_type":"image",)"
                R"("frame":{"height":666,"width":672,"x":180,"y":326}},)"
                R"({"card_id":")" +
                kNote +
                R"(","card_type":"rich_text",)"
                R"("frame":{"height":200,"width":300,"x":920,"y":400}}])");
}

TEST_F(GetSlideStateToolTest, RequestedIdsThatAreNoSlideGroupsAreMissing) {
  const std::string unknown = "5A1DE000-0000-4000-8000-000000000999";
  const AnyCodableValue answer =
      run(R"({"group_ids": [")" + lower(kSlide) + R"(", ")" + kPlainFolder + R"(", ")" +
          kLooseText + R"(", "nope", ")" + unknown + R"(", ")" + kSlide + R"(", "nope"]})");
  EXPECT_EQ(compact(answer.member("status")), R"("ok")");
  const auto& slides = *answer.member("slides")->asArray();
  ASSERT_EQ(slides.size(), 1u);
  EXPECT_EQ(*slides[0].member("group_id")->asString(), kSlide);
  EXPECT_EQ(compact(answer.member("missing_group_ids")),
            R"([")" + kPlainFolder + R"(",")" + kLooseText + R"(","nope",")" + unknown + R"("])");
}

TEST_F(GetSlideStateToolTest, ProjectPathRules) {
  // project_path wins over the default project.
  TempDirectory empty;
  const GetSlideStateTool elsewhere(empty.path());
  const AnyCodableValue fromInput =
      elsewhere.run(AnyCodableValue(JSONObject{{"project_path", project_.path().string()}}),
                    AgentToolContext::forSingleCall());
  EXPECT_EQ(fromInput.member("slides")->asArray()->size(), 2u);
  const AnyCodableValue fromDefault =
      elsewhere.run(JSONObject{}, AgentToolContext::forSingleCall());
  EXPECT_EQ(compact(fromDefault.member("slides")), "[]");

  try {
    GetSlideStateTool(std::nullopt).run(JSONObject{}, AgentToolContext::forSingleCall());
    ADD_FAILURE() << "expected a throw";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "get_slide_state requires project_path when session is not bound.");
  }
  EXPECT_THROW(run(R"({"group_ids": "all"})"), DecodingError);
  EXPECT_THROW(run(R"({"include_child_frames": "yes"})"), DecodingError);
}

TEST_F(GetSlideStateToolTest, ProjectsThatCannotBeReadAreErrorAnswers) {
  const GetSlideStateTool absent(project_.path() / "no-such-project");
  const AnyCodableValue missing = absent.run(JSONObject{}, AgentToolContext::forSingleCall());
  EXPECT_EQ(compact(missing.member("status")), R"("error")");
  EXPECT_EQ(compact(missing.member("error_code")), R"("project_not_found")");
  EXPECT_EQ(compact(missing.member("slides")), "[]");

  project_.write(".zorvik/workspace.json", "{\"entries\": [");
  const AnyCodableValue damaged = run("{}");
  EXPECT_EQ(compact(damaged.member("status")), R"("error")");
  EXPECT_EQ(compact(damaged.member("error_code")), R"("project_load_failed")");
  EXPECT_EQ(
      damaged.member("message")->asString()->rfind("Failed to decode .zorvik/workspace.json", 0),
      0u);
}

}  // namespace
}  // namespace zorvik
