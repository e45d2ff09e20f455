// The edit_cards contract.
#include "tools/framework/json_schema.h"
#include "tools/mutations/contract_examples.h"
#include "tools/mutations/workspace_mutation_contract_schemas.h"
#include "tools/mutations/workspace_runtime_tool_contracts.h"

namespace zorvik {
namespace {

using Schemas = WorkspaceMutationContractSchemas;

constexpr std::string_view kNotes =
    "Canonical edit API. Send edits[] (cards[] is an accepted alias; never send both), one sparse "
    "patch per card keyed by card_id: include only the fields to change.\n"
    "Text: title, summary, note (items) and markdown (rich text).\n"
    "Items: item_url and item_source sit at the top level of the edit; an empty item_url skips "
    "url validation. Rows: row_action upsert, append, update or remove on row_target row_items, "
    "available_fields or hidden_row_items, with row_item {label, type, nested payload} as in "
    "create_cards. images replaces the images of an item or image card.\n"
    "Html: html, css, js, allow_remote_assets, persisted_state and public_functions replace whole "
    "fields; size must be explicit and at least the html minimum. For small changes prefer "
    "source_edits, an array of operations (never a map) applied in order, each with target html, "
    "css, js or persisted_state and one operation: replace_range replaces start..end (UTF-16 "
    "units, end exclusive) with content; insert puts content at position start, end (default), "
    "offset (with offset), before_anchor or after_anchor (with anchor and the 1-based "
    "occurrence); find_replace replaces find with replace, match_mode literal (default) or regex, "
    "case_sensitive (default true), replace_all. expected_matches is a guard: the edit fails if "
    "the number of matches differs. Errors carry line, column and snippet hints. The asset, "
    "window.ZorvikState and public function rules of create_cards apply; run compile_html before "
    "retrying a failed html edit.\n"
    "Rich text style: rich_text_style.background {mode set or clear, colors, opacity 0 to 1} and "
    "rich_text_style.font {family, size, bold, italic, underline}.\n"
    "Groups: group_style {color, appearance transparent or opaque}.\n"
    "Position: move_to {x, y} is the target center, for any card. parent_id moves the card into "
    "a folder or group, or to the board root with root, board or none; several parent_id edits "
    "run as grouped batches per parent, so that reflow is deterministic.\n"
    "Tables: table_cell {row_index, column_index or column_name, value}, 1-based; table_row "
    "{action insert, append, delete, move or update; row_index, to_index, values}; table_column "
    "{action; column_index or column_name, to_index, values}; table_font_size 9 to 28.\n"
    "Answer: results per edit (card_id, status, message), mutation_outcome (no_effect when "
    "nothing changed) and project_checkpoint_ref.";

AnyCodableValue sourceEditSchema() {
  return schema::object(
      {
          {"target", schema::stringEnum({"html", "css", "js", "persisted_state"})},
          {"operation", schema::stringEnum({"replace_range", "insert", "find_replace"})},
          {"start", Schemas::boundedInteger(0, std::nullopt, "UTF-16 offset, inclusive.")},
          {"end", Schemas::boundedInteger(0, std::nullopt, "UTF-16 offset, exclusive.")},
          {"content", schema::string("Replacement or inserted text.")},
          {"position",
           schema::stringEnum({"start", "end", "offset", "before_anchor", "after_anchor"},
                              "Insert position; default end.")},
          {"offset",
           Schemas::boundedInteger(0, std::nullopt, "UTF-16 offset for position offset.")},
          {"anchor", schema::string("Text to insert before or after.")},
          {"occurrence", Schemas::boundedInteger(1, std::nullopt, "1-based anchor occurrence.")},
          {"find", schema::string()},
          {"replace", schema::string()},
          {"match_mode", schema::stringEnum({"literal", "regex"}, "Default literal.")},
          {"case_sensitive", schema::boolean("Default true.")},
          {"replace_all", schema::boolean()},
          {"expected_matches",
           Schemas::boundedInteger(0, std::nullopt, "Fail unless exactly this many matches.")},
      },
      {"target", "operation"});
}

AnyCodableValue richTextStyleSchema() {
  return schema::object({
      {"background",
       schema::object({
           {"mode", schema::stringEnum({"set", "clear"})},
           {"colors", schema::array(schema::string(), "Hex or CSS colors.")},
           {"opacity", schema::with(schema::with(schema::number(), "minimum", 0), "maximum", 1)},
       })},
      {"font", schema::object({
                   {"family", schema::string()},
                   {"size", schema::with(schema::number(), "minimum", 1)},
                   {"bold", schema::boolean()},
                   {"italic", schema::boolean()},
                   {"underline", schema::boolean()},
               })},
  });
}

AnyCodableValue tableLineSchema(std::string_view indexKey, std::string_view description) {
  JSONObject properties{
      {"action", schema::stringEnum({"insert", "append", "delete", "move", "update"})},
      {std::string(indexKey), Schemas::boundedInteger(1, std::nullopt, "1-based.")},
      {"to_index", Schemas::boundedInteger(1, std::nullopt, "1-based target of a move.")},
      {"values", schema::array(schema::string(), "Cell texts in order.")},
  };
  if (indexKey == "column_index") {
    properties.set("column_name", schema::string("Header text addressing the column."));
  }
  return schema::with(schema::object(std::move(properties), {"action"}), "description",
                      description);
}

AnyCodableValue editEntrySchema() {
  JSONObject properties{
      {"card_id", schema::string()},
      {"title", schema::string()},
      {"summary", schema::string()},
      {"note", schema::string("Item note, Markdown.")},
      {"markdown", schema::string("Rich text body.")},
      {"item_url", schema::string("New item url; empty skips validation.")},
      {"item_source", Schemas::itemSourceSchema()},
      {"images", Schemas::imagesSchema()},
      {"public_functions", schema::array(Schemas::publicFunctionSchema())},
      {"size", Schemas::sizeSchema("Html card size; explicit, at least the html minimum.")},
      {"source_edits", schema::array(sourceEditSchema(), "Ordered source operations.")},
      {"rich_text_style", richTextStyleSchema()},
      {"group_style",
       schema::object({{"color", schema::string()},
                       {"appearance", schema::stringEnum({"transparent", "opaque"})}})},
      {"move_to", Schemas::pointSchema("Target center of the card.")},
      {"parent_id", Schemas::parentIDSchema()},
      {"row_action", schema::stringEnum({"upsert", "append", "update", "remove"})},
      {"row_target", schema::stringEnum({"row_items", "available_fields", "hidden_row_items"})},
      {"row_item", Schemas::rowItemSchema()},
      {"table_cell", schema::object({{"row_index", Schemas::boundedInteger(1, std::nullopt, "")},
                                     {"column_index", Schemas::boundedInteger(1, std::nullopt, "")},
                                     {"column_name", schema::string()},
                                     {"value", schema::string()}},
                                    {"row_index", "value"})},
      {"table_row", tableLineSchema("row_index", "Row operation.")},
      {"table_column", tableLineSchema("column_index", "Column operation.")},
      {"table_font_size", Schemas::tableFontSizeSchema()},
  };
  for (const auto& [key, value] : Schemas::htmlSourceProperties()) properties.set(key, value);
  return schema::object(std::move(properties), {"card_id"});
}

AnyCodableValue outputSchema() {
  AnyCodableValue result = schema::object({{"card_id", schema::string()},
                                           {"status", schema::string()},
                                           {"message", Schemas::nullable("string")},
                                           {"changed", schema::boolean()}},
                                          {"card_id", "status"});
  JSONObject properties = Schemas::mutationAnswerTail();
  properties.set("results", schema::array(result));
  return schema::object(std::move(properties),
                        {"results", "mutation_outcome", "project_checkpoint_ref"});
}

}  // namespace

AgentToolSpec WorkspaceRuntimeToolContracts::editCardsSpec() {
  AnyCodableValue edits = schema::with(
      schema::array(editEntrySchema(), "Sparse patches keyed by card_id."), "minItems", 1);
  AnyCodableValue input = schema::object(
      {{"edits", edits},
       {"cards", schema::with(edits, "description", "Alias of edits; never both.")}});
  // Exactly one of the two spellings.
  input = schema::with(
      std::move(input), "oneOf",
      AnyCodableValue::Array{schema::object({}, {"edits"}), schema::object({}, {"cards"})});
  return AgentToolSpec{
      .name = "edit_cards",
      .summary = "Edit one or more cards in the current board with sparse explicit patches.",
      .inputSchema = std::move(input),
      .outputSchema = outputSchema(),
      .examples = parseExamples({
          R"({"edits": [{"card_id": "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B",
              "item_url": "https://example.com/acme/pricing",
              "row_action": "upsert", "row_target": "row_items",
              "row_item": {"label": "Price", "type": "key_value", "key_value": {"value": "$29"}}}]})",
          R"({"edits": [{"card_id": "9C4D2E1A-7B3F-4A8E-8D21-5E6F7A8B9C0D",
              "table_cell": {"row_index": 2, "column_name": "Price", "value": "$35"}},
             {"card_id": "9C4D2E1A-7B3F-4A8E-8D21-5E6F7A8B9C0D",
              "table_row": {"action": "append", "values": ["Enterprise", "Custom", "Unlimited"]}}]})",
          R"({"edits": [{"card_id": "1B2C3D4E-5F60-4718-9A2B-3C4D5E6F7081",
              "markdown": "# Decisions\n- Launch in June",
              "rich_text_style": {"font": {"size": 18, "bold": true},
                                  "background": {"mode": "set", "colors": ["#FFF4D6"], "opacity": 0.9}}}]})",
          R"({"edits": [{"card_id": "7E8F9A0B-1C2D-4E3F-8A5B-6C7D8E9F0A1B",
              "source_edits": [
                {"target": "css", "operation": "find_replace", "find": "--accent:#5392F7",
                 "replace": "--accent:#E5484D", "expected_matches": 1},
                {"target": "html", "operation": "insert", "position": "after_anchor",
                 "anchor": "<main>", "occurrence": 1, "content": "<h1>Counter</h1>"}]}]})",
          R"({"edits": [{"card_id": "7E8F9A0B-1C2D-4E3F-8A5B-6C7D8E9F0A1B",
              "size": {"width": 480, "height": 320}}]})",
          R"({"edits": [{"card_id": "2A3B4C5D-6E7F-4801-9A2B-C3D4E5F60718",
              "title": "Updated hero", "images": ["https://example.com/hero-v2.png"]}]})",
          R"({"edits": [{"card_id": "6A1F2C3B-0D4E-4E21-9B6C-3F2B8C1E5A7D", "title": "Shortlist",
              "group_style": {"color": "#5392F7", "appearance": "opaque"}}]})",
          R"({"edits": [{"card_id": "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B", "move_to": {"x": 800, "y": 300}},
             {"card_id": "2A3B4C5D-6E7F-4801-9A2B-C3D4E5F60718", "parent_id": "root"}]})",
      }),
      .notes = std::string(kNotes),
      .execution = AgentToolExecutionMode::serial,
  };
}

}  // namespace zorvik
