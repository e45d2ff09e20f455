// The group_cards contract.
#include "tools/framework/json_schema.h"
#include "tools/mutations/contract_examples.h"
#include "tools/mutations/workspace_mutation_contract_schemas.h"
#include "tools/mutations/workspace_runtime_tool_contracts.h"

namespace zorvik {
namespace {

using Schemas = WorkspaceMutationContractSchemas;

constexpr std::string_view kNotes =
    "Operations: create_group makes a titled group of card_ids (title; layout, display_mode and "
    "grid_columns optional); add_to_group adds card_ids to group_id; set_layout changes the "
    "layout, display_mode or grid_columns of group_id, freeform included; sort orders the "
    "children of the auto-layout group group_id by sort_by.\n"
    "Strict values: layout freeform, horizontal, vertical or grid; display_mode all_cards or "
    "slider (one card at a time); sort_by name or date. grid_columns applies only with layout "
    "grid and is clamped to 2..5. sort works on auto-layout groups (horizontal, vertical, grid) "
    "only, never on freeform ones.\n"
    "add_to_group appends deterministically: in an auto-layout group the cards go to the end of "
    "the order; in a freeform group they are placed as one connected block to the right of the "
    "rightmost child, and right-side snap constraints are recorded.\n"
    "Answer: operation, status, group_id, layout, display_mode, card_ids, ordered_child_ids (the "
    "group's children in order), child_count, mutation_outcome and project_checkpoint_ref.";

AnyCodableValue displayModeSchema() {
  return schema::stringEnum({"all_cards", "slider"}, "all_cards shows every card; slider one.");
}

}  // namespace

AgentToolSpec WorkspaceRuntimeToolContracts::groupCardsSpec() {
  JSONObject output = Schemas::mutationAnswerTail();
  output.set("operation", schema::string());
  output.set("status", schema::string());
  output.set("group_id", Schemas::nullable("string"));
  output.set("title", Schemas::nullable("string"));
  output.set("layout", Schemas::nullable("string"));
  output.set("display_mode", Schemas::nullable("string"));
  output.set("card_ids", schema::array(schema::string()));
  output.set("ordered_child_ids", schema::array(schema::string()));
  output.set("child_count", schema::integer());
  return AgentToolSpec{
      .name = "group_cards",
      .summary =
          "Create or modify visual groups: create titled groups, add cards, relayout "
          "including freeform, change display mode, or sort auto-layout groups.",
      .inputSchema = schema::object(
          {
              {"operation",
               schema::stringEnum({"create_group", "add_to_group", "set_layout", "sort"})},
              {"card_ids", Schemas::cardIDList("Cards to group or to add.")},
              {"group_id", schema::string("Group to change.")},
              {"title", schema::string("Title of a new group.")},
              {"layout", Schemas::folderLayoutSchema("Group layout.")},
              {"display_mode", displayModeSchema()},
              {"grid_columns", Schemas::gridColumnsSchema("Only with layout grid.")},
              {"sort_by", schema::stringEnum({"name", "date"}, "Auto-layout groups only.")},
          },
          {"operation"}),
      .outputSchema = schema::object(
          std::move(output), {"operation", "status", "mutation_outcome", "project_checkpoint_ref"}),
      .examples = parseExamples({
          R"({"operation": "create_group", "title": "Competitors", "layout": "grid", "grid_columns": 3,
              "card_ids": ["3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B", "2A3B4C5D-6E7F-4801-9A2B-C3D4E5F60718"]})",
          R"({"operation": "add_to_group", "group_id": "6A1F2C3B-0D4E-4E21-9B6C-3F2B8C1E5A7D",
              "card_ids": ["9C4D2E1A-7B3F-4A8E-8D21-5E6F7A8B9C0D"]})",
          R"({"operation": "set_layout", "group_id": "6A1F2C3B-0D4E-4E21-9B6C-3F2B8C1E5A7D",
              "layout": "freeform"})",
          R"({"operation": "set_layout", "group_id": "6A1F2C3B-0D4E-4E21-9B6C-3F2B8C1E5A7D",
              "display_mode": "slider"})",
          R"({"operation": "sort", "group_id": "6A1F2C3B-0D4E-4E21-9B6C-3F2B8C1E5A7D",
              "sort_by": "name"})",
      }),
      .notes = std::string(kNotes),
      .execution = AgentToolExecutionMode::serial,
  };
}

}  // namespace zorvik
