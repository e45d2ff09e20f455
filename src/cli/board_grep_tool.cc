#include "cli/board_grep_tool.h"

#include <unicode/regex.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string_view>

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

enum class GrepMode { contains, equals, word, regex };

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

// A half-open range of UTF-16 units.
struct MatchRange {
  int32_t start = 0;
  int32_t end = 0;
};

// Case-folded text with, for every folded unit, the code point of the source it came from. Full
// case folding is context-free, so folding code point by code point equals folding the whole.
struct FoldedText {
  std::u16string text;
  std::vector<int32_t> sourceStart;
  std::vector<int32_t> sourceEnd;
};

FoldedText foldCase(std::u16string_view source) {
  FoldedText folded;
  folded.text.reserve(source.size());
  folded.sourceStart.reserve(source.size());
  folded.sourceEnd.reserve(source.size());
  const auto length = static_cast<int32_t>(source.size());
  int32_t offset = 0;
  while (offset < length) {
    const int32_t start = offset;
    UChar32 codePoint;
    U16_NEXT(source.data(), offset, length, codePoint);
    UChar mapped[8];
    int32_t mappedLength = 0;
    if (codePoint < 0x80) {
      const bool upper = codePoint >= 'A' && codePoint <= 'Z';
      mapped[mappedLength++] = static_cast<UChar>(upper ? codePoint + ('a' - 'A') : codePoint);
    } else {
      UErrorCode status = U_ZERO_ERROR;
      mappedLength = u_strFoldCase(mapped, 8, source.data() + start, offset - start,
                                   U_FOLD_CASE_DEFAULT, &status);
      if (U_FAILURE(status) || mappedLength > 8) {
        mappedLength = offset - start;
        std::copy(source.data() + start, source.data() + offset, mapped);
      }
    }
    for (int32_t i = 0; i < mappedLength; ++i) {
      folded.text.push_back(mapped[i]);
      folded.sourceStart.push_back(start);
      folded.sourceEnd.push_back(offset);
    }
  }
  return folded;
}

// Backslash before every ASCII character that is not a letter, digit or white space: ICU reads
// such a pair as the literal character.
std::u16string escapedPattern(std::u16string_view literal) {
  std::u16string escaped;
  escaped.reserve(literal.size() * 2);
  for (char16_t unit : literal) {
    if (unit < 0x80 && std::ispunct(static_cast<unsigned char>(unit))) escaped.push_back(u'\\');
    escaped.push_back(unit);
  }
  return escaped;
}

// Finds the ranges of one query in chunk texts. Built once per call; find() may run on several
// threads at once (each pattern search makes its own matcher).
class ChunkMatcher {
 public:
  ChunkMatcher(GrepMode mode, const std::string& query, bool caseSensitive)
      : mode_(mode), caseSensitive_(caseSensitive), query_(toUTF16(query)) {
    if (mode_ == GrepMode::contains && !caseSensitive_) query_ = foldCase(query_).text;
    if (mode_ == GrepMode::equals) {
      const std::string trimmed = trimWhitespaceAndNewlines(query);
      equalsQuery_ = caseSensitive_ ? trimmed : lowercased(trimmed);
    }
    if (mode_ == GrepMode::word || mode_ == GrepMode::regex) compile();
  }

  // At most `limit` ranges, in text order.
  std::vector<MatchRange> find(const std::string& text, const std::u16string& text16,
                               size_t limit) const {
    switch (mode_) {
      case GrepMode::contains:
        return findContained(text16, limit);
      case GrepMode::equals:
        return findEqual(text, text16);
      case GrepMode::word:
      case GrepMode::regex:
        return findPattern(text16, limit);
    }
    return {};
  }

 private:
  void compile() {
    std::u16string source = query_;
    if (mode_ == GrepMode::word) source = u"\\b" + escapedPattern(query_) + u"\\b";
    UErrorCode status = U_ZERO_ERROR;
    UParseError parseError;
    pattern_.reset(icu::RegexPattern::compile(
        icu::UnicodeString(source.data(), static_cast<int32_t>(source.size())),
        caseSensitive_ ? 0 : UREGEX_CASE_INSENSITIVE, parseError, status));
    if (U_FAILURE(status) || !pattern_) {
      throw std::invalid_argument(std::string("grep_cards regex is invalid: ") +
                                  u_errorName(status));
    }
  }

  std::vector<MatchRange> findContained(const std::u16string& text, size_t limit) const {
    std::vector<MatchRange> ranges;
    if (caseSensitive_) {
      size_t from = 0;
      while (ranges.size() < limit) {
        const size_t at = text.find(query_, from);
        if (at == std::u16string::npos) break;
        ranges.push_back({static_cast<int32_t>(at), static_cast<int32_t>(at + query_.size())});
        from = at + std::max<size_t>(query_.size(), 1);
      }
      return ranges;
    }
    const FoldedText folded = foldCase(text);
    size_t from = 0;
    while (ranges.size() < limit) {
      const size_t at = folded.text.find(query_, from);
      if (at == std::u16string::npos) break;
      const size_t last = at + std::max<size_t>(query_.size(), 1) - 1;
      ranges.push_back({folded.sourceStart[at], folded.sourceEnd[last]});
      from = last + 1;
    }
    return ranges;
  }

  std::vector<MatchRange> findEqual(const std::string& text, const std::u16string& text16) const {
    const std::string trimmed = trimWhitespaceAndNewlines(text);
    if ((caseSensitive_ ? trimmed : lowercased(trimmed)) != equalsQuery_) return {};
    return {{0, static_cast<int32_t>(text16.size())}};
  }

  std::vector<MatchRange> findPattern(const std::u16string& text, size_t limit) const {
    std::vector<MatchRange> ranges;
    // The matcher reads the chunk in place; `input` outlives it.
    const icu::UnicodeString input(false, text.data(), static_cast<int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> matcher(pattern_->matcher(input, status));
    if (U_FAILURE(status) || !matcher) return ranges;
    while (ranges.size() < limit && matcher->find(status) && U_SUCCESS(status)) {
      const int32_t start = matcher->start(status);
      const int32_t end = matcher->end(status);
      if (U_FAILURE(status)) break;
      ranges.push_back({start, end});
    }
    return ranges;
  }

  GrepMode mode_;
  bool caseSensitive_;
  std::u16string query_;
  std::string equalsQuery_;
  std::unique_ptr<icu::RegexPattern> pattern_;
};

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
                                  MatchRange range) {
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
BoardGrepResultItem grepCard(const WorkspaceCard& card, const ChunkMatcher& matcher,
                             size_t maxSnippets) {
  BoardGrepResultItem item{
      .cardId = card.id.uppercaseString(),
      .type = std::string(rawValue(card.type)),
      .title = card.title,
  };
  for (const WorkspaceCardSearchChunk& chunk : searchChunks(card, {})) {
    if (chunk.text.empty()) continue;
    const std::u16string text = toUTF16(chunk.text);
    const std::vector<MatchRange> ranges = matcher.find(chunk.text, text, maxSnippets);
    item.matchCount += static_cast<int64_t>(ranges.size());
    for (const MatchRange& range : ranges) {
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
  const ChunkMatcher matcher(mode, request.query, request.caseSensitive.value_or(false));

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
