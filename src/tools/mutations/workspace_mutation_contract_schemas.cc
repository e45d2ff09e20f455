#include "tools/mutations/workspace_mutation_contract_schemas.h"

#include "tools/framework/json_schema.h"

namespace zorvik {

using Schemas = WorkspaceMutationContractSchemas;

AnyCodableValue Schemas::nullable(std::string_view type, std::string_view description) {
  JSONObject result{{"type", AnyCodableValue::Array{type, "null"}}};
  if (!description.empty()) result.set("description", description);
  return result;
}

AnyCodableValue Schemas::boundedInteger(std::optional<int64_t> minimum,
                                        std::optional<int64_t> maximum,
                                        std::string_view description) {
  AnyCodableValue result = schema::integer(description);
  if (minimum) result = schema::with(std::move(result), "minimum", *minimum);
  if (maximum) result = schema::with(std::move(result), "maximum", *maximum);
  return result;
}

AnyCodableValue Schemas::cardIDList(std::string_view description, std::optional<int64_t> minItems) {
  AnyCodableValue result = schema::array(schema::string(), description);
  if (minItems) result = schema::with(std::move(result), "minItems", *minItems);
  return result;
}

AnyCodableValue Schemas::mutationOutcomeSchema() {
  AnyCodableValue effect = schema::object(
      {
          {"card_id", schema::string()},
          {"changed", schema::boolean()},
          {"change_type", nullable("string", "added, removed or updated.")},
          {"before_hash", nullable("string")},
          {"after_hash", nullable("string")},
      },
      {"card_id", "changed", "change_type", "before_hash", "after_hash"});
  return schema::object(
      {
          {"status", schema::stringEnum({"applied", "no_effect", "partial", "failed"})},
          {"reason_codes", schema::array(schema::string())},
          {"target_card_ids", schema::array(schema::string())},
          {"changed_card_ids", schema::array(schema::string())},
          {"before_state_hash", nullable("string", "Project state hash before the mutation.")},
          {"after_state_hash", nullable("string", "Project state hash after the mutation.")},
          {"card_effects", schema::array(effect)},
      },
      {"status", "reason_codes", "target_card_ids", "changed_card_ids", "card_effects"});
}

AnyCodableValue Schemas::checkpointRefSchema() {
  AnyCodableValue checkpoint = schema::object(
      {
          {"checkpoint_id", schema::string()},
          {"command", schema::string()},
          {"before_state_hash", schema::string()},
          {"after_state_hash", schema::string()},
          {"changed_any", schema::boolean()},
      },
      {"checkpoint_id", "command", "before_state_hash", "after_state_hash", "changed_any"});
  checkpoint =
      schema::with(std::move(checkpoint), "type", AnyCodableValue::Array{"object", "null"});
  return schema::object(
      {
          {"status", schema::stringEnum({"ok", "unavailable"})},
          {"checkpoint", checkpoint},
          {"message", nullable("string")},
      },
      {"status"});
}

AnyCodableValue Schemas::persistenceVerificationSchema() {
  return schema::object(
      {
          {"status", schema::stringEnum({"verified", "partial", "missing", "unverified"})},
          {"expected_card_ids", schema::array(schema::string())},
          {"verified_card_ids", schema::array(schema::string())},
          {"missing_card_ids", schema::array(schema::string())},
          {"message", nullable("string")},
      },
      {"status", "expected_card_ids", "verified_card_ids", "missing_card_ids"});
}

JSONObject Schemas::mutationAnswerTail() {
  return JSONObject{
      {"mutation_outcome", mutationOutcomeSchema()},
      {"project_checkpoint_ref", checkpointRefSchema()},
      {"error_code", nullable("string")},
      {"message", nullable("string")},
  };
}

AnyCodableValue Schemas::rowItemSchema() {
  return schema::object(
      {
          {"label", schema::string("Row label, e.g. Price or Pros.")},
          {"type", schema::stringEnum({"key_value", "expandable_list", "todo", "rating"})},
          {"key_value", schema::object({{"value", schema::string()}}, {"value"})},
          {"expandable_list", schema::object({{"items", schema::array(schema::string())},
                                              {"is_expanded", schema::boolean()}},
                                             {"items"})},
          {"todo", schema::object({{"is_checked", schema::boolean()}})},
          {"rating", schema::object({{"value", schema::integer("Star count.")}}, {"value"})},
      },
      {"label"});
}

AnyCodableValue Schemas::itemSourceSchema() {
  return schema::stringEnum({"remote", "local"},
                            "remote (default) for web urls, local for files on this machine.");
}

AnyCodableValue Schemas::imagesSchema() {
  return schema::array(schema::string(), "Representative image URLs or local paths.");
}

AnyCodableValue Schemas::sizeSchema(std::string_view description) {
  AnyCodableValue side = schema::with(schema::number(), "minimum", 1);
  return schema::with(schema::object({{"width", side}, {"height", side}}, {"width", "height"}),
                      "description", description);
}

AnyCodableValue Schemas::pointSchema(std::string_view description) {
  return schema::with(
      schema::object({{"x", schema::number()}, {"y", schema::number()}}, {"x", "y"}), "description",
      description);
}

AnyCodableValue Schemas::placementSchema() {
  return schema::object({
      {"mode", schema::stringEnum({"auto", "coordinates"}, "auto (default) or coordinates.")},
      {"coordinates", pointSchema("Canvas point for mode=coordinates.")},
  });
}

AnyCodableValue Schemas::publicFunctionSchema() {
  AnyCodableValue parameter = schema::object(
      {
          {"name", schema::string("Key of this parameter in the handler's argument object.")},
          {"description", schema::string()},
          {"type", schema::stringEnum({"string", "number", "integer", "boolean"})},
          {"required", schema::boolean()},
          {"aliases", schema::array(schema::string())},
          {"value_options", schema::array(schema::string())},
          {"format", schema::stringEnum({"plain", "multiplier", "percentage", "ordinal_index"})},
      },
      {"name", "type"});
  return schema::object(
      {
          {"id", schema::string("Stable id used to call the function.")},
          {"name", schema::string()},
          {"description", schema::string()},
          {"js_function", schema::string("Key of the handler in window.ZorvikPublicFunctions.")},
          {"aliases", schema::array(schema::string())},
          {"parameters", schema::array(parameter)},
      },
      {"id", "name", "js_function"});
}

JSONObject Schemas::htmlSourceProperties() {
  return JSONObject{
      {"html", schema::string("Page markup.")},
      {"css", schema::string("Style sheet.")},
      {"js", schema::string("Script.")},
      {"allow_remote_assets", schema::boolean("Allow http(s) assets; off by default.")},
      {"persisted_state", schema::string("Initial JSON text for window.ZorvikState.")},
  };
}

AnyCodableValue Schemas::folderLayoutSchema(std::string_view description) {
  return schema::stringEnum({"freeform", "horizontal", "vertical", "grid"}, description);
}

AnyCodableValue Schemas::gridColumnsSchema(std::string_view description) {
  return boundedInteger(2, 5, description);
}

AnyCodableValue Schemas::tableFontSizeSchema() {
  return boundedInteger(9, 28, "Table font size; default 15.");
}

AnyCodableValue Schemas::parentIDSchema() {
  return schema::string(
      "Folder or group card id to place the card inside; root, board or none for the board "
      "root.");
}

AnyCodableValue Schemas::focusSchema() {
  return schema::boolean(
      "Select the result and move the camera to it. Default: created content is focused, unless "
      "only empty group containers were created.");
}

}  // namespace zorvik
