#include <gtest/gtest.h>

#include <map>

#include "schema_conformance.h"
#include "tools/cards/board_list_card_metadata_tool.h"
#include "tools/framework/tool_details_tool.h"
#include "tools/mutations/guided_chat_tool_contracts.h"
#include "tools/mutations/workspace_mutation_contract_schemas.h"
#include "tools/mutations/workspace_runtime_tool_contracts.h"
#include "workspace_store/workspace_compile_diagnostic.h"

namespace zorvik {
namespace {

using Contracts = WorkspaceRuntimeToolContracts;

AnyCodableValue json(std::string_view text) { return AnyCodableValue::parse(text); }

// Every AgentToolSpec of this library, by tool name; list_card_metadata is the live runtime's.
std::map<std::string, AgentToolSpec> allSpecs() {
  std::map<std::string, AgentToolSpec> specs;
  for (AgentToolSpec spec :
       {Contracts::createCardsSpec(), Contracts::groupCardsSpec(), Contracts::editCardsSpec(),
        Contracts::deleteCardsSpec(), Contracts::resizeCardsSpec(), Contracts::compileHTMLSpec(),
        Contracts::parsePDFSpec(), Contracts::listCardMetadataSpec(),
        GuidedChatToolContracts::askUserSpec(), GuidedChatToolContracts::proposeOptionsSpec()}) {
    specs.emplace(spec.name, std::move(spec));
  }
  return specs;
}

std::string joined(const std::vector<std::string>& problems) {
  std::string text;
  for (const auto& problem : problems) text += "\n  " + problem;
  return text;
}

TEST(MutationToolContractsTest, SchemasAreWellFormedAndExamplesConformToThem) {
  const auto specs = allSpecs();
  EXPECT_EQ(specs.size(), 10u) << "tool names must be unique";
  for (const auto& [name, spec] : specs) {
    ASSERT_TRUE(spec.inputSchema && spec.outputSchema) << name;
    EXPECT_EQ(joined(schemaDefects(*spec.inputSchema)), "") << name << " input schema";
    EXPECT_EQ(joined(schemaDefects(*spec.outputSchema)), "") << name << " output schema";
    ASSERT_TRUE(spec.examples && !spec.examples->empty()) << name;
    for (const AnyCodableValue& example : *spec.examples) {
      EXPECT_EQ(
          joined(schemaViolations(*spec.inputSchema, example, {.rejectUndeclaredKeys = true})), "")
          << name << " example " << example.compactJSONString().value_or("");
    }
  }
}

TEST(MutationToolContractsTest, BridgeFailureAnswersConformToTheToolsOutputSchemas) {
  const auto specs = allSpecs();
  for (const char* name : {"create_cards", "group_cards", "edit_cards", "delete_cards",
                           "resize_cards", "compile_html", "parse_pdf", "list_card_metadata"}) {
    const AgentToolSpec& spec = specs.at(name);
    std::vector<AnyCodableValue> inputs = *spec.examples;
    inputs.push_back(JSONObject{});
    for (const AnyCodableValue& input : inputs) {
      const auto answer =
          Contracts::runtimeBridgeFailurePayload(name, input, "runtime_timeout", "Timed out.");
      ASSERT_TRUE(answer.has_value()) << name;
      EXPECT_EQ(
          joined(schemaViolations(*spec.outputSchema, *answer, {.rejectUndeclaredKeys = true})), "")
          << name << " for " << input.compactJSONString().value_or("");
    }
  }
}

TEST(MutationToolContractsTest, InputSchemasHoldTheStatedKeysEnumsAndLimits) {
  struct Case {
    std::string tool;
    std::string input;
    bool conforms;
  };
  // One case per kind of rule: required keys, closed objects, enums, bounds, list lengths, and
  // the exactly-one-of choices.
  const Case cases[] = {
      {"create_cards", R"({"cards": []})", false},
      {"create_cards", R"({"cards": [{"title": "untyped"}]})", false},
      {"create_cards", R"({"cards": [{"type": "link"}]})", false},
      {"create_cards", R"({"cards": [{"type": "table", "table_font_size": 9}]})", true},
      {"create_cards", R"({"cards": [{"type": "table", "table_font_size": 8}]})", false},
      {"create_cards", R"({"cards": [{"type": "table", "table_font_size": 29}]})", false},
      {"create_cards", R"({"cards": [{"type": "html", "size": {"width": 300}}]})", false},
      {"group_cards", R"({"card_ids": ["A"]})", false},
      {"group_cards", R"({"operation": "merge"})", false},
      {"group_cards", R"({"operation": "set_layout", "layout": "grid", "grid_columns": 1})", false},
      {"edit_cards", R"({"cards": [{"card_id": "A", "title": "t"}]})", true},
      {"edit_cards", R"({"edits": [{"card_id": "A"}], "cards": [{"card_id": "A"}]})", false},
      {"edit_cards", R"({})", false},
      {"edit_cards", R"({"edits": [{"title": "no card"}]})", false},
      {"edit_cards",
       R"({"edits": [{"card_id": "A", "rich_text_style": {"background": {"opacity": 2}}}]})",
       false},
      {"edit_cards",
       R"({"edits": [{"card_id": "A", "source_edits": [{"target": "json", "operation": "insert"}]}]})",
       false},
      {"delete_cards", R"({})", false},
      {"resize_cards", R"({"resizes": [{"card_id": "A", "width": 0, "height": 10}]})", false},
      {"compile_html", R"({"card_id": "A", "source": {"html": "", "css": ""}})", false},
      {"compile_html", R"({"timeout_ms": 100})", false},
      {"compile_html", R"({"card_id": "A", "timeout_ms": 0})", false},
      {"parse_pdf", R"({"operation": "inspect"})", false},
      {"parse_pdf", R"({"operation": "render_page_image", "pdf_path": "a.pdf", "page_number": 0})",
       false},
      {"list_card_metadata", R"({"scope": "everything"})", false},
      {"list_card_metadata", R"({"scope": "auto", "card_ids": ["A"]})", true},
      {"ask_user", R"({"message": "Hi", "project_path": "/tmp/board"})", false},
      {"ask_user", R"({"message": "Hi", "response_type": "choice"})", false},
      {"propose_options", R"({"message": "Pick", "options": []})", false},
      {"propose_options", R"({"message": "Pick", "options": [{"label": "A"}]})", false},
  };
  const auto specs = allSpecs();
  for (const Case& c : cases) {
    const auto problems = schemaViolations(*specs.at(c.tool).inputSchema, json(c.input));
    EXPECT_EQ(problems.empty(), c.conforms) << c.tool << " " << c.input << joined(problems);
  }
}

TEST(MutationToolContractsTest, NotesCarryTheRulesAgentsMustFollow) {
  const std::map<std::string, std::vector<std::string>> required = {
      {"create_cards",
       {"default to type=item", "Reuse a key only with the exact same payload",
        "window.ZorvikState.set(nextState)", "unless only empty group containers were created"}},
      {"edit_cards", {"never send both", "expected_matches is a guard"}},
      {"group_cards", {"clamped to 2..5"}},
      {"delete_cards", {"Provide explicit card_ids only."}},
      {"compile_html", {"Exactly one of card_id or source is required."}},
  };
  const auto specs = allSpecs();
  for (const auto& [name, phrases] : required) {
    const std::string notes = specs.at(name).notes.value_or("");
    for (const auto& phrase : phrases) {
      EXPECT_NE(notes.find(phrase), std::string::npos) << name << " notes lack: " << phrase;
    }
  }
}

TEST(MutationToolContractsTest, ExamplesServeEveryCardTypeFilterOfToolDetails) {
  const auto specs = allSpecs();
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"create_cards",
       {"item", "image", "rich_text", "table", "html", "chat", "browser", "folder"}},
      {"edit_cards", {"item", "image", "rich_text", "table", "html", "folder"}},
  };
  for (const auto& [tool, cardTypes] : cases) {
    const auto& examples = *specs.at(tool).examples;
    for (const auto& cardType : cardTypes) {
      const auto filtered = filterExamples(examples, tool, cardType);
      ASSERT_TRUE(filtered.has_value()) << tool;
      EXPECT_FALSE(filtered->empty()) << tool << " has no example for " << cardType;
      EXPECT_LT(filtered->size(), examples.size()) << tool << " " << cardType;
    }
  }
}

TEST(MutationToolContractsTest, SharedResultSchemasAcceptRealResultsAndRefuseWrongStatus) {
  const AnyCodableValue outcome = json(R"({"status": "applied", "reason_codes": [],
    "target_card_ids": ["A"], "changed_card_ids": ["A"], "before_state_hash": "ab",
    "after_state_hash": "cd", "card_effects": [{"card_id": "A", "changed": true,
    "change_type": "updated", "before_hash": "1", "after_hash": "2"}]})");
  const AnyCodableValue ref = json(R"({"status": "ok", "checkpoint": {"checkpoint_id": "c",
    "command": "edit_cards", "before_state_hash": "ab", "after_state_hash": "cd",
    "changed_any": true}})");
  const AnyCodableValue persistence = json(R"({"status": "verified", "expected_card_ids": ["A"],
    "verified_card_ids": ["A"], "missing_card_ids": []})");
  const struct {
    AnyCodableValue schema, value;
    std::string badStatus;
  } cases[] = {
      {WorkspaceMutationContractSchemas::mutationOutcomeSchema(), outcome, "done"},
      {WorkspaceMutationContractSchemas::checkpointRefSchema(), ref, "missing"},
      {WorkspaceMutationContractSchemas::persistenceVerificationSchema(), persistence, "lost"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(joined(schemaViolations(c.schema, c.value, {.rejectUndeclaredKeys = true})), "");
    AnyCodableValue wrong = c.value;
    wrong.asObject()->set("status", c.badStatus);
    EXPECT_FALSE(schemaViolations(c.schema, wrong).empty()) << c.badStatus;
  }
  AnyCodableValue noEffectType = outcome;
  (*noEffectType.asObject()->find("card_effects")->asArray())[0].asObject()->erase("change_type");
  EXPECT_FALSE(
      schemaViolations(WorkspaceMutationContractSchemas::mutationOutcomeSchema(), noEffectType)
          .empty());
}

TEST(MutationToolContractsTest, ListCardMetadataReusesTheBoardToolSpec) {
  const AgentToolSpec boardOnly = Contracts::listCardMetadataBoardOnlySpec();
  EXPECT_EQ(boardOnly, BoardListCardMetadataTool(SharedCards(), {}, std::nullopt).spec());

  const AgentToolSpec live = Contracts::listCardMetadataSpec();
  EXPECT_EQ(*live.inputSchema->member("properties")->member("scope")->member("enum"),
            json(R"(["auto", "selection", "board"])"));
  EXPECT_EQ(live.outputSchema, Contracts::listCardMetadataOutputSchema());
  const AnyCodableValue* diagnostics = live.outputSchema->member("properties")
                                           ->member("board_health")
                                           ->member("properties")
                                           ->member("load_diagnostics");
  EXPECT_EQ(*diagnostics->member("items"), Contracts::workspaceCompileDiagnosticSchema());

  // The diagnostic schema describes the record as it encodes, with and without a card.
  WorkspaceCompileDiagnostic plain{.code = "missing_file", .message = "m", .path = "a.md"};
  WorkspaceCompileDiagnostic full = plain;
  full.cardID = Uuid::parse("3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B");
  full.hint = "h";
  full.actionability = WorkspaceCompileDiagnosticActionability::reportOnly;
  for (const auto& diagnostic : {plain, full}) {
    EXPECT_EQ(joined(schemaViolations(Contracts::workspaceCompileDiagnosticSchema(),
                                      diagnostic.encode(), {.rejectUndeclaredKeys = true})),
              "");
  }
}

TEST(MutationToolContractsTest, GuidedChatToolsAnswerTheClosedOutputShape) {
  const AnyCodableValue schema = GuidedChatToolContracts::guidedChatOutputSchema();
  EXPECT_EQ(GuidedChatToolContracts::askUserSpec().outputSchema, schema);
  EXPECT_EQ(GuidedChatToolContracts::proposeOptionsSpec().outputSchema, schema);
  const AnyCodableValue answer =
      json(R"({"status": "sent", "tool": "ask_user", "chat_id": "c", "message_id": "m"})");
  EXPECT_EQ(joined(schemaViolations(schema, answer)), "");
  AnyCodableValue extra = answer;
  extra.asObject()->set("note", "x");
  EXPECT_FALSE(schemaViolations(schema, extra).empty());
  AnyCodableValue partial = answer;
  partial.asObject()->erase("message_id");
  EXPECT_FALSE(schemaViolations(schema, partial).empty());
}

}  // namespace
}  // namespace zorvik
