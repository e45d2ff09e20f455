// How the viewport tools (focus_card, screenshot, viewport_state) reach the running desktop
// application, and the fixed words of their answers when it cannot be reached.
//
// The heartbeat is tested before anything is written: with no live application the call returns
// at once and leaves no request in the inbox. Stateless; safe from any thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/json/any_codable_value.h"
#include "tools/bridge/runtime_control_bridge.h"
#include "tools/framework/agent_tool_context.h"

namespace zorvik {

inline constexpr double kViewportRuntimeTimeoutSeconds = 8.0;

inline constexpr std::string_view kRuntimeUnavailableCode = "runtime_unavailable";
inline constexpr std::string_view kRuntimeUnavailableMessage = "Desktop runtime not connected.";
// The code of a failing application answer that names none.
inline constexpr std::string_view kRuntimeErrorCode = "runtime_error";
inline constexpr std::string_view kRuntimeCommandFailedMessage = "Runtime command failed.";

// engine_mode of an answer made without the application, and of one the application took part in
// but did not word itself.
inline constexpr std::string_view kHeadlessEngineMode = "headless";
inline constexpr std::string_view kRuntimeEngineMode = "runtime";

// nullopt when the project's heartbeat is absent, stale or undecodable (no request is written).
// Otherwise the bridge's response to `command` with `arguments`, waited for at most
// kViewportRuntimeTimeoutSeconds, under the context's run id.
std::optional<RuntimeToolResponse> callViewportRuntime(const RuntimeControlBridge& bridge,
                                                       const std::filesystem::path& projectURL,
                                                       const std::string& command,
                                                       const AnyCodableValue& arguments,
                                                       const AgentToolContext& context);

// `base` with every member of `payload` written over it, when both are objects; the
// application's words win. A payload that is no object leaves `base` as it is.
AnyCodableValue overlayRuntimePayload(AnyCodableValue base,
                                      const std::optional<AnyCodableValue>& payload);

}  // namespace zorvik
