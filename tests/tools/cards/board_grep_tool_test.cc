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
using ::testing::HasSubstr;
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
  std::vector<std::string> titles;
  for (const auto& item : response.results) titles.push_back(item.title);
  return titles;
}

std::string errorOf(const std::vector<WorkspaceCard>& cards, JSONObject input) {
  try {
    grep(cards, std::move(input));
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "no error";
}

TEST(BoardGrepToolTest, SpecDescribesTheTool) {
  const auto tool = makeBoardGrepTool({});
  const AgentToolSpec& spec = tool->spec();
  EXPECT_EQ(spec.name, "grep_cards");
  EXPECT_EQ(spec.summary, "Exact lexical or regex search across board cards.");
  EXPECT_EQ(spec.notes,
            "Use this for deterministic existence checks and exact-match lookups. Prefer "
            "search_cards for semantic/relevance search and list_card_metadata for "
            "counts/ownership/lightweight fields.");
  const AnyCodableValue* properties = spec.inputSchema->member("properties");
  std::vector<std::string> keys;
  for (const auto& [key, value] : *properties->asObject()) keys.push_back(key);
  EXPECT_THAT(keys, ElementsAre("card_ids", "case_sensitive", "max_snippets_per_card", "mode",
                                "query", "top_k"));
  EXPECT_EQ(properties->member("mode")->member("enum")->compactJSONString(),
            R"(["contains","equals","word","regex"])");
  const AnyCodableValue* output = spec.outputSchema->member("properties");
  EXPECT_TRUE(output->member("total_cards") && output->member("not_found"));
  std::vector<std::string> itemKeys;
  for (const auto& [key, value] :
       *output->member("results")->member("items")->member("properties")->asObject()) {
    itemKeys.push_back(key);
  }
  EXPECT_THAT(itemKeys, ElementsAre("card_id", "match_count", "snippets", "title", "type"));
  for (const AnyCodableValue& example : *spec.examples) {
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

  EXPECT_EQ(grep(cards, {{"query", "Solar"}, {"case_sensitive", true}}).results[0].matchCount, 1);
  EXPECT_EQ(grep(cards, {{"query", "aa"}}).results.size(), 0u);
  // Matches never overlap.
  const std::vector<WorkspaceCard> repeated{richTextCard("x", "aaaa")};
  EXPECT_EQ(grep(repeated, {{"query", "aa"}}).results[0].matchCount, 2);
}

TEST(BoardGrepToolTest, ModeWordsIgnoreCaseAndUnknownWordsMeanContains) {
  const std::vector<WorkspaceCard> cards{richTextCard("Notes", "concatenate the cat. Cat!")};
  EXPECT_EQ(grep(cards, {{"query", "cat"}, {"mode", "WORD"}}).results[0].matchCount, 2);
  EXPECT_EQ(grep(cards, {{"query", "cat"}, {"mode", "word"}}).results[0].matchCount, 2);
  EXPECT_EQ(grep(cards, {{"query", "cat"}, {"mode", "fuzzy"}}).results[0].matchCount, 3);
  EXPECT_EQ(grep(cards, {{"query", "cat"}, {"mode", "Contains"}}).results[0].matchCount, 3);
  EXPECT_EQ(grep(cards, {{"query", "cat"}}).results[0].matchCount, 3);
  EXPECT_EQ(grep(cards, {{"query", "Cat"}, {"mode", "word"}, {"case_sensitive", true}})
                .results[0]
                .matchCount,
            1);
}

TEST(BoardGrepToolTest, WordModeTakesTheQueryLiterally) {
  const std::vector<WorkspaceCard> cards{richTextCard("Versions", "v1.2 and v1x2 and (v1.2)")};
  const auto response = grep(cards, {{"query", "v1.2"}, {"mode", "word"}});
  ASSERT_EQ(response.results.size(), 1u);
  EXPECT_EQ(response.results[0].matchCount, 2);
  EXPECT_EQ(response.results[0].snippets[0].match, "v1.2");
  EXPECT_EQ(grep(cards, {{"query", "v1.2"}, {"mode", "regex"}}).results[0].matchCount, 3);
  const std::vector<WorkspaceCard> symbols{richTextCard("S", "cost $5 [a|b] {x}")};
  EXPECT_EQ(grep(symbols, {{"query", "5 [a|b] {x"}, {"mode", "word"}}).results[0].matchCount, 1);
}

TEST(BoardGrepToolTest, RegexModeIgnoresCaseUnlessAsked) {
  const std::vector<WorkspaceCard> cards{
      richTextCard("Log", "ID-2024-07 then id-2025-01\nand ID-99")};
  const auto response = grep(cards, {{"query", R"(id-\d{4}-\d{2})"}, {"mode", "regex"}});
  ASSERT_EQ(response.results.size(), 1u);
  ASSERT_EQ(response.results[0].snippets.size(), 2u);
  EXPECT_EQ(response.results[0].snippets[0].match, "ID-2024-07");
  EXPECT_EQ(response.results[0].snippets[1].match, "id-2025-01");
  EXPECT_EQ(grep(cards, {{"query", R"(ID-\d+)"}, {"mode", "regex"}, {"case_sensitive", true}})
                .results[0]
                .matchCount,
            2);
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
  EXPECT_EQ(grep(cards, {{"query", "hit"}}).results[0].matchCount, 3);
  EXPECT_EQ(grep(cards, {{"query", "hit"}, {"max_snippets_per_card", 5}}).results[0].matchCount, 5);
  const auto capped = grep(cards, {{"query", "hit"}, {"max_snippets_per_card", 40}});
  EXPECT_EQ(capped.results[0].matchCount, 10);
  EXPECT_EQ(capped.results[0].snippets.size(), 10u);
  EXPECT_EQ(grep(cards, {{"query", "hit"}, {"max_snippets_per_card", 0}}).results[0].matchCount, 1);

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
  const std::string before(200, 'b');
  const std::string after(200, 'a');
  const std::vector<WorkspaceCard> middle{richTextCard("T", before + "NEEDLE" + after)};
  const auto snippet = grep(middle, {{"query", "needle"}}).results[0].snippets[0];
  EXPECT_EQ(snippet.match, "NEEDLE");
  EXPECT_EQ(snippet.text,
            kEllipsis + std::string(90, 'b') + "NEEDLE" + std::string(90, 'a') + kEllipsis);

  const std::vector<WorkspaceCard> start{richTextCard("T", "NEEDLE" + after)};
  EXPECT_EQ(grep(start, {{"query", "needle"}}).results[0].snippets[0].text,
            "NEEDLE" + std::string(90, 'a') + kEllipsis);
  const std::vector<WorkspaceCard> end{richTextCard("T", before + "NEEDLE")};
  EXPECT_EQ(grep(end, {{"query", "needle"}}).results[0].snippets[0].text,
            kEllipsis + std::string(90, 'b') + "NEEDLE");
  const std::vector<WorkspaceCard> exact{richTextCard("T", std::string(90, 'b') + "NEEDLE")};
  EXPECT_EQ(grep(exact, {{"query", "needle"}}).results[0].snippets[0].text,
            std::string(90, 'b') + "NEEDLE");
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
  std::vector<std::string> matches;
  for (const auto& snippet : response.results[0].snippets) matches.push_back(snippet.match);
  EXPECT_THAT(matches, ElementsAre("Straße", "Straße"));
  const auto cities = grep(cards, {{"query", "köln"}, {"max_snippets_per_card", 10}});
  matches.clear();
  for (const auto& snippet : cities.results[0].snippets) matches.push_back(snippet.match);
  EXPECT_THAT(matches, ElementsAre("Köln", "KÖLN"));
  EXPECT_EQ(grep(cards, {{"query", "Köln"}, {"case_sensitive", true}}).results[0].matchCount, 1);
  EXPECT_EQ(grep(cards, {{"query", "KÖLN"}, {"mode", "word"}}).results[0].matchCount, 2);
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
