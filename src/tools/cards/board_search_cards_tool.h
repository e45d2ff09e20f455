// search_cards: relevance search over every card of a loaded board, by token overlap with the
// cards' search chunks.
//
// The tool owns its copy of the cards and never changes them, so `run` may be called from several
// threads at once. An empty query throws std::invalid_argument; undecodable input throws
// DecodingError. A query without a token of 2 or more characters answers with no results.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"
#include "tools/cards/shared_cards.h"
#include "tools/cards/workspace_card_context.h"
#include "tools/framework/agent_tool.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

class ValueDecoder;

// One found card. JSON keys: card_id, type, title, score, summary, snippets, full_context.
struct WorkspaceSearchItem {
  std::string cardID;
  std::string type;  // "item" for link cards, else the type's raw value
  std::string title;
  double score = 0;  // the card's 32-bit score, widened
  std::optional<std::string> summary;
  std::vector<std::string> snippets;  // "label: text"
  std::optional<std::string> fullContext;

  static WorkspaceSearchItem decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const WorkspaceSearchItem&) const = default;
};

class BoardSearchCardsTool final : public AgentTool {
 public:
  // JSON keys: query (required), scope, top_k, max_snippets_per_card, max_chars_per_card,
  // expansion_level, include_full_context.
  struct Request {
    std::string query;
    std::optional<std::string> scope;
    std::optional<int64_t> topK;
    std::optional<int64_t> maxSnippetsPerCard;
    std::optional<int64_t> maxCharsPerCard;
    std::optional<int64_t> expansionLevel;
    std::optional<bool> includeFullContext;

    static Request decode(const ValueDecoder& decoder);
    AnyCodableValue encode() const;
    bool operator==(const Request&) const = default;
  };

  // JSON keys: scope_requested, scope_used, scope_label, total_cards, results.
  struct Response {
    std::string scopeRequested;
    std::string scopeUsed;
    std::string scopeLabel;
    int64_t totalCards = 0;
    std::vector<WorkspaceSearchItem> results;

    static Response decode(const ValueDecoder& decoder);
    AnyCodableValue encode() const;
    bool operator==(const Response&) const = default;
  };

  // The effective limits of one call. Every expansion level adds 4 cards, 1 snippet and 800
  // characters, and a level above 1 turns the full context on.
  struct Limits {
    int64_t topK = 6;                  // 1...25
    int64_t snippetsPerCard = 3;       // 1...6
    int64_t charactersPerCard = 1600;  // 400...4000
    bool includeFullContext = false;

    static Limits of(const Request& request);
    bool operator==(const Limits&) const = default;
  };

  // `projectURL` lets the full context name board resource files.
  explicit BoardSearchCardsTool(SharedCards cards,
                                std::optional<std::filesystem::path> projectURL = std::nullopt);

  const AgentToolSpec& spec() const override { return spec_; }
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

  Response search(const Request& request) const;

 private:
  SharedCards cards_;
  WorkspaceCardContext context_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
