// search_cards: limits, expansion levels, item shape and the tool's description.
#include "tools/cards/board_search_cards_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/text.h"
#include "search_test_cards.h"

namespace zorvik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::makeCard;
using testing::richTextCard;
using Response = BoardSearchCardsTool::Response;

Response call(const BoardSearchCardsTool& tool, JSONObject input) {
  return decodeValue<Response>(tool.run(AnyCodableValue(std::move(input)), AgentToolContext{}));
}

std::vector<WorkspaceCard> matchingCards(int count) {
  std::vector<WorkspaceCard> cards;
  for (int i = 0; i < count; ++i) {
    cards.push_back(
        richTextCard("Card " + std::to_string(i), "solar power note " + std::to_string(i)));
  }
  return cards;
}

TEST(BoardSearchCardsToolTest, ExamplesAreValidRequests) {
  const BoardSearchCardsTool tool({});
  for (const AnyCodableValue& example : *tool.spec().examples) {
    EXPECT_NO_THROW(decodeValue<BoardSearchCardsTool::Request>(example));
  }
}

TEST(BoardSearchCardsToolTest, EmptyQueryIsAnError) {
  const BoardSearchCardsTool tool(matchingCards(1));
  EXPECT_EQ(testing::thrownMessage<std::invalid_argument>([&] {
              call(tool, {{"query", " \n "}});
            }),
            "search_cards query must be non-empty.");
  EXPECT_THROW(call(tool, {{"top_k", 3}}), DecodingError);
}

TEST(BoardSearchCardsToolTest, QueryWithoutLongTokensFindsNothing) {
  const BoardSearchCardsTool tool(matchingCards(3));
  const Response response = call(tool, {{"query", "a"}, {"scope", "selection"}});
  EXPECT_THAT(response.results, IsEmpty());
  EXPECT_EQ(response.totalCards, 3);
  EXPECT_EQ(response.scopeRequested, "selection");
  EXPECT_EQ(response.scopeUsed, "board");
  EXPECT_EQ(response.scopeLabel, "board");
  EXPECT_EQ(call(tool, {{"query", "solar"}}).scopeRequested, "board");
}

TEST(BoardSearchCardsToolTest, TopKIsBoundedAndGrowsWithExpansion) {
  const BoardSearchCardsTool tool(matchingCards(30));
  EXPECT_EQ(call(tool, {{"query", "solar"}, {"top_k", 100}}).results.size(), 25u);
  EXPECT_EQ(call(tool, {{"query", "solar"}, {"top_k", 2}, {"expansion_level", -3}}).results.size(),
            2u);

  const Response levelOne = call(tool, {{"query", "solar"}, {"expansion_level", 1}});
  EXPECT_EQ(levelOne.results.size(), 10u);
  EXPECT_FALSE(levelOne.results[0].fullContext);

  const Response levelTwo = call(tool, {{"query", "solar"}, {"expansion_level", 2}});
  ASSERT_EQ(levelTwo.results.size(), 14u);
  for (const auto& item : levelTwo.results) {
    ASSERT_TRUE(item.fullContext);
    EXPECT_THAT(*item.fullContext, ::testing::HasSubstr(item.title));
  }
  EXPECT_TRUE(
      call(tool, {{"query", "solar"}, {"include_full_context", true}}).results[0].fullContext);
}

TEST(BoardSearchCardsToolTest, LimitsFollowTheExpansionLevel) {
  using Limits = BoardSearchCardsTool::Limits;
  using Request = BoardSearchCardsTool::Request;
  EXPECT_EQ(Limits::of(Request{.query = "q"}), (Limits{6, 3, 1600, false}));
  EXPECT_EQ(Limits::of(Request{.query = "q", .expansionLevel = 2}), (Limits{14, 5, 3200, true}));
  EXPECT_EQ(Limits::of(Request{.query = "q", .expansionLevel = 9}), (Limits{25, 6, 4000, true}));
  EXPECT_EQ(Limits::of(Request{.query = "q",
                               .topK = 0,
                               .maxSnippetsPerCard = 0,
                               .maxCharsPerCard = 100,
                               .expansionLevel = -1}),
            (Limits{1, 1, 400, false}));
  // Extreme values saturate instead of overflowing.
  EXPECT_EQ(Limits::of(Request{.query = "q",
                               .topK = INT64_MAX,
                               .maxSnippetsPerCard = 2,
                               .maxCharsPerCard = 5000,
                               .expansionLevel = INT64_MAX}),
            (Limits{25, 6, 4000, true}));
  EXPECT_EQ(Limits::of(Request{.query = "q", .topK = INT64_MIN, .maxCharsPerCard = INT64_MIN}),
            (Limits{1, 3, 400, false}));
}

TEST(BoardSearchCardsToolTest, CharacterLimitNeverFallsBelowFourHundred) {
  const std::string longSummary = "solar " + std::string(2000, 's');
  std::vector<WorkspaceCard> cards{
      makeCard("Long", WorkspaceImagePayload{.url = "img.png", .summary = longSummary})};
  const BoardSearchCardsTool tool(cards);
  const Response response =
      call(tool, {{"query", "solar"}, {"max_chars_per_card", 100}, {"include_full_context", true}});
  ASSERT_EQ(response.results.size(), 1u);
  const WorkspaceSearchItem& item = response.results[0];
  EXPECT_EQ(*item.summary, longSummary.substr(0, 399) + "…");
  EXPECT_EQ(characterCount(*item.fullContext), 400u);
  // The chunk itself was cut at 800 characters, the snippet then at 400.
  EXPECT_EQ(item.snippets[0], "Summary: " + longSummary.substr(0, 390) + "…");
}

TEST(BoardSearchCardsToolTest, ItemsCarryTypeScoreSummaryAndLabelledSnippets) {
  std::vector<WorkspaceCard> cards{
      richTextCard("Notes", "nothing here"),
      testing::linkCard("Alpha report", "https://example.org", "beta gamma delta"),
      richTextCard("Alpha",
                   "alpha\n\nbeta words\n\nalpha beta\n\nmore alpha\n\nlast alpha\n\nalpha extra"),
  };
  const BoardSearchCardsTool tool(cards);
  const Response response = call(tool, {{"query", "alpha beta"}});
  ASSERT_EQ(response.results.size(), 2u);
  const WorkspaceSearchItem& best = response.results[0];
  EXPECT_EQ(best.cardID, cards[2].id.uppercaseString());
  EXPECT_EQ(best.type, "richText");
  EXPECT_EQ(best.score, 1.0);
  EXPECT_EQ(best.summary, "Text card.");
  EXPECT_THAT(best.snippets,
              ElementsAre("Paragraph 3: alpha beta", "Title: Alpha", "Paragraph 1: alpha"));

  const WorkspaceSearchItem& link = response.results[1];
  EXPECT_EQ(link.type, "item");
  EXPECT_EQ(link.title, "Alpha report");
  EXPECT_EQ(link.score, 0.5);
  EXPECT_EQ(link.summary, "Item URL: https://example.org");

  const Response wide = call(tool, {{"query", "alpha beta"}, {"max_snippets_per_card", 10}});
  EXPECT_EQ(wide.results[0].snippets.size(), 6u);
}

TEST(BoardSearchCardsToolTest, ResponseJsonUsesSnakeCaseKeys) {
  const BoardSearchCardsTool tool(matchingCards(1));
  const AnyCodableValue result =
      tool.run(JSONObject{{"query", "solar"}, {"expansion_level", 2}}, AgentToolContext{});
  EXPECT_THAT(testing::keysOf(result), ElementsAre("results", "scope_label", "scope_requested",
                                                   "scope_used", "total_cards"));
  EXPECT_THAT(
      testing::keysOf((*result.member("results")->asArray())[0]),
      ElementsAre("card_id", "full_context", "score", "snippets", "summary", "title", "type"));
}

}  // namespace
}  // namespace zorvik
