// list_card_layouts and get_group_layout over real project folders.
#include <gtest/gtest.h>

#include <string>

#include "foundation/json/decoding_error.h"
#include "layout_test_project.h"
#include "support/temp_directory.h"
#include "tools/framework/agent_tool_context.h"
#include "tools/layout/get_group_layout_tool.h"
#include "tools/layout/list_card_layouts_tool.h"

namespace zorvik {
namespace {

using testing::at;
using testing::folderPayload;
using testing::invalidArgumentMessage;
using testing::LayoutTestProject;
using testing::richTextPayload;
using testing::TempDirectory;
using testing::TestCard;
using Array = AnyCodableValue::Array;

constexpr const char* kA = "A1000000-0000-4000-8000-000000000001";
constexpr const char* kB = "B2000000-0000-4000-8000-000000000002";
constexpr const char* kF1 = "F1000000-0000-4000-8000-0000000000F1";
constexpr const char* kC1 = "C1000000-0000-4000-8000-0000000000C1";
constexpr const char* kC2 = "C2000000-0000-4000-8000-0000000000C2";
constexpr const char* kC3 = "C3000000-0000-4000-8000-0000000000C3";
constexpr const char* kF2 = "F2000000-0000-4000-8000-0000000000F2";
constexpr const char* kD1 = "D1000000-0000-4000-8000-0000000000D1";
constexpr const char* kD2 = "D2000000-0000-4000-8000-0000000000D2";
constexpr const char* kBroken = "EE000000-0000-4000-8000-0000000000EE";
constexpr const char* kUnknown = "99999999-0000-4000-8000-000000000099";

AnyCodableValue snapTo(const char* anchor, const char* edge, int gap) {
  return JSONObject{{edge, JSONObject{{"anchorId", anchor},
                                      {"side", "left"},
                                      {"crossOffset", 0},
                                      {"localOffset", JSONObject{{"x", 0}, {"y", 0}}},
                                      {"gap", gap}}}};
}

const AnyCodableValue kStack = JSONObject{
    {"axis", "vertical"}, {"anchorId", kC1}, {"orderedIds", Array{kC1, kC2}}, {"crossOffset", 4}};

// Entry order: A, F1, C3, C1, F2, D2, D1, C2, B, broken folder. Fields: id, kind, x, y, width,
// height, zIndex, parentID, payload, snapConstraints.
std::vector<TestCard> boardCards() {
  const auto text = richTextPayload("text");
  const auto grid = folderPayload({{"layout", "grid"},
                                   {"grid_columns", 3},
                                   {"orderedChildIds", Array{kC2, kUnknown, kA, kC1, kC2}},
                                   {"groupStacks", Array{kStack}}});
  const auto row = folderPayload({{"layout", "horizontal"}, {"node_role", "group"}});
  // A folder payload without its required layout word is no folder.
  const auto broken = folderPayload({{"node_role", "group"}});
  return {
      {kA, "richText", 0, 0, 400, 300, 1, {}, text, snapTo(kB, "right", 12)},
      {kF1, "folder", 1000, 0, 640, 520, 3, {}, grid},
      {kC3, "richText", 1340, 40, 280, 180, 3, kF1, text},
      {kC1, "richText", 1020, 40, 300, 200, 1, kF1, text, snapTo(kC2, "bottom", 20)},
      {kF2, "folder", 0, 700, 500, 300, 4, {}, row},
      {kD2, "richText", 10, 710, 100, 100, 0, kF2, text},
      {kD1, "richText", 120, 710, 100, 100, 0, kF2, text},
      {kC2, "richText", 1020, 260, 300, 200, 2, kF1, text},
      {kB, "richText", 500.5, 40, 201, 100, 2, {}, text},
      {kBroken, "folder", 0, 0, 100, 100, 0, {}, broken},
  };
}

const Array& arrayAt(const AnyCodableValue& value, std::string_view key) {
  static const Array kEmpty;
  const Array* found = at(value, key).asArray();
  EXPECT_NE(found, nullptr) << key << " is no array";
  return found ? *found : kEmpty;
}

Array idsOf(const Array& items, std::string_view key) {
  Array ids;
  for (const AnyCodableValue& item : items) ids.push_back(at(item, key));
  return ids;
}

class SnapshotLayoutToolsTest : public ::testing::Test {
 protected:
  AnyCodableValue listLayouts(JSONObject input) const {
    return ListCardLayoutsTool(project_.path()).run(input, AgentToolContext::forSingleCall());
  }
  std::string layoutsRefusal(JSONObject input) const {
    return invalidArgumentMessage([&] { listLayouts(std::move(input)); });
  }
  AnyCodableValue groupLayout(JSONObject input) const {
    return GetGroupLayoutTool(project_.path()).run(input, AgentToolContext::forSingleCall());
  }

  LayoutTestProject project_{boardCards()};
};

TEST_F(SnapshotLayoutToolsTest, LayoutsByIdFollowTheRequestWithGeometry) {
  const AnyCodableValue answer = listLayouts(
      {{"card_ids", Array{"  c2000000-0000-4000-8000-0000000000c2 ", kA, kUnknown, kC2, kUnknown}},
       {"include_constraints", true}});
  const Array& layouts = arrayAt(answer, "layouts");
  EXPECT_EQ(idsOf(layouts, "card_id"), (Array{kC2, kA})) << "each card once, in requested order";
  EXPECT_EQ(at(answer, "total"), AnyCodableValue(2));
  EXPECT_EQ(at(answer, "missing_card_ids"), AnyCodableValue(Array{kUnknown}));
  ASSERT_EQ(layouts.size(), 2u);

  EXPECT_EQ(at(layouts[0], "parent_id"), AnyCodableValue(kF1));
  EXPECT_EQ(at(layouts[0], "frame"),
            AnyCodableValue(JSONObject{{"x", 1020}, {"y", 260}, {"width", 300}, {"height", 200}}));
  EXPECT_EQ(at(layouts[0], "center"), AnyCodableValue(JSONObject{{"x", 1170}, {"y", 360}}));
  EXPECT_EQ(at(layouts[0], "z_index"), AnyCodableValue(2));
  EXPECT_FALSE(layouts[0].asObject()->contains("snap_constraints")) << "C2 has none";

  EXPECT_TRUE(at(layouts[1], "parent_id").isNull()) << "a root card has a null parent";
  EXPECT_EQ(at(layouts[1], "snap_constraints"), snapTo(kB, "right", 12));

  const AnyCodableValue plain = listLayouts({{"card_ids", Array{kA}}});
  EXPECT_FALSE(arrayAt(plain, "layouts").at(0).asObject()->contains("snap_constraints"))
      << "constraints only when asked for";
}

TEST_F(SnapshotLayoutToolsTest, BoardScopeListsEveryCardAndIdsWinOverScope) {
  const AnyCodableValue board = listLayouts({{"scope", " Board "}});
  EXPECT_EQ(idsOf(arrayAt(board, "layouts"), "card_id"),
            (Array{kA, kF1, kC3, kC1, kF2, kD2, kD1, kC2, kB, kBroken}));
  EXPECT_EQ(at(board, "total"), AnyCodableValue(10));
  EXPECT_EQ(at(board, "missing_card_ids"), AnyCodableValue(Array{}));
  const AnyCodableValue& b = arrayAt(board, "layouts").at(8);
  EXPECT_EQ(at(b, "center"), AnyCodableValue(JSONObject{{"x", 601}, {"y", 90}}));

  for (const char* scope : {"board", "selection"}) {
    const AnyCodableValue byIDs = listLayouts({{"card_ids", Array{kB}}, {"scope", scope}});
    EXPECT_EQ(idsOf(arrayAt(byIDs, "layouts"), "card_id"), (Array{kB})) << scope;
  }
}

TEST_F(SnapshotLayoutToolsTest, ListLayoutsArgumentErrorsAreWordedExactly) {
  const std::string missing = "list_card_layouts requires non-empty card_ids, or scope='board'.";
  EXPECT_EQ(layoutsRefusal({}), missing);
  EXPECT_EQ(layoutsRefusal({{"card_ids", Array{}}}), missing);
  EXPECT_EQ(layoutsRefusal({{"scope", "selection"}}),
            "list_card_layouts only supports scope='board' (or provide explicit card_ids).");
  EXPECT_EQ(layoutsRefusal({{"card_ids", Array{kA, "nope", "A1000000-0000-4000-8000"}}}),
            "list_card_layouts card_ids contains invalid UUID values: nope, "
            "A1000000-0000-4000-8000");

  const std::string decodeFailure = layoutsRefusal({{"card_ids", kA}});
  const std::string prefix =
      "Invalid input for list_card_layouts. Expected "
      "{\"card_ids\":[\"UUID\"],\"include_constraints\":true} or {\"scope\":\"board\"}. Error: ";
  EXPECT_EQ(decodeFailure.substr(0, prefix.size()), prefix);
  EXPECT_NE(decodeFailure.find("card_ids"), std::string::npos) << decodeFailure;
  EXPECT_EQ(layoutsRefusal({{"scope", 3}}).substr(0, prefix.size()), prefix);

  EXPECT_EQ(invalidArgumentMessage([] {
              ListCardLayoutsTool(std::nullopt)
                  .run(JSONObject{{"scope", "board"}}, AgentToolContext::forSingleCall());
            }),
            "list_card_layouts requires project_path when session is not bound.");
}

TEST_F(SnapshotLayoutToolsTest, ProjectPathInTheInputWinsOverTheDefault) {
  const TempDirectory empty;  // a folder without a workspace document loads as an empty board
  const AgentToolContext context = AgentToolContext::forSingleCall();
  const JSONObject input{{"scope", "board"}, {"project_path", project_.path().string()}};

  EXPECT_EQ(at(ListCardLayoutsTool(empty.path()).run(input, context), "total"),
            AnyCodableValue(10));
  EXPECT_EQ(at(ListCardLayoutsTool(std::nullopt).run(input, context), "total"),
            AnyCodableValue(10));
  EXPECT_EQ(
      at(ListCardLayoutsTool(empty.path()).run(JSONObject{{"scope", "board"}}, context), "total"),
      AnyCodableValue(0));
  EXPECT_EQ(at(GetGroupLayoutTool(empty.path())
                   .run(JSONObject{{"project_path", project_.path().string()}}, context),
               "groups")
                .asArray()
                ->size(),
            2u);
  EXPECT_EQ(
      invalidArgumentMessage([&] { GetGroupLayoutTool(std::nullopt).run(JSONObject{}, context); }),
      "get_group_layout requires project_path when session is not bound.");
}

TEST_F(SnapshotLayoutToolsTest, GroupLayoutsDescribeEveryFolder) {
  const AnyCodableValue answer = groupLayout({});
  const Array& groups = arrayAt(answer, "groups");
  ASSERT_EQ(idsOf(groups, "folder_id"), (Array{kF1, kF2})) << "the broken folder is no folder";
  EXPECT_EQ(at(answer, "missing_group_ids"), AnyCodableValue(Array{}));

  const AnyCodableValue& grid = groups[0];
  EXPECT_EQ(at(grid, "layout"), AnyCodableValue("grid"));
  EXPECT_EQ(at(grid, "grid_column_count"), AnyCodableValue(3));
  // The folder's own order (unknown ids, non-children and repeats dropped), then the children it
  // leaves out in entry order.
  EXPECT_EQ(at(grid, "ordered_child_ids"), AnyCodableValue(Array{kC2, kC1, kC3}));
  EXPECT_EQ(at(grid, "child_count"), AnyCodableValue(3));
  EXPECT_EQ(at(grid, "group_stacks"), AnyCodableValue(Array{kStack}));
  EXPECT_FALSE(grid.asObject()->contains("child_layouts"));

  const AnyCodableValue& row = groups[1];
  EXPECT_EQ(at(row, "layout"), AnyCodableValue("horizontal"));
  EXPECT_TRUE(at(row, "grid_column_count").isNull());
  EXPECT_EQ(at(row, "ordered_child_ids"), AnyCodableValue(Array{kD2, kD1}))
      << "without an order of its own, children come in entry order";
  EXPECT_EQ(at(row, "group_stacks"), AnyCodableValue(Array{}));
}

TEST_F(SnapshotLayoutToolsTest, RequestedGroupsReportMissingIdsAndChildLayouts) {
  const AnyCodableValue answer =
      groupLayout({{"group_ids", Array{kF2, "f1000000-0000-4000-8000-0000000000f1", kA, "xyz",
                                       kUnknown, kBroken, kF2, "xyz"}},
                   {"include_child_frames", true}});
  const Array& groups = arrayAt(answer, "groups");
  EXPECT_EQ(idsOf(groups, "folder_id"), (Array{kF2, kF1}));
  EXPECT_EQ(at(answer, "missing_group_ids"), AnyCodableValue(Array{kA, "xyz", kUnknown, kBroken}));
  ASSERT_EQ(groups.size(), 2u);

  const Array& children = arrayAt(groups[1], "child_layouts");
  EXPECT_EQ(idsOf(children, "card_id"), (Array{kC2, kC1, kC3}));
  EXPECT_EQ(at(children.at(2), "center"), AnyCodableValue(JSONObject{{"x", 1480}, {"y", 130}}));
  EXPECT_EQ(at(children.at(2), "parent_id"), AnyCodableValue(kF1));
  EXPECT_FALSE(children.at(1).asObject()->contains("snap_constraints"));

  const AnyCodableValue constrained = groupLayout(
      {{"group_ids", Array{kF1}}, {"include_child_layouts", true}, {"include_constraints", true}});
  const Array& withConstraints = arrayAt(arrayAt(constrained, "groups").at(0), "child_layouts");
  EXPECT_EQ(at(withConstraints.at(1), "snap_constraints"), snapTo(kC2, "bottom", 20));

  EXPECT_THROW(groupLayout({{"group_ids", kF1}}), DecodingError);
}

}  // namespace
}  // namespace zorvik
