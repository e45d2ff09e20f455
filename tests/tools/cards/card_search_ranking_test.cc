// Tokenisation and token-overlap ranking.
#include "tools/cards/card_search_ranking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "search_test_cards.h"

namespace zorvik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::pointersTo;
using testing::richTextCard;

TEST(TokenizeTest, SplitsAtNonAlphanumericsLowerCasesAndDropsShortTokens) {
  EXPECT_THAT(tokenize("Hello, World! a b 42 x1 snake_case"),
              ElementsAre("hello", "world", "42", "x1", "snake", "case"));
  EXPECT_THAT(tokenize("a"), IsEmpty());
  EXPECT_THAT(tokenize("  ,;  "), IsEmpty());
  EXPECT_THAT(tokenize("alpha ALPHA alpha"), ElementsAre("alpha", "alpha", "alpha"));
}

TEST(TokenizeTest, KeepsUnicodeLettersAndDigits) {
  EXPECT_THAT(tokenize("STRASSE Straße, Ünïcode — 東京 é ٣٤"),
              ElementsAre("strasse", "straße", "ünïcode", "東京", "٣٤"));
}

TEST(ChunkScoreTest, IsTheShareOfQueryTokensFoundAsSubstrings) {
  EXPECT_EQ(chunkScore("only alpha here", tokenize("alpha beta")), 0.5f);
  EXPECT_EQ(chunkScore("ALPHABET soup", tokenize("alpha soup")), 1.0f);
  // A repeated query token counts each time.
  EXPECT_EQ(chunkScore("alpha", tokenize("alpha alpha beta")), 2.0f / 3.0f);
  EXPECT_EQ(chunkScore("", tokenize("alpha")), 0.0f);
  EXPECT_EQ(chunkScore("alpha", {}), 0.0f);
  EXPECT_EQ(chunkScore("ÜBER", tokenize("über")), 1.0f);
}

TEST(ScoreChunksTest, SortsByScoreAndKeepsChunkOrderOnTies) {
  auto scored = scoreChunks({{"A", "nothing"}, {"B", "beta"}, {"C", "alpha beta"}, {"D", "alpha"}},
                            tokenize("alpha beta"));
  std::vector<std::string> labels;
  for (const auto& item : scored) labels.push_back(item.chunk.label);
  EXPECT_THAT(labels, ElementsAre("C", "B", "D", "A"));
  EXPECT_EQ(scored[0].score, 1.0f);
  EXPECT_EQ(scored[3].score, 0.0f);
}

TEST(RankTest, RanksCardsByBestChunkAndDropsCardsWithoutMatches) {
  std::vector<WorkspaceCard> cards{
      richTextCard("First", "alpha only"),
      richTextCard("Second", "nothing relevant"),
      richTextCard("Third", "alpha and beta together"),
      richTextCard("Fourth", "beta only"),
  };
  auto ranked = rank(pointersTo(cards), tokenize("alpha beta"));
  ASSERT_EQ(ranked.size(), 3u);
  EXPECT_EQ(ranked[0].card, &cards[2]);
  EXPECT_EQ(ranked[0].score, 1.0f);
  // Ties keep board order.
  EXPECT_EQ(ranked[1].card, &cards[0]);
  EXPECT_EQ(ranked[2].card, &cards[3]);
  EXPECT_EQ(ranked[1].score, 0.5f);
  // Snippets are all the card's chunks, best first.
  EXPECT_THAT(ranked[0].snippets,
              ElementsAre(WorkspaceCardSearchChunk{"Paragraph 1", "alpha and beta together"},
                          WorkspaceCardSearchChunk{"Title", "Third"}));

  // A limit keeps the first ranks, snippets and all.
  const auto firstTwo = rank(pointersTo(cards), tokenize("alpha beta"), {}, 2);
  ASSERT_EQ(firstTwo.size(), 2u);
  EXPECT_EQ(firstTwo[1].card, &cards[0]);
  EXPECT_EQ(firstTwo[1].score, ranked[1].score);
  EXPECT_EQ(firstTwo[1].snippets, ranked[1].snippets);
}

TEST(RankTest, NoTokensRankNothing) {
  std::vector<WorkspaceCard> cards{richTextCard("a", "a a a")};
  EXPECT_THAT(rank(pointersTo(cards), tokenize("a")), IsEmpty());
}

TEST(RankTest, RowsBeyondTheFiftiethAreNotSearched) {
  std::vector<std::vector<std::string>> rows;
  for (int r = 1; r <= 60; ++r) rows.push_back({"row" + std::to_string(r) + "marker"});
  std::vector<WorkspaceCard> cards{testing::tableCard("Rows", {"Name"}, rows)};
  EXPECT_EQ(rank(pointersTo(cards), tokenize("row50marker")).size(), 1u);
  EXPECT_THAT(rank(pointersTo(cards), tokenize("row51marker")), IsEmpty());
}

}  // namespace
}  // namespace zorvik
