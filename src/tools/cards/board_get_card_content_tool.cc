#include "tools/cards/board_get_card_content_tool.h"

#include <algorithm>

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "tools/cards/card_selection.h"
#include "tools/cards/workspace_card_toolkit.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

struct GetCardContentRequest {
  std::optional<std::string> scope;
  std::optional<std::vector<std::string>> cardIDs;
  std::optional<int64_t> maxCards;
  WorkspaceCardContentMode mode = WorkspaceCardContentMode::full;
  std::optional<int64_t> maxChars;
  std::optional<int64_t> maxCharsPerCard;
  std::optional<WorkspaceCardTypeOptions> typeOptions;

  static GetCardContentRequest decode(const ValueDecoder& decoder) {
    auto object = decoder.object();
    return {object.optional<std::string>("scope"),
            object.optional<std::vector<std::string>>("card_ids"),
            object.optional<int64_t>("max_cards"),
            object.value<WorkspaceCardContentMode>("mode", WorkspaceCardContentMode::full),
            object.optional<int64_t>("max_chars"),
            object.optional<int64_t>("max_chars_per_card"),
            object.optional<WorkspaceCardTypeOptions>("type_options")};
  }
};

AnyCodableValue rangeSchema(std::string_view description) {
  return schema::with(schema::object({{"start", schema::integer()}, {"end", schema::integer()}}),
                      "description", description);
}

AnyCodableValue fieldsSchema(std::vector<std::string> selectors) {
  return schema::array(schema::stringEnum(std::move(selectors)),
                       "Field selectors; omit for all fields.");
}

AnyCodableValue matchModeSchema() {
  return schema::stringEnum({"equals", "contains", "starts_with", "ends_with"},
                            "How cells are compared with match (trimmed); default equals.");
}

AnyCodableValue typeOptionsSchema() {
  AnyCodableValue rowFilter = schema::object(
      {
          {"column", schema::string("Column name, alias or 1-based number.")},
          {"match", schema::string("Value to compare with; must not be empty.")},
          {"mode", matchModeSchema()},
          {"case_sensitive", schema::boolean("Default false.")},
      },
      {"column", "match"});
  AnyCodableValue cell = schema::object(
      {
          {"row_index", schema::integer("1-based row number.")},
          {"column_index", schema::integer("1-based column number.")},
          {"column_name", schema::string("Column name or alias (when column_index is absent).")},
      },
      {"row_index"});
  AnyCodableValue find = schema::object(
      {
          {"match", schema::string("Value to look for; must not be empty.")},
          {"mode", matchModeSchema()},
          {"case_sensitive", schema::boolean("Default false.")},
          {"column", schema::string("Only this column (name, alias or 1-based number).")},
          {"row_range", rangeSchema("Rows to scan, 1-based inclusive.")},
          {"column_range", rangeSchema("Columns to scan, 1-based inclusive.")},
          {"max_matches", schema::integer("Default 50, minimum 1.")},
      },
      {"match"});
  return schema::object({
      {"item", schema::object({
                   {"fields",
                    fieldsSchema({"source", "url", "note", "summary", "rich_text", "sanitized_html",
                                  "row_items", "available_fields", "hidden_row_items",
                                  "hidden_fields", "primary_image", "images", "available_images"})},
                   {"max_items", schema::integer("Cap on row items per list.")},
                   {"max_chars", schema::integer("Character cap per text field.")},
               })},
      {"table",
       schema::object({
           {"row_range", rangeSchema("Rows, 1-based inclusive.")},
           {"column_range", rangeSchema("Columns, 1-based inclusive.")},
           {"column_names", schema::array(schema::string(), "Columns by name, alias or number.")},
           {"row_filter", rowFilter},
           {"cell", cell},
           {"find", find},
           {"max_rows", schema::integer()},
           {"max_columns", schema::integer()},
           {"include_headers", schema::boolean("Default true.")},
       })},
      {"rich_text", schema::object({
                        {"line_range", rangeSchema("Lines, 1-based inclusive.")},
                        {"max_lines", schema::integer()},
                        {"max_chars", schema::integer()},
                    })},
      {"chat", schema::object({
                   {"message_range", rangeSchema("Messages, 1-based inclusive.")},
                   {"last_n", schema::integer("The last N messages; wins over message_range.")},
                   {"max_chars", schema::integer("Character cap per message.")},
               })},
      {"image",
       schema::object({{"fields", fieldsSchema({"url", "board_resource_url", "summary"})}})},
      {"html", schema::object({
                   {"fields", fieldsSchema({"html", "css", "js", "allow_remote_assets",
                                            "persisted_state", "public_functions"})},
                   {"max_chars", schema::integer("UTF-16 units per source window.")},
                   {"source_range",
                    rangeSchema("UTF-16 offsets, 0-based, end exclusive; page with next_start.")},
               })},
      {"folder", schema::object({{"fields", fieldsSchema({"node_role", "layout", "child_count",
                                                          "summary", "child_ids"})}})},
  });
}

AnyCodableValue outputSchema() {
  AnyCodableValue content = schema::object(
      {
          {"mode", schema::stringEnum({"full", "summary", "type_specific"})},
          {"text", schema::string("Text rendering (full and summary modes).")},
          {"item", schema::typed("object")},
          {"image", schema::typed("object")},
          {"chat", schema::typed("object")},
          {"rich_text", schema::typed("object")},
          {"html", schema::typed("object")},
          {"folder", schema::typed("object")},
          {"table", schema::typed("object")},
      },
      {"mode"});
  AnyCodableValue result = schema::object(
      {
          {"card_id", schema::string()},
          {"type", schema::stringEnum({"item", "image", "chat", "richText", "html", "browser",
                                       "folder", "table", "video"})},
          {"title", schema::string()},
          {"summary", schema::string()},
          {"content", content},
      },
      {"card_id", "type", "title", "content"});
  return boardScopedOutputSchema(
      {{"results", schema::array(result)}, {"not_found", schema::array(schema::string())}},
      {"results", "not_found"});
}

std::vector<AnyCodableValue> examples() {
  const std::string card = "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B";
  const AnyCodableValue ids = AnyCodableValue::Array{card};
  auto typed = [&](JSONObject typeOptions) -> AnyCodableValue {
    return JSONObject{{"card_ids", ids}, {"mode", "type_specific"}, {"type_options", typeOptions}};
  };
  auto range = [](int64_t start, int64_t end) -> AnyCodableValue {
    return JSONObject{{"start", start}, {"end", end}};
  };
  return {
      JSONObject{{"mode", "summary"}, {"max_cards", 20}},
      JSONObject{{"card_ids", ids}, {"mode", "full"}, {"max_chars", 4000}},
      typed({{"table", JSONObject{{"row_range", range(1, 25)},
                                  {"column_names", AnyCodableValue::Array{"Title", "Status"}}}}}),
      typed({{"table",
              JSONObject{{"row_filter",
                          JSONObject{{"column", "status"}, {"match", "open"}, {"mode", "equals"}}},
                         {"max_rows", 50}}}}),
      typed({{"table",
              JSONObject{
                  {"find",
                   JSONObject{{"match", "invoice"}, {"mode", "contains"}, {"max_matches", 10}}},
                  {"cell", JSONObject{{"row_index", 3}, {"column_name", "Owner"}}}}}}),
      typed({{"item", JSONObject{{"fields", AnyCodableValue::Array{"url", "note", "row_items",
                                                                   "primary_image"}},
                                 {"max_items", 10}}}}),
      typed({{"rich_text", JSONObject{{"line_range", range(1, 40)}, {"max_chars", 3000}}}}),
      typed({{"chat", JSONObject{{"last_n", 10}}}}),
      typed({{"html", JSONObject{{"fields", AnyCodableValue::Array{"js"}},
                                 {"source_range", range(0, 1800)}}}}),
      typed(
          {{"image", JSONObject{{"fields", AnyCodableValue::Array{"url", "board_resource_url"}}}}}),
      typed(
          {{"folder", JSONObject{{"fields", AnyCodableValue::Array{"child_count", "child_ids"}}}}}),
  };
}

constexpr std::string_view kNotes =
    "Use mode=type_specific for table slices and typed field extraction. Terminology: cards shown "
    "as `link` in the UI/filesystem use the `item` key in the tool schema, so request "
    "`type_options.item` and `content.item` (never `type_options.link`). mode accepts only full, "
    "summary and type_specific; there is no \"raw\" mode. Field selectors (`fields`, omit for "
    "all): item: source, url, note, row_items, available_fields, hidden_row_items, primary_image, "
    "images, available_images (also summary, rich_text, sanitized_html, hidden_fields); image: "
    "url, board_resource_url; html: html, css, js, allow_remote_assets, persisted_state (also "
    "public_functions); folder: node_role, layout, child_count (also summary, child_ids). "
    "`primary_image` reflects the gallery's active selection, with images[0] as fallback. For "
    "large html, css or js, page with `type_options.html.source_range` ({start, end} in UTF-16 "
    "offsets, end exclusive) and read the `*_window` metadata (html_window, css_window, "
    "js_window, persisted_state_window): while `truncated` is true, pass `next_start` as the next "
    "start. Tables: row_range and column_range are 1-based and inclusive; column_names resolve by "
    "number, title or alias (status, state, title, name, priority, severity); wide tables without "
    "column_names or column_range show their id/title/status/priority/severity columns; "
    "row_filter, cell and find report mistakes in filter_error, cell_error and match_error "
    "(column_not_found, empty_match, row_out_of_range) instead of failing; find returns at most "
    "max_matches hits (default 50). Text is cut to max_chars, else max_chars_per_card, else 2000 "
    "characters per card.";

AgentToolSpec getCardContentSpec() {
  return AgentToolSpec{
      .name = "get_card_content",
      .summary = "Fetch card content in full, summary, or type-specific form.",
      .inputSchema = schema::object({
          {"scope", schema::string("Scope word; this board snapshot always reads the board.")},
          {"card_ids", schema::array(schema::string(), "Card UUIDs; omit for all cards.")},
          {"max_cards", schema::integer("Return at most this many cards (minimum 1).")},
          {"mode", schema::stringEnum({"full", "summary", "type_specific"}, "Default full.")},
          {"max_chars",
           schema::integer("Character budget per card; wins over max_chars_per_card.")},
          {"max_chars_per_card", schema::integer("Character budget per card; default 2000.")},
          {"type_options",
           schema::with(
               typeOptionsSchema(), "description",
               "Per-type options, used in type_specific mode only. Link cards use `item`.")},
      }),
      .outputSchema = outputSchema(),
      .examples = examples(),
      .notes = std::string(kNotes),
      .execution = AgentToolExecutionMode::parallel,
  };
}

}  // namespace

BoardGetCardContentTool::BoardGetCardContentTool(SharedCards cards,
                                                 std::optional<std::filesystem::path> projectURL)
    : cards_(std::move(cards)),
      context_(WorkspaceCardContext::build(*cards_, std::move(projectURL))),
      spec_(getCardContentSpec()) {}

AnyCodableValue BoardGetCardContentTool::run(const AnyCodableValue& input,
                                             const AgentToolContext&) const {
  const auto request = decodeValue<GetCardContentRequest>(input);
  CardSelection selection = filterCards(*cards_, request.cardIDs);
  if (request.maxCards) {
    const auto limit = static_cast<size_t>(std::max<int64_t>(*request.maxCards, 1));
    if (selection.cards.size() > limit) selection.cards.resize(limit);
  }
  const int64_t budget =
      request.maxChars.value_or(request.maxCharsPerCard.value_or(defaultMaxCharsPerCard));
  const bool typeSpecific = request.mode == WorkspaceCardContentMode::typeSpecific;
  const WorkspaceCardContentRequest contentRequest{
      request.mode, budget, typeSpecific ? request.typeOptions : std::nullopt};

  AnyCodableValue::Array results;
  results.reserve(selection.cards.size());
  for (const WorkspaceCard* card : selection.cards) {
    results.push_back(
        ObjectEncoder()
            .add("card_id", card->id)
            .add("type", toolTypeWord(card->type))
            .add("title", card->title)
            .add("summary",
                 WorkspaceCardToolkit::truncate(WorkspaceCardToolkit::summaryText(*card), budget))
            .add("content", WorkspaceCardToolkit::content(*card, contentRequest, context_))
            .build());
  }
  ObjectEncoder answer;
  addBoardScope(answer, request.scope, cards_->size())
      .add("results", AnyCodableValue(std::move(results)))
      .add("not_found", selection.notFound);
  return answer.build();
}

}  // namespace zorvik
