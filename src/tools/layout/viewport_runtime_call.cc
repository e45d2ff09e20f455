#include "tools/layout/viewport_runtime_call.h"

namespace zorvik {

std::optional<RuntimeToolResponse> callViewportRuntime(const RuntimeControlBridge& bridge,
                                                       const std::filesystem::path& projectURL,
                                                       const std::string& command,
                                                       const AnyCodableValue& arguments,
                                                       const AgentToolContext& context) {
  if (!bridge.isRuntimeAvailable(projectURL)) return std::nullopt;
  return bridge.sendCommand(projectURL, command, arguments, context.runID,
                            kViewportRuntimeTimeoutSeconds);
}

AnyCodableValue overlayRuntimePayload(AnyCodableValue base,
                                      const std::optional<AnyCodableValue>& payload) {
  JSONObject* members = base.asObject();
  const JSONObject* overlay = payload ? payload->asObject() : nullptr;
  if (members == nullptr || overlay == nullptr) return base;
  for (const auto& [key, value] : *overlay) members->set(key, value);
  return base;
}

}  // namespace zorvik
