#include <gtest/gtest.h>

#include "tools/mutations/workspace_runtime_tool_contracts.h"

namespace zorvik {
namespace {

AnyCodableValue json(std::string_view text) { return AnyCodableValue::parse(text); }

AnyCodableValue failure(std::string_view tool, std::string_view input,
                        std::optional<std::string> errorCode, std::optional<std::string> message) {
  auto payload = WorkspaceRuntimeToolContracts::runtimeBridgeFailurePayload(tool, json(input),
                                                                            errorCode, message);
  if (payload) return std::move(*payload);
  ADD_FAILURE() << tool << " gave no failure payload";
  return {};
}

std::string text(const AnyCodableValue& value, std::string_view key) {
  const AnyCodableValue* member = value.member(key);
  return member && member->asString() ? *member->asString()
                                      : "<no text under " + std::string(key) + ">";
}

constexpr std::string_view kTimeoutWithKey =
    " Mutation completion is unknown. Re-run the exact same create_cards request with "
    "idempotency_key=";
constexpr std::string_view kTimeoutWithoutKey =
    " Mutation completion is unknown. Do not blindly resend create_cards with changed arguments; "
    "confirm board state first, or retry with an explicit idempotency_key.";

TEST(RuntimeBridgeFailurePayloadTest, CreateCardsTimeoutTellsHowToRetry) {
  struct Case {
    std::string input;
    std::string errorCode;
    std::string expectedMessage;
    AnyCodableValue expectedKey;
  };
  const std::string withKey(kTimeoutWithKey);
  const Case cases[] = {
      {R"({"cards": [], "idempotency_key": "k1"})", "runtime_timeout",
       "Timed out." + withKey + "k1 before changing arguments.", "k1"},
      // Numbers and booleans stand for their text.
      {R"({"cards": [], "idempotency_key": 42})", "runtime_timeout",
       "Timed out." + withKey + "42 before changing arguments.", "42"},
      {R"({"cards": [], "idempotency_key": true})", "runtime_timeout",
       "Timed out." + withKey + "true before changing arguments.", "true"},
      {R"({"cards": []})", "runtime_timeout", "Timed out." + std::string(kTimeoutWithoutKey),
       nullptr},
      // A blank key is no key.
      {R"({"cards": [], "idempotency_key": "  "})", "runtime_timeout",
       "Timed out." + std::string(kTimeoutWithoutKey), nullptr},
      {R"({"cards": [], "idempotency_key": {"k": 1}})", "runtime_timeout",
       "Timed out." + std::string(kTimeoutWithoutKey), nullptr},
      // Only a timeout leaves completion unknown.
      {R"({"cards": [], "idempotency_key": "k1"})", "runtime_unavailable", "Timed out.", "k1"},
      {R"({"cards": []})", "runtime_error", "Timed out.", nullptr},
  };
  for (const Case& c : cases) {
    const AnyCodableValue answer = failure("create_cards", c.input, c.errorCode, " Timed out.\n");
    EXPECT_EQ(text(answer, "message"), c.expectedMessage) << c.input << " " << c.errorCode;
    EXPECT_EQ(*answer.member("idempotency_key"), c.expectedKey) << c.input;
    EXPECT_EQ(text(*answer.member("project_checkpoint_ref"), "message"), c.expectedMessage);
  }
}

TEST(RuntimeBridgeFailurePayloadTest, CreateCardsAnswersOneErrorResultPerRequestedCard) {
  const AnyCodableValue answer =
      failure("create_cards", R"({"cards": [{"type": "item"}, {"type": "table"}]})",
              "runtime_unavailable", "Zorvik is not running.");
  const AnyCodableValue expected = json(R"({"created_card_ids": [], "side_effect_card_ids": [],
    "persistence": {"status": "unverified", "expected_card_ids": [], "verified_card_ids": [],
                    "missing_card_ids": [], "message": "Zorvik is not running."},
    "idempotency_key": null, "replayed": false,
    "results": [{"request_index": 0, "card_id": "", "deep_link_url": null, "status": "error",
                 "message": "Zorvik is not running."},
                {"request_index": 1, "card_id": "", "deep_link_url": null, "status": "error",
                 "message": "Zorvik is not running."}],
    "mutation_outcome": {"status": "failed", "reason_codes": ["runtime_unavailable"],
      "target_card_ids": [], "changed_card_ids": [], "before_state_hash": null,
      "after_state_hash": null, "card_effects": []},
    "project_checkpoint_ref": {"status": "unavailable", "checkpoint": null,
                               "message": "Zorvik is not running."},
    "error_code": "runtime_unavailable", "message": "Zorvik is not running."})");
  EXPECT_EQ(answer, expected) << answer.jsonString().value_or("");
}

// Where each tool's answer carries its message.
std::string answerMessage(std::string_view tool, const AnyCodableValue& answer) {
  if (tool != "list_card_metadata") return text(answer, "message");
  const auto* diagnostics = answer.member("board_health")->member("load_diagnostics")->asArray();
  return text(diagnostics->at(0), "message");
}

TEST(RuntimeBridgeFailurePayloadTest, BlankMessageNamesTheToolAndMissingCodeIsBridgeFailure) {
  const std::string_view tools[] = {"create_cards", "group_cards",       "edit_cards",
                                    "delete_cards", "resize_cards",      "compile_html",
                                    "parse_pdf",    "list_card_metadata"};
  for (std::string_view tool : tools) {
    for (const std::optional<std::string>& message :
         {std::optional<std::string>(), std::optional<std::string>(" \n\t")}) {
      const AnyCodableValue answer = failure(tool, "{}", std::nullopt, message);
      EXPECT_EQ(answerMessage(tool, answer),
                std::string(tool) + " failed before returning a payload.");
      if (const AnyCodableValue* outcome = answer.member("mutation_outcome")) {
        EXPECT_EQ(*outcome->member("reason_codes"), json(R"(["runtime_bridge_failed"])")) << tool;
        EXPECT_EQ(*outcome->member("status"), AnyCodableValue("failed")) << tool;
      }
      if (tool != "list_card_metadata") {
        EXPECT_EQ(text(answer, "error_code"), "runtime_bridge_failed") << tool;
      }
    }
  }
}

TEST(RuntimeBridgeFailurePayloadTest, ToolsOutsideTheContractsGetNothing) {
  for (std::string_view tool : {"ask_user", "propose_options", "focus_card", "generate_image",
                                "Create_Cards", "create-cards", ""}) {
    EXPECT_FALSE(WorkspaceRuntimeToolContracts::runtimeBridgeFailurePayload(
                     tool, json(R"({"cards": []})"), "runtime_timeout", "Timed out.")
                     .has_value())
        << tool;
  }
}

TEST(RuntimeBridgeFailurePayloadTest, EditCardsListsEntriesOfEditsOrOfTheCardsAlias) {
  struct Case {
    std::string input;
    std::string expectedResultIDs;
    std::string expectedTargets;
  };
  const Case cases[] = {
      {R"({"edits": [{"card_id": "A"}, {"card_id": " B "}, {"title": "no id"}]})",
       R"(["A", " B ", ""])", R"(["A", "B"])"},
      {R"({"cards": [{"card_id": "C"}, {"card_id": 7}]})", R"(["C", "7"])", R"(["C", "7"])"},
      {R"({"edits": [{"card_id": "A"}], "cards": [{"card_id": "C"}]})", R"(["A"])", R"(["A"])"},
      {R"({"edits": "not a list", "cards": [{"card_id": "C"}]})", R"(["C"])", R"(["C"])"},
      {R"({})", R"([])", R"([])"},
  };
  for (const Case& c : cases) {
    const AnyCodableValue answer = failure("edit_cards", c.input, "runtime_timeout", "Timed out.");
    AnyCodableValue::Array resultIDs;
    for (const auto& result : *answer.member("results")->asArray()) {
      EXPECT_EQ(text(result, "status"), "error");
      EXPECT_EQ(text(result, "message"), "Timed out.");
      resultIDs.push_back(*result.member("card_id"));
    }
    EXPECT_EQ(AnyCodableValue(resultIDs), json(c.expectedResultIDs)) << c.input;
    EXPECT_EQ(*answer.member("mutation_outcome")->member("target_card_ids"),
              json(c.expectedTargets))
        << c.input;
    EXPECT_EQ(text(answer, "error_code"), "runtime_timeout");
  }
}

TEST(RuntimeBridgeFailurePayloadTest, DeleteAndResizeAnswerPerCardWithUnverifiedPersistence) {
  const AnyCodableValue deleted =
      failure("delete_cards", R"({"card_ids": ["A", "A", " ", "B"]})", "runtime_timeout", "Gone?");
  EXPECT_EQ(*deleted.member("results"), json(R"([
    {"card_id": "A", "status": "error", "message": "Gone?"},
    {"card_id": "A", "status": "error", "message": "Gone?"},
    {"card_id": " ", "status": "error", "message": "Gone?"},
    {"card_id": "B", "status": "error", "message": "Gone?"}])"));
  EXPECT_EQ(*deleted.member("persistence"), json(R"({"status": "unverified",
    "expected_card_ids": ["A", "B"], "verified_card_ids": [], "missing_card_ids": [],
    "message": "Gone?"})"));
  EXPECT_EQ(*deleted.member("mutation_outcome")->member("target_card_ids"), json(R"(["A", "B"])"));

  const AnyCodableValue resized = failure(
      "resize_cards", R"({"resizes": [{"card_id": "A", "width": 10, "height": 20}, {"width": 5}]})",
      std::nullopt, "No runtime.");
  EXPECT_EQ(*resized.member("results"), json(R"([
    {"card_id": "A", "status": "error", "message": "No runtime.", "changed": false,
     "card_type": null, "resize_mode": null, "applied_width": null, "applied_height": null},
    {"card_id": "", "status": "error", "message": "No runtime.", "changed": false,
     "card_type": null, "resize_mode": null, "applied_width": null, "applied_height": null}])"));
  EXPECT_EQ(*resized.member("persistence")->member("expected_card_ids"), json(R"(["A"])"));
  for (const char* key : {"mutation_outcome", "project_checkpoint_ref", "error_code", "message"}) {
    EXPECT_NE(resized.member(key), nullptr) << key;
  }
}

TEST(RuntimeBridgeFailurePayloadTest, GroupCardsKeepsTheRequestedGroupShape) {
  const AnyCodableValue answer = failure(
      "group_cards",
      R"({"operation": "set_layout", "group_id": "G", "layout": "grid", "card_ids": ["A", "B"]})",
      "runtime_timeout", "Timed out.");
  const AnyCodableValue expected = json(R"({
    "operation": "set_layout", "layout": "grid", "display_mode": null, "card_ids": ["A", "B"],
    "status": "error", "ordered_child_ids": [], "child_count": 0,
    "mutation_outcome": {"status": "failed", "reason_codes": ["runtime_timeout"],
                         "target_card_ids": ["G", "A", "B"], "changed_card_ids": [],
                         "before_state_hash": null, "after_state_hash": null, "card_effects": []},
    "project_checkpoint_ref": {"status": "unavailable", "checkpoint": null, "message": "Timed out."},
    "error_code": "runtime_timeout", "message": "Timed out."})");
  EXPECT_EQ(answer, expected) << answer.jsonString().value_or("");
  EXPECT_EQ(text(failure("group_cards", "{}", std::nullopt, "x"), "operation"), "unknown");
}

TEST(RuntimeBridgeFailurePayloadTest, CompileHTMLReportsOneRuntimeDiagnosticInCardOrSourceMode) {
  const AnyCodableValue card =
      failure("compile_html", R"({"card_id": "C1"})", "runtime_timeout", "Timed out.");
  EXPECT_EQ(card, json(R"({"status": "error", "mode": "card", "card_id": "C1", "error_count": 1,
    "warning_count": 0, "message": "Timed out.", "error_code": "runtime_timeout",
    "diagnostics": [{"severity": "error", "phase": "runtime", "code": "runtime_bridge_failed",
                     "message": "Timed out.", "line": null, "column": null,
                     "source_url": null}]})"));

  const AnyCodableValue source = failure(
      "compile_html", R"({"source": {"html": "<p>", "css": ""}})", "runtime_timeout", "Timed out.");
  EXPECT_EQ(text(source, "mode"), "source");
  EXPECT_EQ(*source.member("source"), json(R"({"html": "<p>", "css": ""})"));
  EXPECT_EQ(source.member("card_id"), nullptr);
  // A blank card id does not make a card compile.
  EXPECT_EQ(text(failure("compile_html", R"({"card_id": " "})", "x", "y"), "mode"), "source");
}

TEST(RuntimeBridgeFailurePayloadTest, ListCardMetadataReportsARuntimeLoadDiagnostic) {
  struct Case {
    std::string input;
    std::string requested, used, label;
    std::string notFound;
  };
  const Case cases[] = {
      {R"({"scope": "selection"})", "selection", "selection", "Selection", "[]"},
      {R"({"scope": " Board ", "card_ids": ["A"]})", "board", "board", "Board", R"(["A"])"},
      {R"({"scope": "auto", "card_ids": ["A", "B"]})", "auto", "selection", "Selection",
       R"(["A", "B"])"},
      {R"({"card_ids": ["A"]})", "auto", "selection", "Selection", R"(["A"])"},
      {R"({"card_ids": []})", "auto", "board", "Board", "[]"},
      {R"({})", "auto", "board", "Board", "[]"},
  };
  for (const Case& c : cases) {
    const AnyCodableValue answer =
        failure("list_card_metadata", c.input, "runtime_timeout", "Timed out.");
    EXPECT_EQ(text(answer, "scope_requested"), c.requested) << c.input;
    EXPECT_EQ(text(answer, "scope_used"), c.used) << c.input;
    EXPECT_EQ(text(answer, "scope_label"), c.label) << c.input;
    EXPECT_EQ(*answer.member("not_found"), json(c.notFound)) << c.input;
    EXPECT_EQ(*answer.member("total_cards"), AnyCodableValue(0));
    EXPECT_EQ(*answer.member("results"), json("[]"));
  }
  const AnyCodableValue answer = failure("list_card_metadata", R"({"project_path": "/tmp/board"})",
                                         "runtime_timeout", "Timed out.");
  EXPECT_EQ(*answer.member("board_health"), json(R"({"status": "error", "load_error_count": 1,
    "load_diagnostics": [{"severity": "error", "code": "runtime_bridge_failed",
      "message": "Timed out.", "path": "/tmp/board", "card_id": null,
      "hint": "Retry once the live Zorvik runtime is available.", "owner": "runtime",
      "actionability": "inspect"}]})"));
}

TEST(RuntimeBridgeFailurePayloadTest, ParsePDFAnswersEmptyResultsForTheOperation) {
  const AnyCodableValue answer =
      failure("parse_pdf", R"({"pdf_path": "a.pdf"})", "runtime_timeout", "Timed out.");
  EXPECT_EQ(text(answer, "operation"), "inspect");
  EXPECT_EQ(text(answer, "status"), "error");
  EXPECT_EQ(*answer.member("embedded_images"), json("[]"));
  for (const char* key :
       {"document", "embedded_image_summary", "rendered_page", "imported_group"}) {
    EXPECT_EQ(*answer.member(key), json("{}")) << key;
  }
  EXPECT_EQ(text(*answer.member("mutation_outcome"), "status"), "failed");
  EXPECT_EQ(
      text(failure("parse_pdf", R"({"operation": "import_slider_group"})", "x", "y"), "operation"),
      "import_slider_group");
}

}  // namespace
}  // namespace zorvik
