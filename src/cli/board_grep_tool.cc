#include "cli/board_grep_tool.h"

#include <unicode/utf16.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "cli/grep_chunk_matcher.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/parallel_for.h"
#include "foundation/text.h"
#include "tools/cards/card_selection.h"
#include "tools/cards/workspace_card_search_chunks.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

constexpr int32_t kSnippetContext = 90;  // UTF-16 units on either side of a match
constexpr std::string_view kEllipsis = "\u2026";

GrepMode modeOf(const std::optional<std::string>& word) {
  const std::string mode = word ? lowercased(*word) : "contains";
  if (mode == "equals") return GrepMode::equals;
  if (mode == "word") return GrepMode::word;
  if (mode == "regex") return GrepMode::regex;
  return GrepMode::contains;
}

int64_t clampedOr(std::optional<int64_t> value, int64_t fallback, int64_t low, int64_t high) {
  return value ? std::clamp(*value, low, high) : fallback;
}

std::string singleLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    line.push_back(text[i] == '\n' || text[i] == '\r' ? ' ' : text[i]);
  }
  return line;
}

// The match with up to 90 units of the chunk on either side; a surrogate pair at a window edge
// is left out rather than split.
BoardGrepResultSnippet snippetFor(const std::string& label, const std::u16string& text,
                                  GrepMatchRange range) {
  const auto length = static_cast<int32_t>(text.size());
  int32_t start = std::max(0, range.start - kSnippetContext);
  int32_t end = std::min(length, range.end + kSnippetContext);
  if (start > 0 && start < range.start && U16_IS_TRAIL(text[start]) &&
      U16_IS_LEAD(text[start - 1])) {
    ++start;
  }
  if (end < length && end > range.end && U16_IS_TRAIL(text[end]) && U16_IS_LEAD(text[end - 1])) {
    --end;
  }
  std::string window = trimWhitespaceAndNewlines(
      singleLine(toUTF8(std::u16string_view(text).substr(start, end - start))));
  if (start > 0) window.insert(0, kEllipsis);
  if (end < length) window.append(kEllipsis);
  return {label, toUTF8(std::u16string_view(text).substr(range.start, range.end - range.start)),
          std::move(window)};
}

// One card's matches: every range counts, the first `maxSnippets` become snippets.
BoardGrepResultItem grepCard(const WorkspaceCard& card, const GrepChunkMatcher& matcher,
                             size_t maxSnippets) {
  BoardGrepResultItem item{
      .cardId = card.id.uppercaseString(),
      .type = std::string(rawValue(card.type)),
      .title = card.title,
  };
  for (const WorkspaceCardSearchChunk& chunk : searchChunks(card, {})) {
    if (chunk.text.empty()) continue;
    const std::vector<GrepMatchRange> ranges = matcher.find(chunk.text, maxSnippets);
    if (ranges.empty()) continue;
    item.matchCount += static_cast<int64_t>(ranges.size());
    const std::u16string text = toUTF16(chunk.text);  // snippet windows count UTF-16 units
    for (const GrepMatchRange& range : ranges) {
      if (item.snippets.size() >= maxSnippets) break;
      item.snippets.push_back(snippetFor(chunk.label, text, range));
    }
  }
  return item;
}

}  // namespace

BoardGrepRequest BoardGrepRequest::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("query"), object.optional<std::vector<std::string>>("card_ids"),
      object.optional<int64_t>("top_k"),     object.optional<int64_t>("max_snippets_per_card"),
      object.optional<std::string>("mode"),  object.optional<bool>("case_sensitive"),
  };
}

AnyCodableValue BoardGrepRequest::encode() const {
  return ObjectEncoder()
      .add("query", query)
      .add("card_ids", cardIds)
      .add("top_k", topK)
      .add("max_snippets_per_card", maxSnippetsPerCard)
      .add("mode", mode)
      .add("case_sensitive", caseSensitive)
      .build();
}

BoardGrepResultSnippet BoardGrepResultSnippet::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("label"), object.required<std::string>("match"),
          object.required<std::string>("text")};
}

AnyCodableValue BoardGrepResultSnippet::encode() const {
  return ObjectEncoder().add("label", label).add("match", match).add("text", text).build();
}

BoardGrepResultItem BoardGrepResultItem::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("card_id"),
      object.required<std::string>("type"),
      object.required<std::string>("title"),
      object.required<int64_t>("match_count"),
      object.required<std::vector<BoardGrepResultSnippet>>("snippets"),
  };
}

AnyCodableValue BoardGrepResultItem::encode() const {
  return ObjectEncoder()
      .add("card_id", cardId)
      .add("type", type)
      .add("title", title)
      .add("match_count", matchCount)
      .add("snippets", snippets)
      .build();
}

BoardGrepResponse BoardGrepResponse::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<int64_t>("total_cards"),
      object.required<std::vector<BoardGrepResultItem>>("results"),
      object.required<std::vector<std::string>>("not_found"),
  };
}

AnyCodableValue BoardGrepResponse::encode() const {
  return ObjectEncoder()
      .add("total_cards", totalCards)
      .add("results", results)
      .add("not_found", notFound)
      .build();
}

AgentToolSpec boardGrepToolSpec() {
  AnyCodableValue snippet = schema::object(
      {
          {"label", schema::string("The part of the card: Title, Summary, Row 3, ...")},
          {"match", schema::string("The matched text.")},
          {"text", schema::string("Up to 90 characters around the match, on one line.")},
      },
      {"label", "match", "text"});
  AnyCodableValue item = schema::object(
      {
          {"card_id", schema::string()},
          {"type", schema::string("link, image, chat, richText, html, browser, folder, table or "
                                  "video.")},
          {"title", schema::string()},
          {"match_count", schema::integer()},
          {"snippets", schema::array(snippet)},
      },
      {"card_id", "type", "title", "match_count", "snippets"});
  return AgentToolSpec{
      .name = "grep_cards",
      .summary = "Exact lexical or regex search across board cards.",
      .inputSchema = schema::object(
          {
              {"query", schema::string("Text, word or regular expression to find.")},
              {"card_ids", schema::array(schema::string(),
                                         "Cards to search; absent or empty searches the board.")},
              {"top_k", schema::integer("Cards to return (default 20, 1 to 200).")},
              {"max_snippets_per_card",
               schema::integer("Matches counted per card part and snippets per card (default 3, "
                               "1 to 10).")},
              {"mode",
               schema::stringEnum({"contains", "equals", "word", "regex"}, "Default contains.")},
              {"case_sensitive", schema::boolean("Default false.")},
          },
          {"query"}),
      .outputSchema = schema::object(
          {
              {"total_cards", schema::integer()},
              {"not_found", schema::array(schema::string())},
              {"results", schema::array(item)},
          },
          {"total_cards", "not_found", "results"}),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{{"query", "TODO"}, {"case_sensitive", true}},
              JSONObject{{"query", "solar"}, {"mode", "word"}, {"top_k", 5}},
              JSONObject{{"query", "20[0-9]{2}-[0-9]{2}-[0-9]{2}"}, {"mode", "regex"}},
          },
      .notes =
          "Use this for deterministic existence checks and exact-match lookups. Prefer "
          "search_cards for semantic/relevance search and list_card_metadata for "
          "counts/ownership/lightweight fields.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

BoardGrepResponse grepCards(const std::vector<WorkspaceCard>& cards,
                            const BoardGrepRequest& request) {
  if (trimWhitespaceAndNewlines(request.query).empty()) {
    throw std::invalid_argument("grep_cards query must be non-empty.");
  }
  const GrepMode mode = modeOf(request.mode);
  const auto topK = static_cast<size_t>(clampedOr(request.topK, 20, 1, 200));
  const auto maxSnippets = static_cast<size_t>(clampedOr(request.maxSnippetsPerCard, 3, 1, 10));
  const GrepChunkMatcher matcher(mode, request.query, request.caseSensitive.value_or(false));

  CardSelection selection = filterCards(cards, request.cardIds);
  BoardGrepResponse response{
      .totalCards = static_cast<int64_t>(selection.cards.size()),
      .notFound = std::move(selection.notFound),
  };
  // Cards are searched on several threads; results keep the selection's order before sorting.
  std::vector<BoardGrepResultItem> items(selection.cards.size());
  parallelFor(
      items.size(),
      [&](size_t i) { items[i] = grepCard(*selection.cards[i], matcher, maxSnippets); }, 64);
  for (BoardGrepResultItem& item : items) {
    if (item.matchCount > 0) response.results.push_back(std::move(item));
  }
  std::stable_sort(response.results.begin(), response.results.end(),
                   [](const BoardGrepResultItem& a, const BoardGrepResultItem& b) {
                     if (a.matchCount != b.matchCount) return a.matchCount > b.matchCount;
                     return compareLocalizedCaseInsensitive(a.title, b.title) < 0;
                   });
  if (response.results.size() > topK) response.results.resize(topK);
  return response;
}

std::shared_ptr<AnyAgentTool> makeBoardGrepTool(SharedCards cards) {
  return std::make_shared<AnyAgentTool>(
      boardGrepToolSpec(), [cards](const AnyCodableValue& input, const AgentToolContext&) {
        return encodeValue(grepCards(*cards, decodeValue<BoardGrepRequest>(input)));
      });
}

}  // namespace zorvik
