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
BoardGrepResultSnippet snippetFor(std::string label, const std::u16string& text,
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
  return {std::move(label),
          toUTF8(std::u16string_view(text).substr(range.start, range.end - range.start)),
          std::move(window)};
}

// The card's match count: every chunk adds the ranges found in it, at most `maxPerChunk`.
int64_t countMatches(const WorkspaceCard& card, const GrepChunkMatcher& matcher,
                     size_t maxPerChunk) {
  int64_t count = 0;
  forEachSearchChunk(card, {}, [&](std::string_view, std::string_view text) {
    if (!text.empty()) count += static_cast<int64_t>(matcher.count(text, maxPerChunk));
  });
  return count;
}

// The answer item of a hit: the first `maxSnippets` ranges, in chunk order, become snippets.
BoardGrepResultItem hitItem(const WorkspaceCard& card, int64_t matchCount,
                            const GrepChunkMatcher& matcher, size_t maxSnippets) {
  BoardGrepResultItem item{
      .cardId = card.id.uppercaseString(),
      .type = std::string(rawValue(card.type)),
      .title = card.title,
      .matchCount = matchCount,
  };
  forEachSearchChunk(card, {}, [&](std::string_view label, std::string_view text) {
    if (text.empty() || item.snippets.size() >= maxSnippets) return;
    const std::vector<GrepMatchRange> ranges = matcher.find(text, maxSnippets);
    if (ranges.empty()) return;
    const std::u16string text16 = toUTF16(text);  // snippet windows count UTF-16 units
    for (const GrepMatchRange& range : ranges) {
      if (item.snippets.size() >= maxSnippets) break;
      item.snippets.push_back(snippetFor(std::string(label), text16, range));
    }
  });
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
  // Every card is counted, on several threads; only the hits that are kept get snippets.
  std::vector<int64_t> counts(selection.cards.size());
  parallelFor(
      counts.size(),
      [&](size_t i) { counts[i] = countMatches(*selection.cards[i], matcher, maxSnippets); }, 64);
  std::vector<size_t> hits;
  for (size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] > 0) hits.push_back(i);
  }
  // Selection order breaks the ties that titles leave, as a stable sort would.
  const auto ranksBefore = [&](size_t a, size_t b) {
    if (counts[a] != counts[b]) return counts[a] > counts[b];
    const int order =
        compareLocalizedCaseInsensitive(selection.cards[a]->title, selection.cards[b]->title);
    return order != 0 ? order < 0 : a < b;
  };
  const size_t kept = std::min(hits.size(), topK);
  std::partial_sort(hits.begin(), hits.begin() + static_cast<std::ptrdiff_t>(kept), hits.end(),
                    ranksBefore);
  for (size_t rank = 0; rank < kept; ++rank) {
    const size_t i = hits[rank];
    response.results.push_back(hitItem(*selection.cards[i], counts[i], matcher, maxSnippets));
  }
  return response;
}

std::shared_ptr<AnyAgentTool> makeBoardGrepTool(SharedCards cards) {
  return std::make_shared<AnyAgentTool>(
      boardGrepToolSpec(), [cards](const AnyCodableValue& input, const AgentToolContext&) {
        return encodeValue(grepCards(*cards, decodeValue<BoardGrepRequest>(input)));
      });
}

}  // namespace zorvik
