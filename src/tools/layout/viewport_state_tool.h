// viewport_state: where the running application's camera (the user's or the agent's) is: its
// center, zoom, size and bounds, as the application words them.
//
// If the application's heartbeat is live, the bridge command "viewport_state" is sent with the
// camera scope (8 s). Without a live heartbeat the tool answers at once, writing no request.
// The unbound-project case throws std::invalid_argument; undecodable input throws
// DecodingError; every other failure is an answer. Immutable; concurrent runs are safe, each
// blocking its thread while it waits.
#pragma once

#include <filesystem>
#include <optional>

#include "tools/bridge/runtime_control_bridge.h"
#include "tools/framework/agent_tool.h"

namespace zorvik {

class ViewportStateTool final : public AgentTool {
 public:
  ViewportStateTool(std::optional<std::filesystem::path> defaultProjectURL,
                    RuntimeControlBridge bridge = {});

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: project_path, camera_scope ("user" default, or "agent"); the application receives
  // {"camera_scope": scope}.
  //
  // Answer on success: the application's payload as it is, or {status "ok", camera_scope} when
  // it sent no payload. On failure: status "error", engine_mode, camera_scope, error_code, message.
  // Without the application: engine_mode "headless", error_code "runtime_unavailable", message
  // "Desktop runtime not connected.". On an application failure: its payload laid over the shape,
  // engine_mode the payload's or "runtime", error_code the response's or "runtime_error", message
  // the response's or "Runtime command failed.".
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  std::optional<std::filesystem::path> defaultProjectURL_;
  RuntimeControlBridge bridge_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
