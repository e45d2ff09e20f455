// screenshot: asks the running application for pictures of the board: the viewport (board mode,
// optionally focused on a target first) or isolated full renders of one card or several.
//
// If the application's heartbeat is live, the bridge command "screenshot" is sent with the input
// as given (8 s). Without a live heartbeat the tool answers at once, writing no request, with
// status "error", error_code "runtime_unavailable", engine_mode "headless" and no image.
//
// The tool's media_output_paths ("image_path", "image_paths[*]", "snapshots[*].image_path") name
// where the answer holds image files, so that a run loop can show them to its planner.
//
// Argument errors throw std::invalid_argument (card mode without card_id, cards mode without
// card_ids, or the unbound-project message); undecodable input throws DecodingError. Application
// failures are answers. Immutable; concurrent runs are safe, each blocking its thread while it
// waits.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "tools/bridge/runtime_control_bridge.h"
#include "tools/framework/agent_tool.h"

namespace zorvik {

class ScreenshotTool final : public AgentTool {
 public:
  static constexpr std::string_view kCardModeMessage =
      "screenshot snapshot_mode=card requires card_id.";
  static constexpr std::string_view kCardsModeMessage =
      "screenshot snapshot_mode=cards requires non-empty card_ids.";

  ScreenshotTool(std::optional<std::filesystem::path> defaultProjectURL,
                 RuntimeControlBridge bridge = {});

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: project_path, card_id, card_ids, center, zoom (default 1), size, folder_id, format,
  // output_path, camera_scope ("user" default), snapshot_mode ("board" default, "card", "cards"),
  // focus.
  //
  // Answer on success: the application's payload laid over status "ok", snapshot_mode, zoom and
  // camera_scope. On failure: status "error", snapshot_mode, focus_applied false, image_path null,
  // image_paths and snapshots empty, captured_rect null, zoom, folder_id (the input's or null),
  // engine_mode, camera_scope, error_code and message. Without the application engine_mode is
  // "headless". On an application failure its payload is laid over the shape (so engine_mode is
  // the payload's or "runtime"), error_code is the response's or "runtime_error", and message the
  // response's, else the payload's, else null.
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  std::optional<std::filesystem::path> defaultProjectURL_;
  RuntimeControlBridge bridge_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
