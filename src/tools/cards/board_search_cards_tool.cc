#include "tools/cards/board_search_cards_tool.h"

#include <algorithm>
#include <stdexcept>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/cards/card_search_ranking.h"
#include "tools/cards/card_selection.h"
#include "tools/cards/workspace_card_toolkit.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

// (value or fallback) + perLevel * level, within low...high. Computed in double so that extreme
// requests saturate instead of overflowing.
int64_t grownLimit(std::optional<int64_t> value, int64_t fallback, int64_t perLevel, int64_t level,
                   int64_t low, int64_t high) {
  const double grown = static_cast<double>(value.value_or(fallback)) +
                       static_cast<double>(perLevel) * static_cast<double>(level);
  return static_cast<int64_t>(
      std::clamp(grown, static_cast<double>(low), static_cast<double>(high)));
}

AgentToolSpec searchCardsSpec() {
  AnyCodableValue item = schema::object(
      {
          {"card_id", schema::string()},
          {"type", schema::string("item, image, chat, richText, html, browser, folder, table or "
                                  "video.")},
          {"title", schema::string()},
          {"score", schema::number("Share of query tokens found in the best snippet, 0 to 1.")},
          {"summary", schema::string()},
          {"snippets", schema::array(schema::string(), "Best matching chunks as \"label: text\".")},
          {"full_context", schema::string("Whole card as text, when full context is on.")},
      },
      {"card_id", "type", "title", "score", "snippets"});
  return AgentToolSpec{
      .name = "search_cards",
      .summary = "Search the current board and return relevant card snippets.",
      .inputSchema = schema::object(
          {
              {"query", schema::string("Words to look for; tokens shorter than 2 characters are "
                                       "ignored.")},
              {"scope", schema::string("Requested scope; the board is always searched.")},
              {"top_k", schema::integer("Cards to return (default 6, at most 25).")},
              {"max_snippets_per_card", schema::integer("Snippets per card (default 3, 1 to 6).")},
              {"max_chars_per_card",
               schema::integer("Character limit per text of a card (default 1600, 400 to 4000).")},
              {"expansion_level",
               schema::integer("0 by default; each level adds 4 cards, 1 snippet and 800 "
                               "characters, and a level above 1 includes the full context.")},
              {"include_full_context",
               schema::boolean("Add each card's whole text as full_context.")},
          },
          {"query"}),
      .outputSchema = boardScopedOutputSchema({{"results", schema::array(item)}}, {"results"}),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{{"query", "solar panel prices"}},
              JSONObject{{"query", "grid capacity constraints"},
                         {"top_k", 10},
                         {"include_full_context", true}},
              JSONObject{{"query", "installer interview"}, {"expansion_level", 1}},
          },
      .notes =
          "Use this for semantic/relevance search when you know the concept but not the exact "
          "wording. Prefer grep_cards for exact literals/IDs/regex and list_card_metadata for "
          "counts/ownership/lightweight fields.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

WorkspaceSearchItem WorkspaceSearchItem::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("card_id"),
      object.required<std::string>("type"),
      object.required<std::string>("title"),
      object.required<double>("score"),
      object.optional<std::string>("summary"),
      object.required<std::vector<std::string>>("snippets"),
      object.optional<std::string>("full_context"),
  };
}

AnyCodableValue WorkspaceSearchItem::encode() const {
  return ObjectEncoder()
      .add("card_id", cardID)
      .add("type", type)
      .add("title", title)
      .add("score", score)
      .add("summary", summary)
      .add("snippets", snippets)
      .add("full_context", fullContext)
      .build();
}

BoardSearchCardsTool::Request BoardSearchCardsTool::Request::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("query"),
      object.optional<std::string>("scope"),
      object.optional<int64_t>("top_k"),
      object.optional<int64_t>("max_snippets_per_card"),
      object.optional<int64_t>("max_chars_per_card"),
      object.optional<int64_t>("expansion_level"),
      object.optional<bool>("include_full_context"),
  };
}

AnyCodableValue BoardSearchCardsTool::Request::encode() const {
  return ObjectEncoder()
      .add("query", query)
      .add("scope", scope)
      .add("top_k", topK)
      .add("max_snippets_per_card", maxSnippetsPerCard)
      .add("max_chars_per_card", maxCharsPerCard)
      .add("expansion_level", expansionLevel)
      .add("include_full_context", includeFullContext)
      .build();
}

BoardSearchCardsTool::Response BoardSearchCardsTool::Response::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      object.required<std::string>("scope_requested"),
      object.required<std::string>("scope_used"),
      object.required<std::string>("scope_label"),
      object.required<int64_t>("total_cards"),
      object.required<std::vector<WorkspaceSearchItem>>("results"),
  };
}

AnyCodableValue BoardSearchCardsTool::Response::encode() const {
  return ObjectEncoder()
      .add("scope_requested", scopeRequested)
      .add("scope_used", scopeUsed)
      .add("scope_label", scopeLabel)
      .add("total_cards", totalCards)
      .add("results", results)
      .build();
}

BoardSearchCardsTool::Limits BoardSearchCardsTool::Limits::of(const Request& request) {
  const int64_t level = std::max<int64_t>(request.expansionLevel.value_or(0), 0);
  return {
      .topK = grownLimit(request.topK, 6, 4, level, 1, 25),
      .snippetsPerCard = grownLimit(request.maxSnippetsPerCard, 3, 1, level, 1, 6),
      .charactersPerCard = grownLimit(request.maxCharsPerCard, 1600, 800, level, 400, 4000),
      .includeFullContext = request.includeFullContext.value_or(false) || level > 1,
  };
}

BoardSearchCardsTool::BoardSearchCardsTool(SharedCards cards,
                                           std::optional<std::filesystem::path> projectURL)
    : cards_(std::move(cards)),
      context_(WorkspaceCardContext::build(*cards_, std::move(projectURL))),
      spec_(searchCardsSpec()) {}

AnyCodableValue BoardSearchCardsTool::run(const AnyCodableValue& input,
                                          const AgentToolContext&) const {
  return encodeValue(search(decodeValue<Request>(input)));
}

BoardSearchCardsTool::Response BoardSearchCardsTool::search(const Request& request) const {
  if (trimWhitespaceAndNewlines(request.query).empty()) {
    throw std::invalid_argument("search_cards query must be non-empty.");
  }
  const Limits limits = Limits::of(request);

  std::vector<const WorkspaceCard*> board;
  board.reserve(cards_->size());
  for (const WorkspaceCard& card : *cards_) board.push_back(&card);
  const std::vector<RankedCard> ranked =
      rank(board, tokenize(request.query), {}, static_cast<size_t>(limits.topK));

  Response response{
      .scopeRequested = request.scope.value_or("board"),
      .scopeUsed = "board",
      .scopeLabel = "board",
      .totalCards = static_cast<int64_t>(cards_->size()),
  };
  for (const RankedCard& entry : ranked) {
    const WorkspaceCard& card = *entry.card;
    WorkspaceSearchItem item{
        .cardID = card.id.uppercaseString(),
        .type = std::string(toolTypeWord(card.type)),
        .title = card.title,
        .score = static_cast<double>(entry.score),
        .summary = WorkspaceCardToolkit::truncate(WorkspaceCardToolkit::summaryText(card),
                                                  limits.charactersPerCard),
    };
    const size_t snippetCount =
        std::min(entry.snippets.size(), static_cast<size_t>(limits.snippetsPerCard));
    for (size_t index = 0; index < snippetCount; ++index) {
      const WorkspaceCardSearchChunk& chunk = entry.snippets[index];
      item.snippets.push_back(WorkspaceCardToolkit::truncate(chunk.label + ": " + chunk.text,
                                                             limits.charactersPerCard));
    }
    if (limits.includeFullContext) {
      item.fullContext = WorkspaceCardToolkit::truncate(
          WorkspaceCardToolkit::contextText(card, context_), limits.charactersPerCard);
    }
    response.results.push_back(std::move(item));
  }
  return response;
}

}  // namespace zorvik
