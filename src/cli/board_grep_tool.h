// grep_cards: exact lexical or regular-expression search over the search chunks of board cards.
//
// Modes: "contains" (substring, the default and the meaning of any unknown mode word), "equals"
// (the whole trimmed chunk), "word" (the literal query between word boundaries) and "regex" (an
// ICU regular expression). Matching ignores case unless case_sensitive is true. Offsets are
// UTF-16 units of the chunk text; snippets show up to 90 units on either side of a match, marked
// with "…" where the chunk goes on.
//
// Failures throw std::invalid_argument with the message as what(): an empty query ("grep_cards
// query must be non-empty.") or, in regex mode, an invalid pattern ("grep_cards regex is invalid: "
// + the ICU error name). Undecodable input throws DecodingError. The tool owns its copy of the
// cards; calls may run concurrently.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "tools/cards/shared_cards.h"
#include "tools/framework/agent_tool.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

class ValueDecoder;

// JSON keys: query (required), card_ids, top_k, max_snippets_per_card, mode, case_sensitive.
struct BoardGrepRequest {
  std::string query;
  std::optional<std::vector<std::string>> cardIds;
  std::optional<int64_t> topK;
  std::optional<int64_t> maxSnippetsPerCard;
  std::optional<std::string> mode;
  std::optional<bool> caseSensitive;

  static BoardGrepRequest decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const BoardGrepRequest&) const = default;
};

// JSON keys: label, match, text.
struct BoardGrepResultSnippet {
  std::string label;  // the chunk's label
  std::string match;  // the matched text
  std::string text;   // the window around the match, on one line

  static BoardGrepResultSnippet decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const BoardGrepResultSnippet&) const = default;
};

// JSON keys: card_id, type, title, match_count, snippets.
struct BoardGrepResultItem {
  std::string cardId;  // upper-case UUID text
  std::string type;    // the card type's raw value ("link", "image", ...)
  std::string title;
  int64_t matchCount = 0;
  std::vector<BoardGrepResultSnippet> snippets;

  static BoardGrepResultItem decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const BoardGrepResultItem&) const = default;
};

// JSON keys: total_cards (the selected cards), results, not_found.
struct BoardGrepResponse {
  int64_t totalCards = 0;
  std::vector<BoardGrepResultItem> results;
  std::vector<std::string> notFound;

  static BoardGrepResponse decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const BoardGrepResponse&) const = default;
};

AgentToolSpec boardGrepToolSpec();

// One grep over `cards`. Per chunk at most max_snippets_per_card (default 3, 1...10) matches are
// counted; a card keeps that many snippets in all. Hits are sorted by match count, descending,
// then by title (localized, case-insensitive), and cut to top_k (default 20, 1...200).
BoardGrepResponse grepCards(const std::vector<WorkspaceCard>& cards,
                            const BoardGrepRequest& request);

// The grep_cards tool over a board's cards.
std::shared_ptr<AnyAgentTool> makeBoardGrepTool(SharedCards cards);

}  // namespace zorvik
