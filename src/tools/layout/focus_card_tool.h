// focus_card: moves the running application's camera (the user's or the agent's) onto a card.
//
// The card is looked up in the project on disk and its frame's center computed first; then, if
// the application's heartbeat is live, the bridge command "focus_card" is sent (8 s). Without a
// live heartbeat the tool answers at once, writing no request, with the computed center,
// applied_runtime_scroll false and error_code "runtime_unavailable".
//
// Argument errors throw std::invalid_argument ("focus_card card_id is invalid UUID.",
// "focus_card card_id not found.", or the unbound-project message); undecodable input throws
// DecodingError; a project that fails to load throws the load's error. Application failures are
// answers. Immutable; concurrent runs are safe, each blocking its thread while it waits.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "tools/bridge/runtime_control_bridge.h"
#include "tools/framework/agent_tool.h"

namespace zorvik {

class FocusCardTool final : public AgentTool {
 public:
  static constexpr std::string_view kInvalidCardIDMessage = "focus_card card_id is invalid UUID.";
  static constexpr std::string_view kCardNotFoundMessage = "focus_card card_id not found.";

  FocusCardTool(std::optional<std::filesystem::path> defaultProjectURL,
                RuntimeControlBridge bridge = {});

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: project_path, card_id (required), zoom (default 1), persist_viewport, camera_scope
  // ("user" default, or "agent"). The application receives card_id (upper-case UUID), center,
  // zoom, camera_scope, and persist_viewport when given.
  //
  // Answer: resolved_folder_id (the card's parent, null on the board root), resolved_center,
  // zoom, camera_scope, applied_runtime_scroll, error_code, message (both null on success). On
  // success the application's payload members are laid over these and applied_runtime_scroll is
  // true unless the payload says otherwise; on an application failure applied_runtime_scroll is
  // false, error_code the application's or "runtime_error", message the application's or
  // "Runtime command failed.".
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  std::optional<std::filesystem::path> defaultProjectURL_;
  RuntimeControlBridge bridge_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
