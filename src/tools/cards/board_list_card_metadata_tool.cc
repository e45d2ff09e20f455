#include "tools/cards/board_list_card_metadata_tool.h"

#include <algorithm>

#include "foundation/domain_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/cards/card_selection.h"
#include "tools/cards/workspace_card_toolkit.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

struct ListCardMetadataRequest {
  std::optional<std::string> scope;
  std::optional<std::vector<std::string>> cardIDs;
  std::optional<int64_t> maxCards;

  static ListCardMetadataRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.optional<std::string>("scope"),
            object.optional<std::vector<std::string>>("card_ids"),
            object.optional<int64_t>("max_cards")};
  }
};

AnyCodableValue outputSchema() {
  AnyCodableValue health = schema::object(
      {
          {"status", schema::stringEnum({"ok", "degraded", "error", "empty"})},
          {"load_error_count", schema::integer()},
          {"load_diagnostics", schema::array(schema::typed("object"))},
      },
      {"status", "load_error_count", "load_diagnostics"});
  AnyCodableValue nullableString = JSONObject{{"type", AnyCodableValue::Array{"string", "null"}}};
  AnyCodableValue result = schema::object(
      {
          {"owner", schema::stringEnum({"user", "runtime"})},
          {"runtime_managed", schema::boolean()},
          {"edit_policy", schema::stringEnum({"file_editable", "tool_only", "read_only"})},
          {"card_id", schema::string()},
          {"deep_link_url", nullableString},
          {"type", schema::stringEnum({"item", "image", "chat", "richText", "html", "browser",
                                       "folder", "table", "video"})},
          {"payload_type", schema::stringEnum({"link", "image", "chat", "richText", "html",
                                               "browser", "folder", "table", "video"})},
          {"title", schema::string()},
          {"summary", nullableString},
          {"parent_id", nullableString},
          {"is_loading", schema::boolean()},
          {"metadata", schema::typed("object", "Type-specific counts and light fields.")},
      },
      {"owner", "runtime_managed", "edit_policy", "card_id", "type", "payload_type", "title",
       "is_loading", "metadata"});
  return boardScopedOutputSchema({{"board_health", health},
                                  {"results", schema::array(result)},
                                  {"not_found", schema::array(schema::string())}},
                                 {"board_health", "results", "not_found"});
}

AgentToolSpec listCardMetadataSpec() {
  return AgentToolSpec{
      .name = "list_card_metadata",
      .summary = "List metadata for cards in the current scope or by card_id.",
      .inputSchema = schema::object({
          {"scope", schema::string("\"board\" (default) or \"selection\"; on the project "
                                   "snapshot, \"selection\" needs explicit card_ids.")},
          {"card_ids", schema::array(schema::string(), "Card UUIDs; omit for all cards.")},
          {"max_cards", schema::integer("Return at most this many cards (minimum 1).")},
      }),
      .outputSchema = outputSchema(),
      .examples =
          std::vector<AnyCodableValue>{
              JSONObject{},
              JSONObject{
                  {"card_ids", AnyCodableValue::Array{"3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"}}},
              JSONObject{{"scope", "board"}, {"max_cards", 50}},
          },
      .notes =
          "Use this for counts, ownership and lightweight fields without reading content; use "
          "get_card_content for the content itself. Each result has owner, runtime_managed and "
          "edit_policy (file_editable; tool_only for chat cards; read_only for runtime-managed "
          "chats), deep_link_url, payload_type (link for item cards) and a type-specific "
          "metadata object (e.g. table_rows, table_columns, table_column_headers, "
          "chat_message_count, rich_text_line_count, html_length, folder_child_count). "
          "board_health summarises the project load: ok, degraded, error or empty. On the "
          "project snapshot scope='selection' requires explicit card_ids.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

std::string_view boardHealthStatus(size_t cardCount, size_t loadErrorCount) {
  if (loadErrorCount == 0) return cardCount == 0 ? "empty" : "ok";
  return cardCount == 0 ? "error" : "degraded";
}

BoardListCardMetadataTool::BoardListCardMetadataTool(
    SharedCards cards, std::vector<WorkspaceCompileDiagnostic> loadDiagnostics,
    std::optional<std::filesystem::path> projectURL)
    : cards_(std::move(cards)),
      loadDiagnostics_(std::move(loadDiagnostics)),
      context_(WorkspaceCardContext::build(*cards_, std::move(projectURL))),
      spec_(listCardMetadataSpec()) {}

AnyCodableValue BoardListCardMetadataTool::run(const AnyCodableValue& input,
                                               const AgentToolContext&) const {
  const auto request = decodeValue<ListCardMetadataRequest>(input);
  const bool hasIDs = request.cardIDs && !request.cardIDs->empty();
  if (request.scope && lowercased(trimWhitespaceAndNewlines(*request.scope)) == "selection" &&
      !hasIDs) {
    throw DomainError("BoardListCardMetadataTool", 1, std::string(selectionScopeError));
  }
  CardSelection selection = filterCards(*cards_, request.cardIDs);
  if (request.maxCards) {
    const auto limit = static_cast<size_t>(std::max<int64_t>(*request.maxCards, 1));
    if (selection.cards.size() > limit) selection.cards.resize(limit);
  }

  AnyCodableValue::Array results;
  results.reserve(selection.cards.size());
  for (const WorkspaceCard* card : selection.cards) {
    const WorkspaceCardOwnership ownership = WorkspaceCardToolkit::ownership(*card);
    std::optional<std::string> deepLink;
    if (context_.projectURL) {
      deepLink = WorkspaceCardToolkit::deepLinkURL(card->id, *context_.projectURL);
    }
    std::optional<std::string> summary = card->summary ? card->summary : card->payload.summary();
    results.push_back(ObjectEncoder()
                          .add("owner", ownership.owner)
                          .add("runtime_managed", ownership.runtimeManaged)
                          .add("edit_policy", ownership.editPolicy)
                          .add("card_id", card->id)
                          .addNullable("deep_link_url", deepLink)
                          .add("type", toolTypeWord(card->type))
                          .add("payload_type", rawValue(card->payload.type()))
                          .add("title", card->title)
                          .addNullable("summary", summary)
                          .addNullable("parent_id", card->parentID)
                          .add("is_loading", card->isLoading)
                          .add("metadata", WorkspaceCardToolkit::metadata(*card, context_))
                          .build());
  }

  const AnyCodableValue health =
      ObjectEncoder()
          .add("status", boardHealthStatus(cards_->size(), loadDiagnostics_.size()))
          .add("load_error_count", loadDiagnostics_.size())
          .add("load_diagnostics", loadDiagnostics_)
          .build();
  ObjectEncoder answer;
  addBoardScope(answer, request.scope, cards_->size())
      .add("board_health", health)
      .add("results", AnyCodableValue(std::move(results)))
      .add("not_found", selection.notFound);
  return answer.build();
}

}  // namespace zorvik
