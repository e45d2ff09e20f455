// grep_cards: modes, limits, selection, snippet windows over UTF-16 offsets, and result order.
#include "cli/board_grep_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "foundation/json/value_decoder.h"
#include "foundation/text.h"
#include "search_test_cards.h"
#include "workspace_store/cli_workspace_cards_loader.h"

namespace zorvik {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::makeCard;
using testing::richTextCard;

const std::string kEllipsis = "…";

BoardGrepResponse grep(const std::vector<WorkspaceCard>& cards, JSONObject input) {
  auto tool = makeBoardGrepTool(cards);
  return decodeValue<BoardGrepResponse>(
      tool->run(AnyCodableValue(std::move(input)), AgentToolContext{}));
}

std::vector<std::string> titlesOf(const BoardGrepResponse& response) {
  return testing::titlesOf(response.results);
}

std::string errorOf(const std::vector<WorkspaceCard>& cards, JSONObject input) {
  return testing::thrownMessage<std::invalid_argument>([&] { grep(cards, std::move(input)); });
}

// The matched texts of the first result's snippets.
std::vector<std::string> matchesOf(const BoardGrepResponse& response) {
  std::vector<std::string> matches;
  for (const auto& snippet : response.results.at(0).snippets) matches.push_back(snippet.match);
  return matches;
}

int matchCount(const std::vector<WorkspaceCard>& cards, JSONObject input) {
  return grep(cards, std::move(input)).results.at(0).matchCount;
}

TEST(BoardGrepToolTest, ExamplesAreValidRequests) {
  const auto tool = makeBoardGrepTool({});
  for (const AnyCodableValue& example : *tool->spec().examples) {
    EXPECT_NO_THROW(decodeValue<BoardGrepRequest>(example));
  }
}

TEST(BoardGrepToolTest, RejectsEmptyQueriesAndInvalidPatterns) {
  const std::vector<WorkspaceCard> cards{richTextCard("T", "text")};
  EXPECT_EQ(errorOf(cards, {{"query", " \t\n"}}), "grep_cards query must be non-empty.");
  EXPECT_EQ(errorOf(cards, {{"query", "(unclosed"}, {"mode", "regex"}}),
            "grep_cards regex is invalid: U_REGEX_MISMATCHED_PAREN");
  EXPECT_EQ(errorOf({}, {{"query", "[a-"}, {"mode", "REGEX"}})
                .rfind("grep_cards regex is invalid: U_", 0),
            0u)
      << "the pattern fails even without cards";
  // The same text is fine as a literal.
  EXPECT_EQ(grep(cards, {{"query", "(unclosed"}}).results.size(), 0u);
}

TEST(BoardGrepToolTest, ContainsIgnoresCaseUnlessAsked) {
  const std::vector<WorkspaceCard> cards{richTextCard("Solar", "SOLAR panels and solar roofs")};
  const auto response = grep(cards, {{"query", "Solar"}});
  ASSERT_EQ(response.results.size(), 1u);
  EXPECT_EQ(response.results[0].matchCount, 3);
  std::vector<std::string> matches;
  for (const auto& snippet : response.results[0].snippets)
    matches.push_back(snippet.label + "=" + snippet.match);
  EXPECT_THAT(matches, ElementsAre("Title=Solar", "Paragraph 1=SOLAR", "Paragraph 1=solar"));

  EXPECT_EQ(matchCount(cards, {{"query", "Solar"}, {"case_sensitive", true}}), 1);
  EXPECT_EQ(grep(cards, {{"query", "aa"}}).results.size(), 0u);
  // Matches never overlap.
  const std::vector<WorkspaceCard> repeated{richTextCard("x", "aaaa")};
  EXPECT_EQ(matchCount(repeated, {{"query", "aa"}}), 2);
}

TEST(BoardGrepToolTest, ModeWordsIgnoreCaseAndUnknownWordsMeanContains) {
  const std::vector<WorkspaceCard> cards{richTextCard("Notes", "concatenate the cat. Cat!")};
  struct Case {
    JSONObject input;
    int count;
  };
  const std::vector<Case> cases = {
      {{{"query", "cat"}, {"mode", "WORD"}}, 2},
      {{{"query", "cat"}, {"mode", "word"}}, 2},
      {{{"query", "cat"}, {"mode", "fuzzy"}}, 3},
      {{{"query", "cat"}, {"mode", "Contains"}}, 3},
      {{{"query", "cat"}}, 3},
      {{{"query", "Cat"}, {"mode", "word"}, {"case_sensitive", true}}, 1},
  };
  for (const auto& c : cases) EXPECT_EQ(matchCount(cards, c.input), c.count);
}

TEST(BoardGrepToolTest, WordModeTakesTheQueryLiterally) {
  const std::vector<WorkspaceCard> cards{richTextCard("Versions", "v1.2 and v1x2 and (v1.2)")};
  const auto response = grep(cards, {{"query", "v1.2"}, {"mode", "word"}});
  ASSERT_EQ(response.results.size(), 1u);
  EXPECT_EQ(response.results[0].matchCount, 2);
  EXPECT_EQ(response.results[0].snippets[0].match, "v1.2");
  EXPECT_EQ(matchCount(cards, {{"query", "v1.2"}, {"mode", "regex"}}), 3);
  const std::vector<WorkspaceCard> symbols{richTextCard("S", "cost $5 [a|b] {x}")};
  EXPECT_EQ(matchCount(symbols, {{"query", "5 [a|b] {x"}, {"mode", "word"}}), 1);
}

TEST(BoardGrepToolTest, RegexModeIgnoresCaseUnlessAsked) {
  const std::vector<WorkspaceCard> cards{
      richTextCard("Log", "ID-2024-07 then id-2025-01\nand ID-99")};
  const auto response = grep(cards, {{"query", R"(id-\d{4}-\d{2})"}, {"mode", "regex"}});
  ASSERT_EQ(response.results.size(), 1u);
  EXPECT_THAT(matchesOf(response), ElementsAre("ID-2024-07", "id-2025-01"));
  EXPECT_EQ(
      matchCount(cards, {{"query", R"(ID-\d+)"}, {"mode", "regex"}, {"case_sensitive", true}}), 2);
}

TEST(BoardGrepToolTest, EqualsComparesTheWholeTrimmedChunk) {
  const std::vector<WorkspaceCard> cards{
      makeCard("  Budget 2024 \n", WorkspaceImagePayload{.url = "budget.png"}),
      makeCard("Budget 2024 draft", WorkspaceImagePayload{.url = "draft.png"}),
  };
  const auto response = grep(cards, {{"query", "budget 2024 "}, {"mode", "equals"}});
  ASSERT_EQ(response.results.size(), 1u);
  EXPECT_EQ(response.results[0].matchCount, 1);
  EXPECT_EQ(response.results[0].snippets[0].match, "  Budget 2024 \n");
  EXPECT_EQ(response.results[0].snippets[0].text, "Budget 2024");
  EXPECT_THAT(
      grep(cards, {{"query", "budget 2024"}, {"mode", "equals"}, {"case_sensitive", true}}).results,
      IsEmpty());
}

TEST(BoardGrepToolTest, MatchCountPerChunkStopsAtTheSnippetLimit) {
  std::string fifty;
  for (int i = 0; i < 50; ++i) fifty += "hit ";
  const std::vector<WorkspaceCard> cards{richTextCard("Many", fifty)};
  EXPECT_EQ(matchCount(cards, {{"query", "hit"}}), 3);
  EXPECT_EQ(matchCount(cards, {{"query", "hit"}, {"max_snippets_per_card", 5}}), 5);
  const auto capped = grep(cards, {{"query", "hit"}, {"max_snippets_per_card", 40}});
  EXPECT_EQ(capped.results[0].matchCount, 10);
  EXPECT_EQ(capped.results[0].snippets.size(), 10u);
  EXPECT_EQ(matchCount(cards, {{"query", "hit"}, {"max_snippets_per_card", 0}}), 1);

  // Counts add up over chunks while snippets stop at the limit.
  const std::vector<WorkspaceCard> spread{richTextCard("hit", "hit hit\n\nhit hit hit hit")};
  const auto response = grep(spread, {{"query", "hit"}, {"max_snippets_per_card", 2}});
  EXPECT_EQ(response.results[0].matchCount, 1 + 2 + 2);
  EXPECT_EQ(response.results[0].snippets.size(), 2u);
}

TEST(BoardGrepToolTest, TopKIsClamped) {
  std::vector<WorkspaceCard> cards;
  for (int i = 0; i < 230; ++i)
    cards.push_back(richTextCard("Card " + std::to_string(i), "needle"));
  EXPECT_EQ(grep(cards, {{"query", "needle"}}).results.size(), 20u);
  EXPECT_EQ(grep(cards, {{"query", "needle"}, {"top_k", 0}}).results.size(), 1u);
  EXPECT_EQ(grep(cards, {{"query", "needle"}, {"top_k", 1000}}).results.size(), 200u);
  EXPECT_EQ(grep(cards, {{"query", "needle"}, {"top_k", 1000}}).totalCards, 230);
}

TEST(BoardGrepToolTest, SelectsRequestedCardsAndReportsUnknownIds) {
  const std::vector<WorkspaceCard> cards{richTextCard("A", "needle"), richTextCard("B", "needle"),
                                         richTextCard("C", "hay")};
  const auto whole = grep(cards, {{"query", "needle"}, {"card_ids", AnyCodableValue::Array{}}});
  EXPECT_EQ(whole.totalCards, 3);
  EXPECT_THAT(titlesOf(whole), ElementsAre("A", "B"));
  EXPECT_THAT(whole.notFound, IsEmpty());

  const std::string unknown = "11111111-2222-4333-8444-555555555555";
  const auto some =
      grep(cards, {{"query", "needle"},
                   {"card_ids", AnyCodableValue::Array{cards[2].id.lowercaseString(), unknown,
                                                       cards[1].id.uppercaseString()}}});
  EXPECT_EQ(some.totalCards, 2);
  EXPECT_THAT(titlesOf(some), ElementsAre("B"));
  EXPECT_THAT(some.notFound, ElementsAre(unknown));
  EXPECT_EQ(some.results[0].cardId, cards[1].id.uppercaseString());
}

TEST(BoardGrepToolTest, SortsByMatchCountThenTitleIgnoringCase) {
  const std::vector<WorkspaceCard> cards{
      richTextCard("zeta", "needle"),        richTextCard("Échelle", "needle"),
      richTextCard("beta", "needle"),        richTextCard("Alpha", "needle"),
      richTextCard("most", "needle needle"),
  };
  EXPECT_THAT(titlesOf(grep(cards, {{"query", "needle"}})),
              ElementsAre("most", "Alpha", "beta", "Échelle", "zeta"));

  // Titles that differ only in case keep the board's order; a short top_k keeps the first ranks.
  const std::vector<WorkspaceCard> ties{
      richTextCard("Same", "needle"),
      richTextCard("same", "needle needle"),
      richTextCard("SAME", "needle"),
      richTextCard("same", "needle"),
  };
  EXPECT_THAT(titlesOf(grep(ties, {{"query", "needle"}})),
              ElementsAre("same", "Same", "SAME", "same"));
  const auto firstTwo = grep(ties, {{"query", "needle"}, {"top_k", 2}});
  EXPECT_THAT(titlesOf(firstTwo), ElementsAre("same", "Same"));
  EXPECT_EQ(firstTwo.results[1].cardId, ties[0].id.uppercaseString());
}

TEST(BoardGrepToolTest, TypeIsTheRawCardType) {
  const std::vector<WorkspaceCard> cards{
      testing::linkCard("needle link", "https://example.org", ""),
      testing::tableCard("needle table", {"A"}, {}),
      makeCard("needle html", WorkspaceHTMLPayload{.html = "<b>"}),
  };
  std::vector<std::string> types;
  for (const auto& item : grep(cards, {{"query", "needle"}}).results) types.push_back(item.type);
  EXPECT_THAT(types, ElementsAre("html", "link", "table"));
}

TEST(BoardGrepToolTest, SnippetWindowsShowNinetyUnitsAroundTheMatch) {
  const std::string before(200, 'b'), after(200, 'a'), b90(90, 'b'), a90(90, 'a');
  const std::vector<std::pair<std::string, std::string>> cases = {
      {before + "NEEDLE" + after, kEllipsis + b90 + "NEEDLE" + a90 + kEllipsis},
      {"NEEDLE" + after, "NEEDLE" + a90 + kEllipsis},
      {before + "NEEDLE", kEllipsis + b90 + "NEEDLE"},
      {b90 + "NEEDLE", b90 + "NEEDLE"},
  };
  for (const auto& [text, window] : cases) {
    const std::vector<WorkspaceCard> cards{richTextCard("T", text)};
    const auto snippet = grep(cards, {{"query", "needle"}}).results[0].snippets[0];
    EXPECT_EQ(snippet.match, "NEEDLE");
    EXPECT_EQ(snippet.text, window);
  }
}

TEST(BoardGrepToolTest, SnippetTextIsOneTrimmedLine) {
  const std::vector<WorkspaceCard> cards{
      richTextCard("first line\r\nthe needle\nlast\rline  ", "x")};
  EXPECT_EQ(grep(cards, {{"query", "needle"}}).results[0].snippets[0].text,
            "first line the needle last line");
}

TEST(BoardGrepToolTest, NonAsciiMatchesMapBackToTheOriginalText) {
  const std::vector<WorkspaceCard> cards{
      richTextCard("Straße", "Die GROSSE Straße in Köln — KÖLN"),
  };
  const auto response = grep(cards, {{"query", "strasse"}});
  ASSERT_EQ(response.results.size(), 1u);
  EXPECT_THAT(matchesOf(response), ElementsAre("Straße", "Straße"));
  EXPECT_THAT(matchesOf(grep(cards, {{"query", "köln"}, {"max_snippets_per_card", 10}})),
              ElementsAre("Köln", "KÖLN"));
  EXPECT_EQ(matchCount(cards, {{"query", "Köln"}, {"case_sensitive", true}}), 1);
  EXPECT_EQ(matchCount(cards, {{"query", "KÖLN"}, {"mode", "word"}}), 2);
}

TEST(BoardGrepToolTest, WindowsCountUtf16UnitsAndNeverSplitASurrogatePair) {
  std::string emoji;
  for (int i = 0; i < 50; ++i) emoji += "😀";  // 100 UTF-16 units
  const std::vector<WorkspaceCard> cards{richTextCard("T", emoji + "zneedle" + "ééé")};
  const auto snippet = grep(cards, {{"query", "NEEDLE"}}).results[0].snippets[0];
  EXPECT_EQ(snippet.match, "needle");
  // 90 units before the match end inside a pair; the half pair is left out.
  std::string expected = kEllipsis;
  for (int i = 0; i < 44; ++i) expected += "😀";
  EXPECT_EQ(snippet.text, expected + "zneedleééé");
  EXPECT_TRUE(isValidUTF8(snippet.text));
  EXPECT_EQ(snippet.text.find("\uFFFD"), std::string::npos);

  const std::vector<WorkspaceCard> wide{richTextCard("T", "😀😀 CAFÉ 😀")};
  EXPECT_EQ(grep(wide, {{"query", "café"}}).results[0].snippets[0].match, "CAFÉ");
  EXPECT_EQ(grep(wide, {{"query", "é 😀"}, {"mode", "regex"}}).results[0].snippets[0].match, "É 😀");
}

TEST(BoardGrepToolTest, ResponseJsonUsesSnakeCaseKeys) {
  const std::vector<WorkspaceCard> cards{richTextCard("Title", "needle")};
  const AnyCodableValue result =
      makeBoardGrepTool(cards)->run(JSONObject{{"query", "needle"}}, AgentToolContext{});
  EXPECT_EQ(
      result.compactJSONString(),
      R"({"not_found":[],"results":[{"card_id":")" + cards[0].id.uppercaseString() +
          R"(","match_count":1,"snippets":[{"label":"Paragraph 1","match":"needle","text":"needle"}],"title":"Title","type":"richText"}],"total_cards":1})");
}

TEST(BoardGrepToolTest, FindsTextOnTheExampleBoard) {
  const std::filesystem::path board =
      std::filesystem::path(ZORVIK_SOURCE_DIR) / "examples" / "research-board";
  const auto loaded = CLIWorkspaceCardsLoader::loadBoard(board, WorkspaceProjectSnapshotStore());
  const auto response = grep(loaded.cards, {{"query", "solar market"}, {"top_k", 200}});
  EXPECT_EQ(response.totalCards, static_cast<int64_t>(loaded.cards.size()));
  EXPECT_THAT(titlesOf(response), ::testing::Contains("Solar market report 2024"));
}

}  // namespace
}  // namespace zorvik
