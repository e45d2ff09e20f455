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

// The first result's match count; 0 when no card matched.
int matchCount(const std::vector<WorkspaceCard>& cards, JSONObject input) {
  const auto response = grep(cards, std::move(input));
  return response.results.empty() ? 0 : response.results[0].matchCount;
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
}

TEST(BoardGrepToolTest, CountsMatchesByModeAndCase) {
  struct Case {
    std::string text;
    JSONObject input;
    int count;
  };
  const std::string cats = "concatenate the cat. Cat!", versions = "v1.2 and v1x2 and (v1.2)";
  const std::string cologne = "Die GROSSE Straße in Köln — KÖLN";
  const std::vector<Case> cases = {
      {"SOLAR and Solar and solar", {{"query", "Solar"}}, 3},
      {"SOLAR and Solar and solar", {{"query", "Solar"}, {"case_sensitive", true}}, 1},
      {"SOLAR and Solar and solar", {{"query", "aa"}}, 0},
      {"aaaa", {{"query", "aa"}}, 2},  // matches never overlap
      {cats, {{"query", "cat"}, {"mode", "WORD"}}, 2},
      {cats, {{"query", "cat"}, {"mode", "fuzzy"}}, 3},  // unknown modes mean contains
      {cats, {{"query", "Cat"}, {"mode", "word"}, {"case_sensitive", true}}, 1},
      {versions, {{"query", "v1.2"}, {"mode", "word"}}, 2},  // word mode is literal
      {versions, {{"query", "v1.2"}, {"mode", "regex"}}, 3},
      {"cost $5 [a|b] {x}", {{"query", "5 [a|b] {x"}, {"mode", "word"}}, 1},
      {"ID-2024-07 id-2025",
       {{"query", R"(ID-\d+)"}, {"mode", "regex"}, {"case_sensitive", true}},
       1},
      {"call(unclosed", {{"query", "(unclosed"}}, 1},  // fine as a literal
      {cologne, {{"query", "Köln"}, {"case_sensitive", true}}, 1},
      {cologne, {{"query", "KÖLN"}, {"mode", "word"}}, 2},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(matchCount({richTextCard("T", c.text)}, c.input), c.count)
        << c.text << " / " << AnyCodableValue(c.input).compactJSONString().value_or("");
  }
}

TEST(BoardGrepToolTest, SnippetsQuoteTheMatchedTextOfEachChunk) {
  struct Case {
    std::string title, text;
    JSONObject input;
    std::vector<std::string> matches;  // label=match
  };
  const std::vector<Case> cases = {
      {"Solar",
       "SOLAR panels and solar roofs",
       {{"query", "Solar"}},
       {"Title=Solar", "Paragraph 1=SOLAR", "Paragraph 1=solar"}},
      {"T", "v1.2 and v1x2", {{"query", "v1.2"}, {"mode", "word"}}, {"Paragraph 1=v1.2"}},
      {"Log",
       "ID-2024-07 then id-2025-01\nand ID-99",
       {{"query", R"(id-\d{4}-\d{2})"}, {"mode", "regex"}},
       {"Paragraph 1=ID-2024-07", "Paragraph 1=id-2025-01"}},
      // Folded matches map back to the original text.
      {"Straße", "GROSSE Straße", {{"query", "strasse"}}, {"Title=Straße", "Paragraph 1=Straße"}},
      {"T", "in Köln — KÖLN", {{"query", "köln"}}, {"Paragraph 1=Köln", "Paragraph 1=KÖLN"}},
      {"T", "😀😀 CAFÉ 😀", {{"query", "café"}}, {"Paragraph 1=CAFÉ"}},
      {"T", "😀😀 CAFÉ 😀", {{"query", "é 😀"}, {"mode", "regex"}}, {"Paragraph 1=É 😀"}},
  };
  for (const auto& c : cases) {
    const auto response = grep({richTextCard(c.title, c.text)}, c.input);
    std::vector<std::string> matches;
    for (const auto& snippet : response.results.at(0).snippets)
      matches.push_back(snippet.label + "=" + snippet.match);
    EXPECT_EQ(matches, c.matches) << c.text;
  }
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
  EXPECT_EQ(
      matchCount(cards, {{"query", "budget 2024"}, {"mode", "equals"}, {"case_sensitive", true}}),
      0);
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
  const auto capped = grep(cards, {{"query", "needle"}, {"top_k", 1000}});
  EXPECT_EQ(capped.results.size(), 200u);
  EXPECT_EQ(capped.totalCards, 230);
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
