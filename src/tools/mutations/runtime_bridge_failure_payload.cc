// WorkspaceRuntimeToolContracts::runtimeBridgeFailurePayload: the answer of a mutation tool whose
// bridge call failed without a payload, in the shape of the tool's own answer.
#include <algorithm>
#include <string>
#include <vector>

#include "foundation/json/value_encoder.h"
#include "foundation/text.h"
#include "tools/mutations/workspace_runtime_tool_contracts.h"
#include "workspace_store/workspace_compile_diagnostic.h"

namespace zorvik {
namespace {

constexpr std::string_view kDefaultErrorCode = "runtime_bridge_failed";

struct BridgeFailure {
  std::string_view toolName;
  const AnyCodableValue& input;
  std::string errorCode;  // never empty
  std::string message;    // never empty
};

// Text, or a number or boolean in text form; nothing for other values.
std::optional<std::string> scalarString(const AnyCodableValue* value) {
  if (!value) return std::nullopt;
  if (const std::string* text = value->asString()) return *text;
  if (const bool* flag = value->asBool()) return *flag ? "true" : "false";
  if (value->asInt() || value->asDouble()) return value->compactJSONString();
  return std::nullopt;
}

std::optional<std::string> inputText(const BridgeFailure& failure, std::string_view key) {
  return scalarString(failure.input.member(key));
}

AnyCodableValue textOrNull(const std::optional<std::string>& text) {
  return text ? AnyCodableValue(*text) : AnyCodableValue();
}

// The elements of the input array under `key`; empty when it is absent or no array.
const AnyCodableValue::Array& inputEntries(const AnyCodableValue& input, std::string_view key) {
  static const AnyCodableValue::Array none;
  const AnyCodableValue* value = input.member(key);
  const AnyCodableValue::Array* entries = value ? value->asArray() : nullptr;
  return entries ? *entries : none;
}

// The ids of an id array as given, in text form; entries that are no scalar are skipped.
std::vector<std::string> givenIDs(const AnyCodableValue::Array& entries) {
  std::vector<std::string> ids;
  for (const AnyCodableValue& entry : entries) {
    if (auto id = scalarString(&entry)) ids.push_back(std::move(*id));
  }
  return ids;
}

// The `card_id` of each entry in text form, "" where an entry has none.
std::vector<std::string> entryCardIDs(const AnyCodableValue::Array& entries) {
  std::vector<std::string> ids;
  ids.reserve(entries.size());
  for (const AnyCodableValue& entry : entries) {
    ids.push_back(scalarString(entry.member("card_id")).value_or(""));
  }
  return ids;
}

// The cards a request aims at: trimmed, blanks dropped, each once, in request order.
std::vector<std::string> targetIDs(const std::vector<std::string>& ids) {
  std::vector<std::string> targets;
  for (const std::string& id : ids) {
    std::string trimmed = trimWhitespaceAndNewlines(id);
    if (trimmed.empty()) continue;
    if (std::find(targets.begin(), targets.end(), trimmed) == targets.end()) {
      targets.push_back(std::move(trimmed));
    }
  }
  return targets;
}

AnyCodableValue runtimeFailureMutationOutcomeValue(const BridgeFailure& failure,
                                                   const std::vector<std::string>& targets) {
  return ObjectEncoder()
      .add("status", "failed")
      .add("reason_codes", std::vector<std::string>{failure.errorCode})
      .add("target_card_ids", targets)
      .add("changed_card_ids", std::vector<std::string>{})
      .add("before_state_hash", AnyCodableValue())
      .add("after_state_hash", AnyCodableValue())
      .add("card_effects", AnyCodableValue::Array{})
      .build();
}

AnyCodableValue runtimeFailureCheckpointRefValue(const BridgeFailure& failure) {
  return JSONObject{
      {"status", "unavailable"}, {"checkpoint", nullptr}, {"message", failure.message}};
}

// Nothing is known to be saved or lost: the expected cards stay unverified.
AnyCodableValue runtimeFailurePersistenceVerification(const BridgeFailure& failure,
                                                      const std::vector<std::string>& expected) {
  return ObjectEncoder()
      .add("status", "unverified")
      .add("expected_card_ids", expected)
      .add("verified_card_ids", std::vector<std::string>{})
      .add("missing_card_ids", std::vector<std::string>{})
      .add("message", failure.message)
      .build();
}

// mutation_outcome, project_checkpoint_ref, error_code and message.
ObjectEncoder& addMutationTail(ObjectEncoder& answer, const BridgeFailure& failure,
                               const std::vector<std::string>& targets) {
  return answer.add("mutation_outcome", runtimeFailureMutationOutcomeValue(failure, targets))
      .add("project_checkpoint_ref", runtimeFailureCheckpointRefValue(failure))
      .add("error_code", failure.errorCode)
      .add("message", failure.message);
}

AnyCodableValue cardResult(const std::string& cardID, const BridgeFailure& failure) {
  return JSONObject{{"card_id", cardID}, {"status", "error"}, {"message", failure.message}};
}

AnyCodableValue createCardsFailure(const BridgeFailure& bridgeFailure) {
  std::optional<std::string> key = inputText(bridgeFailure, "idempotency_key");
  if (key && trimWhitespaceAndNewlines(*key).empty()) key.reset();
  BridgeFailure failure = bridgeFailure;
  if (failure.errorCode == "runtime_timeout") {
    // The application may have carried the request out before the bridge gave up.
    failure.message += key ? " Mutation completion is unknown. Re-run the exact same create_cards "
                             "request with idempotency_key=" +
                                 *key + " before changing arguments."
                           : " Mutation completion is unknown. Do not blindly resend create_cards "
                             "with changed arguments; confirm board state first, or retry with an "
                             "explicit idempotency_key.";
  }
  const AnyCodableValue::Array& cards = inputEntries(failure.input, "cards");
  AnyCodableValue::Array results;
  for (size_t index = 0; index < cards.size(); ++index) {
    results.push_back(JSONObject{{"request_index", index},
                                 {"card_id", ""},
                                 {"deep_link_url", nullptr},
                                 {"status", "error"},
                                 {"message", failure.message}});
  }
  ObjectEncoder answer;
  answer.add("created_card_ids", std::vector<std::string>{})
      .add("side_effect_card_ids", std::vector<std::string>{})
      .add("persistence", runtimeFailurePersistenceVerification(failure, {}))
      .add("idempotency_key", textOrNull(key))
      .add("replayed", false)
      .add("results", AnyCodableValue(std::move(results)));
  return addMutationTail(answer, failure, {}).build();
}

AnyCodableValue groupCardsFailure(const BridgeFailure& failure) {
  const std::vector<std::string> cardIDs = givenIDs(inputEntries(failure.input, "card_ids"));
  std::vector<std::string> targets = cardIDs;
  if (auto groupID = inputText(failure, "group_id")) targets.insert(targets.begin(), *groupID);
  ObjectEncoder answer;
  answer.add("operation", inputText(failure, "operation").value_or("unknown"))
      .add("layout", textOrNull(inputText(failure, "layout")))
      .add("display_mode", textOrNull(inputText(failure, "display_mode")))
      .add("card_ids", cardIDs)
      .add("status", "error")
      .add("ordered_child_ids", std::vector<std::string>{})
      .add("child_count", 0);
  return addMutationTail(answer, failure, targetIDs(targets)).build();
}

AnyCodableValue editCardsFailure(const BridgeFailure& failure) {
  const AnyCodableValue* edits = failure.input.member("edits");
  const std::vector<std::string> cardIDs =
      entryCardIDs(inputEntries(failure.input, edits && edits->isArray() ? "edits" : "cards"));
  AnyCodableValue::Array results;
  for (const std::string& cardID : cardIDs) results.push_back(cardResult(cardID, failure));
  ObjectEncoder answer;
  answer.add("results", AnyCodableValue(std::move(results)));
  return addMutationTail(answer, failure, targetIDs(cardIDs)).build();
}

AnyCodableValue deleteCardsFailure(const BridgeFailure& failure) {
  const std::vector<std::string> cardIDs = givenIDs(inputEntries(failure.input, "card_ids"));
  const std::vector<std::string> targets = targetIDs(cardIDs);
  AnyCodableValue::Array results;
  for (const std::string& cardID : cardIDs) results.push_back(cardResult(cardID, failure));
  ObjectEncoder answer;
  answer.add("results", AnyCodableValue(std::move(results)))
      .add("persistence", runtimeFailurePersistenceVerification(failure, targets));
  return addMutationTail(answer, failure, targets).build();
}

AnyCodableValue resizeCardsFailure(const BridgeFailure& failure) {
  const std::vector<std::string> cardIDs = entryCardIDs(inputEntries(failure.input, "resizes"));
  const std::vector<std::string> targets = targetIDs(cardIDs);
  AnyCodableValue::Array results;
  for (const std::string& cardID : cardIDs) {
    AnyCodableValue result = cardResult(cardID, failure);
    JSONObject& fields = *result.asObject();
    fields.set("changed", false);
    for (const char* unknown : {"card_type", "resize_mode", "applied_width", "applied_height"}) {
      fields.set(unknown, nullptr);
    }
    results.push_back(std::move(result));
  }
  ObjectEncoder answer;
  answer.add("results", AnyCodableValue(std::move(results)))
      .add("persistence", runtimeFailurePersistenceVerification(failure, targets));
  return addMutationTail(answer, failure, targets).build();
}

AnyCodableValue runtimeCompileDiagnostic(const BridgeFailure& failure) {
  return JSONObject{{"severity", "error"},        {"phase", "runtime"}, {"code", kDefaultErrorCode},
                    {"message", failure.message}, {"line", nullptr},    {"column", nullptr},
                    {"source_url", nullptr}};
}

AnyCodableValue compileHTMLFailure(const BridgeFailure& failure) {
  std::optional<std::string> cardID = inputText(failure, "card_id");
  if (cardID && trimWhitespaceAndNewlines(*cardID).empty()) cardID.reset();
  ObjectEncoder answer;
  answer.add("status", "error").add("mode", cardID ? "card" : "source");
  if (cardID) {
    answer.add("card_id", *cardID);
  } else {
    const AnyCodableValue* source = failure.input.member("source");
    answer.add("source", source ? *source : AnyCodableValue());
  }
  return answer.add("error_count", 1)
      .add("warning_count", 0)
      .add("message", failure.message)
      .add("diagnostics", AnyCodableValue::Array{runtimeCompileDiagnostic(failure)})
      .add("error_code", failure.errorCode)
      .build();
}

AnyCodableValue runtimeProjectDiagnostic(const BridgeFailure& failure) {
  WorkspaceCompileDiagnostic diagnostic{
      .severity = WorkspaceCompileSeverity::error,
      .code = std::string(kDefaultErrorCode),
      .message = failure.message,
      .path = inputText(failure, "project_path").value_or(""),
      .cardID = std::nullopt,
      .hint = "Retry once the live Zorvik runtime is available.",
      .owner = WorkspaceCompileDiagnosticOwner::runtime,
      .actionability = WorkspaceCompileDiagnosticActionability::inspect,
  };
  AnyCodableValue value = diagnostic.encode();
  value.asObject()->set("card_id", nullptr);
  return value;
}

AnyCodableValue listCardMetadataFailure(const BridgeFailure& failure) {
  const std::vector<std::string> cardIDs = givenIDs(inputEntries(failure.input, "card_ids"));
  std::string requested =
      lowercased(trimWhitespaceAndNewlines(inputText(failure, "scope").value_or("")));
  if (requested.empty()) requested = "auto";
  // auto reads the explicit ids when there are some, otherwise the board.
  const bool selection =
      requested == "selection" || (requested != "board" && !targetIDs(cardIDs).empty());
  const AnyCodableValue health =
      JSONObject{{"status", "error"},
                 {"load_error_count", 1},
                 {"load_diagnostics", AnyCodableValue::Array{runtimeProjectDiagnostic(failure)}}};
  return ObjectEncoder()
      .add("scope_requested", requested)
      .add("scope_used", selection ? "selection" : "board")
      .add("scope_label", selection ? "Selection" : "Board")
      .add("total_cards", 0)
      .add("board_health", health)
      .add("results", AnyCodableValue::Array{})
      .add("not_found", cardIDs)
      .build();
}

AnyCodableValue parsePDFFailure(const BridgeFailure& failure) {
  const AnyCodableValue nothing = JSONObject{};
  ObjectEncoder answer;
  answer.add("operation", inputText(failure, "operation").value_or("inspect"))
      .add("status", "error")
      .add("document", nothing)
      .add("embedded_images", AnyCodableValue::Array{})
      .add("embedded_image_summary", nothing)
      .add("rendered_page", nothing)
      .add("imported_group", nothing);
  return addMutationTail(answer, failure, {}).build();
}

}  // namespace

std::optional<AnyCodableValue> WorkspaceRuntimeToolContracts::runtimeBridgeFailurePayload(
    std::string_view toolName, const AnyCodableValue& input,
    const std::optional<std::string>& errorCode, const std::optional<std::string>& message) {
  using Builder = AnyCodableValue (*)(const BridgeFailure&);
  static constexpr std::pair<std::string_view, Builder> kBuilders[] = {
      {"create_cards", createCardsFailure},
      {"group_cards", groupCardsFailure},
      {"edit_cards", editCardsFailure},
      {"delete_cards", deleteCardsFailure},
      {"resize_cards", resizeCardsFailure},
      {"compile_html", compileHTMLFailure},
      {"list_card_metadata", listCardMetadataFailure},
      {"parse_pdf", parsePDFFailure},
  };
  for (const auto& [name, build] : kBuilders) {
    if (name != toolName) continue;
    std::string code = trimWhitespaceAndNewlines(errorCode.value_or(""));
    std::string text = trimWhitespaceAndNewlines(message.value_or(""));
    if (code.empty()) code = kDefaultErrorCode;
    if (text.empty()) text = std::string(toolName) + " failed before returning a payload.";
    return build(BridgeFailure{toolName, input, std::move(code), std::move(text)});
  }
  return std::nullopt;
}

}  // namespace zorvik
