#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/domain_error.h"
#include "foundation/json/decoding_error.h"
#include "foundation/text.h"
#include "tools/cards/board_get_card_content_tool.h"
#include "tools/cards/board_list_card_metadata_tool.h"
#include "tools/cards/toolkit_test_cards.h"
#include "tools/framework/tool_details_tool.h"

namespace zorvik {
namespace {

using testing::cardID;
using testing::makeCard;

std::vector<WorkspaceCard> boardCards() {
  return {
      makeCard(1, "Report", R"({"link": {"url": "https://example.com/r"}})", std::nullopt,
               "Solar report"),
      makeCard(2, "Notes", R"({"richText": {"markdown": ")" + std::string(2500, 'n') + R"("}})", 4),
      makeCard(3, "Tasks", R"({"table": {"columns": ["Task", "Status"],
                                        "rows": [["a", "open"], ["b", "done"]],
                                        "showsRowHeaders": false}})",
               4),
      makeCard(4, "Group", R"({"folder": {"layout": "grid"}})"),
      makeCard(5, "Agent", R"({"chat": {"messages": [], "isInvisible": true}})"),
      makeCard(6, "Chat", R"({"chat": {"messages": [{"role": "user", "text": "hi"}]}})"),
  };
}

AnyCodableValue runTool(const AgentTool& tool, std::string_view input) {
  return tool.run(AnyCodableValue::parse(input), AgentToolContext::forSingleCall());
}

const AnyCodableValue::Array& results(const AnyCodableValue& answer) {
  return *answer.member("results")->asArray();
}

std::string compact(const AnyCodableValue* value) {
  return value ? testing::compactJSON(*value) : std::string("<absent>");
}

class GetCardContentTest : public ::testing::Test {
 protected:
  BoardGetCardContentTool tool_{boardCards(), std::nullopt};
};

TEST_F(GetCardContentTest, ReadsEveryCardInFullByDefault) {
  const auto answer = runTool(tool_, "{}");
  EXPECT_EQ(compact(answer.member("scope_requested")), R"("board")");
  EXPECT_EQ(compact(answer.member("scope_used")), R"("board")");
  EXPECT_EQ(compact(answer.member("scope_label")), R"("board")");
  EXPECT_EQ(compact(answer.member("total_cards")), "6");
  EXPECT_EQ(compact(answer.member("not_found")), "[]");
  ASSERT_EQ(results(answer).size(), 6u);
  const auto& first = results(answer)[0];
  EXPECT_EQ(compact(first.member("card_id")), "\"" + cardID(1).uppercaseString() + "\"");
  EXPECT_EQ(compact(first.member("type")), R"("item")");
  EXPECT_EQ(compact(first.member("title")), R"("Report")");
  EXPECT_EQ(compact(first.member("summary")), R"("Solar report")");
  EXPECT_EQ(compact(first.member("content")),
            R"({"mode":"full","text":"Title: Report\nSummary: Solar report\nSource: remote\n)"
            R"(Item URL: https://example.com/r"})");
  EXPECT_EQ(compact(results(answer)[1].member("type")), R"("richText")");
}

TEST_F(GetCardContentTest, BudgetPrecedenceAndCardLimit) {
  struct Case {
    std::string input;
    size_t cards;
    size_t textLength;  // characters of the rich text card's text
  };
  const std::string notes = "\"" + cardID(2).lowercaseString() + "\"";
  const std::vector<Case> cases = {
      {R"({"card_ids": [)" + notes + "]}", 1, 2000},
      {R"({"card_ids": [)" + notes + R"(], "max_chars_per_card": 100})", 1, 100},
      {R"({"card_ids": [)" + notes + R"(], "max_chars": 50, "max_chars_per_card": 100})", 1, 50},
      {R"({"card_ids": [)" + notes + R"(], "max_chars": 0})", 1, 2513},  // no cut
      {R"({"card_ids": [)" + notes + R"(, "x"], "max_cards": 0})", 1, 2000},
  };
  for (const auto& c : cases) {
    const auto answer = runTool(tool_, c.input);
    ASSERT_EQ(results(answer).size(), c.cards) << c.input;
    const auto* text = results(answer)[0].member("content")->member("text")->asString();
    EXPECT_EQ(characterCount(*text), c.textLength) << c.input;
  }
  EXPECT_EQ(results(runTool(tool_, R"({"max_cards": 2})")).size(), 2u);
  EXPECT_EQ(results(runTool(tool_, R"({"max_cards": -4})")).size(), 1u);
}

TEST_F(GetCardContentTest, TypeOptionsApplyOnlyInTypeSpecificMode) {
  const std::string tasks = cardID(3).uppercaseString();
  const std::string options = R"("type_options": {"table": {"row_filter":
                                  {"column": "status", "match": "open"}}})";
  auto answer = runTool(
      tool_, R"({"card_ids": [")" + tasks + R"(", "missing"], "mode": "full", )" + options + "}");
  EXPECT_EQ(compact(results(answer)[0].member("content")->member("table")), "<absent>");
  EXPECT_EQ(compact(answer.member("not_found")), R"(["missing"])");

  answer = runTool(
      tool_, R"({"card_ids": [")" + tasks + R"("], "mode": "type_specific", )" + options + "}");
  EXPECT_EQ(compact(results(answer)[0].member("content")->member("table")->member("rows")),
            R"([["a","open"]])");

  answer = runTool(tool_, R"({"scope": "selection", "mode": "summary", "max_cards": 1})");
  EXPECT_EQ(compact(answer.member("scope_requested")), R"("selection")");
  EXPECT_EQ(compact(results(answer)[0].member("content")),
            R"({"mode":"summary","text":"Solar report"})");
}

TEST_F(GetCardContentTest, RejectsUnknownModes) {
  EXPECT_THROW(runTool(tool_, R"({"mode": "raw"})"), DecodingError);
  EXPECT_THROW(runTool(tool_, R"({"card_ids": "x"})"), DecodingError);
  EXPECT_THROW(
      runTool(tool_, R"({"mode": "type_specific", "type_options": {"chat": {"last_n": "2"}}})"),
      DecodingError);
}

TEST_F(GetCardContentTest, ExamplesForEveryTypeAreAcceptedRequests) {
  for (std::string_view type : {"table", "item", "rich_text", "chat", "html", "image", "folder"}) {
    auto kept = filterExamples(*tool_.spec().examples, "get_card_content", type);
    EXPECT_FALSE(kept->empty()) << type;
    for (const auto& example : *kept) EXPECT_NO_THROW(tool_.run(example, {})) << type;
  }
}

class ListCardMetadataTest : public ::testing::Test {
 protected:
  static WorkspaceCompileDiagnostic diagnostic() {
    return {WorkspaceCompileSeverity::error, "card_unreadable", "Bad card", "cards/x.json"};
  }
};

TEST_F(ListCardMetadataTest, ReportsOwnershipLinksAndMetadata) {
  const BoardListCardMetadataTool tool(boardCards(), {}, "/boards/My Board&Co");
  const auto answer = runTool(tool, "{}");
  ASSERT_EQ(results(answer).size(), 6u);
  const auto& report = results(answer)[0];
  EXPECT_EQ(
      compact(&report),
      R"({"card_id":")" + cardID(1).uppercaseString() +
          R"(","deep_link_url":"zorvik://project/card/)" + cardID(1).uppercaseString() +
          R"(?path=/boards/My%20Board%26Co","edit_policy":"file_editable","is_loading":false,)"
          R"("metadata":{"available_fields_count":0,"hidden_fields_count":0,)"
          R"("images_count":0,"link_properties_count":0,"link_source":"remote",)"
          R"("link_url":"https://example.com/r","note_length":0,"row_items_count":0},)"
          R"("owner":"user","parent_id":null,"payload_type":"link","runtime_managed":false,)"
          R"("summary":"Solar report","title":"Report","type":"item"})");
  EXPECT_EQ(compact(results(answer)[1].member("parent_id")),
            "\"" + cardID(4).uppercaseString() + "\"");
  EXPECT_EQ(compact(results(answer)[1].member("summary")), "null");
  struct Expected {
    size_t index;
    std::string owner, policy, managed;
  };
  for (const auto& e : std::vector<Expected>{{2, "user", "file_editable", "false"},
                                             {4, "runtime", "read_only", "true"},
                                             {5, "user", "tool_only", "false"}}) {
    const auto& card = results(answer)[e.index];
    EXPECT_EQ(*card.member("owner")->asString(), e.owner);
    EXPECT_EQ(*card.member("edit_policy")->asString(), e.policy);
    EXPECT_EQ(compact(card.member("runtime_managed")), e.managed);
  }

  const BoardListCardMetadataTool offline(boardCards(), {}, std::nullopt);
  EXPECT_EQ(compact(results(runTool(offline, "{}"))[0].member("deep_link_url")), "null");
}

TEST_F(ListCardMetadataTest, BoardHealthInAllFourStates) {
  EXPECT_EQ(boardHealthStatus(3, 0), "ok");
  const BoardListCardMetadataTool empty({}, {}, std::nullopt);
  EXPECT_EQ(compact(runTool(empty, "{}").member("board_health")),
            R"({"load_diagnostics":[],"load_error_count":0,"status":"empty"})");
  const BoardListCardMetadataTool broken({}, {diagnostic()}, std::nullopt);
  EXPECT_EQ(compact(runTool(broken, "{}").member("board_health")->member("status")), R"("error")");
  const BoardListCardMetadataTool degraded(boardCards(), {diagnostic(), diagnostic()},
                                           std::nullopt);
  const auto degradedAnswer = runTool(degraded, "{}");
  const auto* health = degradedAnswer.member("board_health");
  EXPECT_EQ(compact(health->member("status")), R"("degraded")");
  EXPECT_EQ(compact(health->member("load_error_count")), "2");
  const AnyCodableValue expected = diagnostic().encode();
  EXPECT_EQ(compact(&health->member("load_diagnostics")->asArray()->front()), compact(&expected));
}

TEST_F(ListCardMetadataTest, SelectionScopeNeedsExplicitIds) {
  const BoardListCardMetadataTool tool(boardCards(), {}, std::nullopt);
  EXPECT_THAT([&] { runTool(tool, R"({"scope": " Selection "})"); },
              ::testing::ThrowsMessage<DomainError>(
                  "list_card_metadata on the current project snapshot supports only "
                  "scope='board' (or explicit card_ids). scope='selection' requires the live "
                  "runtime."));
  EXPECT_THROW(runTool(tool, R"({"scope": "selection", "card_ids": []})"), DomainError);

  const auto answer = runTool(tool, R"({"scope": "selection", "card_ids": [")" +
                                        cardID(6).lowercaseString() + R"(", "nope"]})");
  EXPECT_EQ(compact(answer.member("scope_requested")), R"("selection")");
  EXPECT_EQ(compact(answer.member("scope_used")), R"("board")");
  ASSERT_EQ(results(answer).size(), 1u);
  EXPECT_EQ(compact(results(answer)[0].member("title")), R"("Chat")");
  EXPECT_EQ(compact(answer.member("not_found")), R"(["nope"])");
  EXPECT_EQ(compact(answer.member("total_cards")), "6");
  EXPECT_EQ(results(runTool(tool, R"({"max_cards": 3})")).size(), 3u);
}

}  // namespace
}  // namespace zorvik
