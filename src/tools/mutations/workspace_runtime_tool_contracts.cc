// The contracts of delete_cards, resize_cards and compile_html, and the list_card_metadata family.
#include "tools/mutations/workspace_runtime_tool_contracts.h"

#include <initializer_list>

#include "tools/cards/board_list_card_metadata_tool.h"
#include "tools/framework/json_schema.h"
#include "tools/mutations/contract_examples.h"
#include "tools/mutations/workspace_mutation_contract_schemas.h"

namespace zorvik {
namespace {

using Schemas = WorkspaceMutationContractSchemas;

// An answer of per-card results followed by persistence and the mutation tail.
AnyCodableValue perCardAnswerSchema(JSONObject resultProperties) {
  resultProperties.set("card_id", schema::string());
  resultProperties.set("status", schema::string());
  resultProperties.set("message", Schemas::nullable("string"));
  JSONObject properties = Schemas::mutationAnswerTail();
  properties.set("results",
                 schema::array(schema::object(std::move(resultProperties), {"card_id", "status"})));
  properties.set("persistence", Schemas::persistenceVerificationSchema());
  return schema::object(std::move(properties),
                        {"results", "mutation_outcome", "project_checkpoint_ref"});
}

// The member reached by following `path` through nested objects, or nullptr.
AnyCodableValue* descend(AnyCodableValue& value, std::initializer_list<std::string_view> path) {
  AnyCodableValue* current = &value;
  for (std::string_view key : path) {
    JSONObject* object = current->asObject();
    current = object ? object->find(key) : nullptr;
    if (!current) return nullptr;
  }
  return current;
}

AnyCodableValue htmlCompileDiagnosticSchema() {
  return schema::object(
      {
          {"severity", schema::stringEnum({"error", "warning"})},
          {"phase", schema::string("Where the finding arose, e.g. html, css, js or runtime.")},
          {"code", schema::string()},
          {"message", schema::string()},
          {"line", Schemas::nullable("integer", "1-based line, when known.")},
          {"column", Schemas::nullable("integer", "1-based column, when known.")},
          {"source_url", Schemas::nullable("string")},
      },
      {"severity", "code", "message"});
}

}  // namespace

AgentToolSpec WorkspaceRuntimeToolContracts::deleteCardsSpec() {
  return AgentToolSpec{
      .name = "delete_cards",
      .summary = "Delete cards from the current board by card_id or selection.",
      .inputSchema =
          schema::object({{"card_ids", Schemas::cardIDList("Cards to delete.", 1)}}, {"card_ids"}),
      .outputSchema = perCardAnswerSchema({}),
      .examples = parseExamples({
          R"({"card_ids": ["3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B"]})",
          R"({"card_ids": ["3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B",
                           "2A3B4C5D-6E7F-4801-9A2B-C3D4E5F60718"]})",
      }),
      .notes = "Canonical delete API. Provide explicit card_ids only.",
      .execution = AgentToolExecutionMode::serial,
  };
}

AgentToolSpec WorkspaceRuntimeToolContracts::resizeCardsSpec() {
  AnyCodableValue side = schema::with(schema::number(), "minimum", 1);
  AnyCodableValue resize =
      schema::object({{"card_id", schema::string()}, {"width", side}, {"height", side}},
                     {"card_id", "width", "height"});
  return AgentToolSpec{
      .name = "resize_cards",
      .summary = "Resize cards in one mutation call using explicit per-card resize items.",
      .inputSchema = schema::object(
          {{"resizes", schema::with(schema::array(resize, "One item per card."), "minItems", 1)}},
          {"resizes"}),
      .outputSchema = perCardAnswerSchema({
          {"changed", schema::boolean()},
          {"card_type", Schemas::nullable("string")},
          {"resize_mode", Schemas::nullable("string")},
          {"applied_width", Schemas::nullable("number")},
          {"applied_height", Schemas::nullable("number")},
      }),
      .examples = parseExamples({
          R"({"resizes": [{"card_id": "7E8F9A0B-1C2D-4E3F-8A5B-6C7D8E9F0A1B",
              "width": 480, "height": 320}]})",
          R"({"resizes": [{"card_id": "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B", "width": 300, "height": 200},
             {"card_id": "2A3B4C5D-6E7F-4801-9A2B-C3D4E5F60718", "width": 300, "height": 200}]})",
      }),
      .notes =
          "Canonical resize API. Provide one or many resizes[] items (single-card resize is "
          "one item).",
      .execution = AgentToolExecutionMode::serial,
  };
}

AgentToolSpec WorkspaceRuntimeToolContracts::compileHTMLSpec() {
  JSONObject sourceProperties = Schemas::htmlSourceProperties();
  sourceProperties.set("size", Schemas::sizeSchema("Card size to compile for."));
  AnyCodableValue input = schema::object({
      {"card_id", schema::string("Html card to compile.")},
      {"source", schema::object(std::move(sourceProperties), {"html", "css"})},
      {"timeout_ms", Schemas::boundedInteger(1, std::nullopt, "Compile time limit.")},
  });
  // Exactly one of card_id and source.
  input = schema::with(
      std::move(input), "oneOf",
      AnyCodableValue::Array{schema::object({}, {"card_id"}), schema::object({}, {"source"})});
  return AgentToolSpec{
      .name = "compile_html",
      .summary =
          "Compile and diagnose HTML/CSS/JS for an html card (`card_id`) or explicit "
          "source input.",
      .inputSchema = std::move(input),
      .outputSchema = schema::object(
          {
              {"status", schema::string()},
              {"mode", schema::stringEnum({"card", "source"})},
              {"card_id", schema::string()},
              {"source", Schemas::nullable("object")},
              {"error_count", schema::integer()},
              {"warning_count", schema::integer()},
              {"message", Schemas::nullable("string")},
              {"diagnostics", schema::array(htmlCompileDiagnosticSchema())},
              {"error_code", Schemas::nullable("string")},
          },
          {"status", "mode", "error_count", "warning_count", "diagnostics"}),
      .examples = parseExamples({
          R"({"card_id": "7E8F9A0B-1C2D-4E3F-8A5B-6C7D8E9F0A1B"})",
          R"({"source": {"html": "<main id=\"app\"></main>", "css": "main{padding:12px}",
              "js": "document.getElementById('app').textContent='Ready';",
              "size": {"width": 360, "height": 240}}, "timeout_ms": 5000})",
      }),
      .notes =
          "Exactly one of card_id or source is required. Use this before html create/edit "
          "retries to get structured diagnostics.",
      .execution = AgentToolExecutionMode::parallel,
  };
}

AgentToolSpec WorkspaceRuntimeToolContracts::listCardMetadataBoardOnlySpec() {
  // The tool over no cards costs nothing to build and carries the one definition of its
  // AgentToolSpec.
  return BoardListCardMetadataTool(SharedCards(), {}, std::nullopt).spec();
}

AgentToolSpec WorkspaceRuntimeToolContracts::listCardMetadataSpec() {
  AgentToolSpec spec = listCardMetadataBoardOnlySpec();
  if (AnyCodableValue* scope =
          spec.inputSchema ? descend(*spec.inputSchema, {"properties", "scope"}) : nullptr) {
    *scope = schema::stringEnum({"auto", "selection", "board"},
                                "auto (default): explicit card_ids, else the current selection, "
                                "else the board; selection; board.");
  }
  spec.outputSchema = listCardMetadataOutputSchema();
  if (!spec.examples) spec.examples.emplace();
  spec.examples->push_back(JSONObject{{"scope", "selection"}});
  spec.notes = spec.notes.value_or("") +
               " In the live runtime, scope is auto (default: the explicit card_ids, else the "
               "current selection, else the whole board), selection or board.";
  return spec;
}

AnyCodableValue WorkspaceRuntimeToolContracts::listCardMetadataOutputSchema() {
  AnyCodableValue output = listCardMetadataBoardOnlySpec().outputSchema.value_or(JSONObject{});
  if (AnyCodableValue* diagnostics =
          descend(output, {"properties", "board_health", "properties", "load_diagnostics"})) {
    *diagnostics = schema::array(workspaceCompileDiagnosticSchema());
  }
  return output;
}

AnyCodableValue WorkspaceRuntimeToolContracts::workspaceCompileDiagnosticSchema() {
  return schema::object(
      {
          {"severity", schema::stringEnum({"error", "warning"})},
          {"code", schema::string()},
          {"message", schema::string()},
          {"path", schema::string("Project-relative path of the finding.")},
          {"card_id", Schemas::nullable("string")},
          {"hint", Schemas::nullable("string")},
          {"owner", schema::stringEnum({"user", "runtime", "unknown"})},
          {"actionability", schema::stringEnum({"fixable", "report_only", "inspect"})},
      },
      {"severity", "code", "message", "path", "owner", "actionability"});
}

}  // namespace zorvik
