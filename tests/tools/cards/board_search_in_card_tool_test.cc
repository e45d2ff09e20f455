// search_in_card: selection by id, snippet limits and result order.
#include "tools/cards/board_search_in_card_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "foundation/json/value_decoder.h"
#include "search_test_cards.h"

namespace zorvik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::richTextCard;
using Tool = BoardSearchInCardTool;

Tool::Response call(const Tool& tool, JSONObject input) {
  return decodeValue<Tool::Response>(
      tool.run(AnyCodableValue(std::move(input)), AgentToolContext{}));
}

AnyCodableValue ids(std::initializer_list<const WorkspaceCard*> cards,
                    std::vector<std::string> extra = {}) {
  AnyCodableValue::Array array;
  for (const WorkspaceCard* card : cards) array.emplace_back(card->id.lowercaseString());
  for (auto& id : extra) array.emplace_back(id);
  return AnyCodableValue(std::move(array));
}

class BoardSearchInCardToolTest : public ::testing::Test {
 protected:
  std::vector<WorkspaceCard> cards{
      richTextCard("Half", "alpha here\n\nnothing"),
      richTextCard("Full", "alpha beta\n\nbeta\n\nalpha\n\nalpha again\n\nunrelated"),
      richTextCard("None", "gamma"),
      richTextCard("Also half", "beta there"),
  };
  Tool tool{cards};
};

TEST_F(BoardSearchInCardToolTest, ExamplesAreValidRequests) {
  for (const AnyCodableValue& example : *tool.spec().examples) {
    EXPECT_NO_THROW(decodeValue<Tool::Request>(example));
  }
}

TEST_F(BoardSearchInCardToolTest, SnippetsArePositiveChunksBestFirst) {
  const Tool::Response response =
      call(tool, {{"query", "alpha beta"}, {"card_ids", ids({&cards[1]})}});
  ASSERT_EQ(response.results.size(), 1u);
  const Tool::SearchItem& item = response.results[0];
  EXPECT_EQ(item.cardID, cards[1].id.uppercaseString());
  EXPECT_EQ(item.type, "richText");
  EXPECT_EQ(item.title, "Full");
  EXPECT_EQ(item.bestScore, 1.0f);
  EXPECT_THAT(item.snippets, ElementsAre(Tool::SearchSnippet{"Paragraph 1", "alpha beta", 1.0f},
                                         Tool::SearchSnippet{"Paragraph 2", "beta", 0.5f},
                                         Tool::SearchSnippet{"Paragraph 3", "alpha", 0.5f}));

  const auto all = call(
      tool,
      {{"query", "alpha beta"}, {"card_ids", ids({&cards[1]})}, {"max_snippets_per_card", 50}});
  EXPECT_EQ(all.results[0].snippets.size(), 4u) << "zero-score chunks are never snippets";
  const auto one =
      call(tool,
           {{"query", "alpha beta"}, {"card_ids", ids({&cards[1]})}, {"max_snippets_per_card", 0}});
  EXPECT_EQ(one.results[0].snippets.size(), 1u);
}

TEST_F(BoardSearchInCardToolTest, UnknownIdsAreNotFoundAndCardsWithoutSnippetsDropped) {
  const std::string unknown = "00000000-0000-4000-8000-000000000000";
  const Tool::Response response =
      call(tool, {{"query", "alpha"}, {"card_ids", ids({&cards[2], &cards[0]}, {unknown})}});
  EXPECT_THAT(response.notFound, ElementsAre(unknown));
  ASSERT_EQ(response.results.size(), 1u);
  EXPECT_EQ(response.results[0].title, "Half");
  EXPECT_EQ(response.totalCards, 4);
  EXPECT_EQ(response.scopeRequested, "board");
  EXPECT_EQ(response.scopeUsed, "board");
  EXPECT_EQ(response.scopeLabel, "board");
}

TEST_F(BoardSearchInCardToolTest, OrdersByBestScoreKeepingRequestedOrderOnTies) {
  const auto response =
      call(tool, {{"query", "alpha beta"}, {"card_ids", ids({&cards[3], &cards[0], &cards[1]})}});
  EXPECT_THAT(testing::titlesOf(response.results), ElementsAre("Full", "Also half", "Half"));
  const auto whole = call(tool, {{"query", "alpha beta"}, {"card_ids", AnyCodableValue::Array{}}});
  EXPECT_THAT(testing::titlesOf(whole.results), ElementsAre("Full", "Half", "Also half"));

  EXPECT_EQ(call(tool, {{"query", "alpha beta"}, {"max_cards", 2}}).results.size(), 2u);
  EXPECT_EQ(call(tool, {{"query", "alpha beta"}, {"max_cards", -4}}).results.size(), 1u);
}

TEST_F(BoardSearchInCardToolTest, EmptyOrTokenlessQueries) {
  EXPECT_EQ(testing::thrownMessage<std::invalid_argument>([&] {
              call(tool, {{"query", "  "}});
            }),
            "search_in_card query must be non-empty.");
  EXPECT_THAT(call(tool, {{"query", "a"}}).results, IsEmpty());
}

TEST_F(BoardSearchInCardToolTest, ResponseJsonUsesSnakeCaseKeys) {
  const AnyCodableValue result = tool.run(JSONObject{{"query", "gamma"}}, AgentToolContext{});
  EXPECT_EQ(
      (*result.member("results")->asArray())[0].compactJSONString(),
      R"({"best_score":1,"card_id":")" + cards[2].id.uppercaseString() +
          R"(","snippets":[{"label":"Paragraph 1","score":1,"text":"gamma"}],"title":"None","type":"richText"})");
  EXPECT_TRUE(result.member("not_found")->isArray());
}

}  // namespace
}  // namespace zorvik
