// search_in_card: relevance search inside chosen cards, answering with each card's labelled
// snippets and their scores.
//
// The tool owns its copy of the cards and never changes them, so `run` may be called from several
// threads at once. An empty query throws std::invalid_argument; undecodable input throws
// DecodingError. Ids that match no card are answered in `not_found`, not thrown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "tools/cards/shared_cards.h"
#include "tools/framework/agent_tool.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

class ValueDecoder;

class BoardSearchInCardTool final : public AgentTool {
 public:
  // JSON keys: query (required), scope, card_ids, max_cards, max_snippets_per_card. Absent or
  // empty card_ids search every card.
  struct Request {
    std::string query;
    std::optional<std::string> scope;
    std::optional<std::vector<std::string>> cardIDs;
    std::optional<int64_t> maxCards;
    std::optional<int64_t> maxSnippetsPerCard;

    static Request decode(const ValueDecoder& decoder);
    AnyCodableValue encode() const;
    bool operator==(const Request&) const = default;
  };

  // JSON keys: label, text, score.
  struct SearchSnippet {
    std::string label;
    std::string text;
    float score = 0;

    static SearchSnippet decode(const ValueDecoder& decoder);
    AnyCodableValue encode() const;
    bool operator==(const SearchSnippet&) const = default;
  };

  // JSON keys: card_id, type, title, best_score, snippets.
  struct SearchItem {
    std::string cardID;
    std::string type;  // "item" for link cards, else the type's raw value
    std::string title;
    float bestScore = 0;
    std::vector<SearchSnippet> snippets;

    static SearchItem decode(const ValueDecoder& decoder);
    AnyCodableValue encode() const;
    bool operator==(const SearchItem&) const = default;
  };

  // JSON keys: scope_requested, scope_used, scope_label, total_cards (the board's), results,
  // not_found.
  struct Response {
    std::string scopeRequested;
    std::string scopeUsed;
    std::string scopeLabel;
    int64_t totalCards = 0;
    std::vector<SearchItem> results;
    std::vector<std::string> notFound;

    static Response decode(const ValueDecoder& decoder);
    AnyCodableValue encode() const;
    bool operator==(const Response&) const = default;
  };

  explicit BoardSearchInCardTool(SharedCards cards);

  const AgentToolSpec& spec() const override { return spec_; }
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

  // Per selected card, the chunks scoring above 0 (best first, at most max_snippets_per_card,
  // default 3); cards without one are dropped, the rest sorted by best score (ties keep the
  // selection order) and cut to max_cards (default all).
  Response search(const Request& request) const;

 private:
  SharedCards cards_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
