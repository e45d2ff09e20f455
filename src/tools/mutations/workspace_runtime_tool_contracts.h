// WorkspaceRuntimeToolContracts: the contracts of the tools that the running desktop application
// performs on a live board: create_cards, group_cards, edit_cards, delete_cards, resize_cards,
// compile_html, parse_pdf and the live list_card_metadata. Each AgentToolSpec carries the input and
// output schemas, the examples and the notes that agents act on; the application enforces what the
// notes say. runtimeBridgeFailurePayload stands in for the application's answer when the bridge
// failed without one, in the tool's own answer shape.
//
// All operations are pure and build fresh values, so any thread may call them. The definitions
// are spread over one source file per tool (create_cards_contract.cc, edit_cards_contract.cc, ...)
// and runtime_bridge_failure_payload.cc.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "foundation/json/any_codable_value.h"
#include "tools/framework/agent_tool_spec.h"

namespace zorvik {

class WorkspaceRuntimeToolContracts {
 public:
  static AgentToolSpec createCardsSpec();
  static AgentToolSpec groupCardsSpec();
  static AgentToolSpec editCardsSpec();
  static AgentToolSpec deleteCardsSpec();
  static AgentToolSpec resizeCardsSpec();
  static AgentToolSpec compileHTMLSpec();
  static AgentToolSpec parsePDFSpec();
  // The live application's list_card_metadata: the board-only AgentToolSpec with scope auto
  // (default), selection or board.
  static AgentToolSpec listCardMetadataSpec();
  // The list_card_metadata that reads the project files (BoardListCardMetadataTool's own
  // AgentToolSpec).
  static AgentToolSpec listCardMetadataBoardOnlySpec();
  // The answer of list_card_metadata, with its load diagnostics typed by
  // workspaceCompileDiagnosticSchema.
  static AnyCodableValue listCardMetadataOutputSchema();
  // One WorkspaceCompileDiagnostic: severity, code, message, path, card_id, hint, owner,
  // actionability.
  static AnyCodableValue workspaceCompileDiagnosticSchema();

  // The answer of a mutation tool whose bridge call failed without a payload, for the tools above
  // (by name); nothing for any other tool. `message` is trimmed and, when empty, becomes
  // "<tool> failed before returning a payload."; a blank or absent `errorCode` counts as
  // "runtime_bridge_failed" in reason_codes and error_code. The answer keeps the tool's output
  // shape, with a failed mutation_outcome, an unavailable project_checkpoint_ref and an unverified
  // persistence where the tool answers them. create_cards with errorCode "runtime_timeout" adds
  // the sentences on unknown completion to the message.
  static std::optional<AnyCodableValue> runtimeBridgeFailurePayload(
      std::string_view toolName, const AnyCodableValue& input,
      const std::optional<std::string>& errorCode = std::nullopt,
      const std::optional<std::string>& message = std::nullopt);
};

}  // namespace zorvik
