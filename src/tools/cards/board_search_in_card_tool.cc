#include "tools/cards/board_search_in_card_tool.h"

#include <algorithm>
#include <stdexcept>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/cards/card_search_ranking.h"
#include "tools/cards/card_selection.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

AgentToolSpec searchInCardSpec() {
  AnyCodableValue snippet = schema::object(
      {
          {"label", schema::string("Where in the card: Title, Summary, Row 3, Paragraph 2, ...")},
          {"text", schema::string()},
          {"score", schema::number("Share of query tokens found, 0 to 1.")},
      },
      {"label", "text", "score"});
  AnyCodableValue item = schema::object(
      {
          {"card_id", schema::string()},
          {"type", schema::string("item, image, chat, richText, html, browser, folder, table or "
                                  "video.")},
          {"title", schema::string()},
          {"best_score", schema::number()},
          {"snippets", schema::array(snippet)},
      },
      {"card_id", "type", "title", "best_score", "snippets"});
  return AgentToolSpec{
      .name = "search_in_card",
      .summary = "Search for text within cards.",
      .inputSchema = schema::object(
          {
              {"query", schema::string("Words to look for; tokens shorter than 2 characters are "
                                       "ignored.")},
              {"scope", schema::string("Requested scope; cards come from the board.")},
              {"card_ids", schema::array(schema::string(),
                                         "Cards to search; absent or empty searches every card.")},
              {"max_cards", schema::integer("Cards to return (default all, at least 1).")},
              {"max_snippets_per_card",
               schema::integer("Snippets per card (default 3, at least 1).")},
          },
          {"query"}),
      .outputSchema = boardScopedOutputSchema(
          {{"results", schema::array(item)}, {"not_found", schema::array(schema::string())}},
          {"results", "not_found"}),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{
                  {"query", "battery storage"},
                  {"card_ids", AnyCodableValue::Array{"7D1E2F3A-4B5C-4D6E-8F7A-9B0C1D2E3F4A"}}},
              JSONObject{
                  {"query", "installation cost"}, {"max_cards", 3}, {"max_snippets_per_card", 5}},
          },
      .notes = "Returns labeled snippets with scores.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

BoardSearchInCardTool::Request BoardSearchInCardTool::Request::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("query"),
      object.optional<std::string>("scope"),
      object.optional<std::vector<std::string>>("card_ids"),
      object.optional<int64_t>("max_cards"),
      object.optional<int64_t>("max_snippets_per_card"),
  };
}

AnyCodableValue BoardSearchInCardTool::Request::encode() const {
  return ObjectEncoder()
      .add("query", query)
      .add("scope", scope)
      .add("card_ids", cardIDs)
      .add("max_cards", maxCards)
      .add("max_snippets_per_card", maxSnippetsPerCard)
      .build();
}

BoardSearchInCardTool::SearchSnippet BoardSearchInCardTool::SearchSnippet::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("label"), object.required<std::string>("text"),
          static_cast<float>(object.required<double>("score"))};
}

AnyCodableValue BoardSearchInCardTool::SearchSnippet::encode() const {
  return ObjectEncoder().add("label", label).add("text", text).add("score", score).build();
}

BoardSearchInCardTool::SearchItem BoardSearchInCardTool::SearchItem::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("card_id"),
      object.required<std::string>("type"),
      object.required<std::string>("title"),
      static_cast<float>(object.required<double>("best_score")),
      object.required<std::vector<SearchSnippet>>("snippets"),
  };
}

AnyCodableValue BoardSearchInCardTool::SearchItem::encode() const {
  return ObjectEncoder()
      .add("card_id", cardID)
      .add("type", type)
      .add("title", title)
      .add("best_score", bestScore)
      .add("snippets", snippets)
      .build();
}

BoardSearchInCardTool::Response BoardSearchInCardTool::Response::decode(
    const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("scope_requested"),
      object.required<std::string>("scope_used"),
      object.required<std::string>("scope_label"),
      object.required<int64_t>("total_cards"),
      object.required<std::vector<SearchItem>>("results"),
      object.required<std::vector<std::string>>("not_found"),
  };
}

AnyCodableValue BoardSearchInCardTool::Response::encode() const {
  return ObjectEncoder()
      .add("scope_requested", scopeRequested)
      .add("scope_used", scopeUsed)
      .add("scope_label", scopeLabel)
      .add("total_cards", totalCards)
      .add("results", results)
      .add("not_found", notFound)
      .build();
}

BoardSearchInCardTool::BoardSearchInCardTool(SharedCards cards)
    : cards_(std::move(cards)), spec_(searchInCardSpec()) {}

AnyCodableValue BoardSearchInCardTool::run(const AnyCodableValue& input,
                                           const AgentToolContext&) const {
  return encodeValue(search(decodeValue<Request>(input)));
}

BoardSearchInCardTool::Response BoardSearchInCardTool::search(const Request& request) const {
  if (trimWhitespaceAndNewlines(request.query).empty()) {
    throw std::invalid_argument("search_in_card query must be non-empty.");
  }
  CardSelection selection = filterCards(*cards_, request.cardIDs);
  const auto maxSnippets =
      static_cast<size_t>(std::max<int64_t>(request.maxSnippetsPerCard.value_or(3), 1));
  const std::vector<std::string> tokens = tokenize(request.query);

  Response response{
      .scopeRequested = request.scope.value_or("board"),
      .scopeUsed = "board",
      .scopeLabel = "board",
      .totalCards = static_cast<int64_t>(cards_->size()),
      .notFound = std::move(selection.notFound),
  };
  for (const WorkspaceCard* card : selection.cards) {
    SearchItem item{
        .cardID = card->id.uppercaseString(),
        .type = std::string(toolTypeWord(card->type)),
        .title = card->title,
    };
    for (ScoredChunk& scored : scoreChunks(searchChunks(*card, {}), tokens)) {
      if (!(scored.score > 0) || item.snippets.size() >= maxSnippets) break;
      item.snippets.push_back(
          {std::move(scored.chunk.label), std::move(scored.chunk.text), scored.score});
    }
    if (item.snippets.empty()) continue;
    item.bestScore = item.snippets.front().score;
    response.results.push_back(std::move(item));
  }
  std::stable_sort(
      response.results.begin(), response.results.end(),
      [](const SearchItem& a, const SearchItem& b) { return a.bestScore > b.bestScore; });
  if (request.maxCards) {
    const auto maxCards = static_cast<size_t>(std::max<int64_t>(*request.maxCards, 1));
    if (response.results.size() > maxCards) response.results.resize(maxCards);
  }
  return response;
}

}  // namespace zorvik
