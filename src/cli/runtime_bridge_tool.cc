#include "cli/runtime_bridge_tool.h"

#include <array>
#include <stdexcept>

#include "tools/mutations/workspace_runtime_tool_contracts.h"

namespace zorvik {
namespace {

constexpr std::array<std::string_view, 7> kMutationTools = {
    "create_cards", "group_cards",  "edit_cards", "delete_cards",
    "resize_cards", "compile_html", "parse_pdf"};

AnyCodableValue textOrNull(const std::optional<std::string>& text) {
  return text ? AnyCodableValue(*text) : AnyCodableValue();
}

}  // namespace

double runtimeBridgeTimeoutSeconds(std::string_view toolName) {
  for (std::string_view mutation : kMutationTools) {
    if (mutation == toolName) return 30;
  }
  return 8;
}

std::shared_ptr<AnyAgentTool> makeRuntimeBridgeTool(
    AgentToolSpec spec, std::filesystem::path projectURL,
    std::shared_ptr<const RuntimeControlBridge> bridge) {
  const std::string name = spec.name;
  auto handler = [name, projectURL = std::move(projectURL), bridge = std::move(bridge)](
                     const AnyCodableValue& input, const AgentToolContext& context) {
    if (!input.isObject()) throw std::invalid_argument(name + " expects a JSON object input.");
    RuntimeToolResponse response = bridge->sendCommand(projectURL, name, input, context.runID,
                                                       runtimeBridgeTimeoutSeconds(name));
    if (response.payload) return std::move(*response.payload);
    if (response.ok) return AnyCodableValue(JSONObject{{"status", "ok"}, {"ok", true}});
    if (auto failure = WorkspaceRuntimeToolContracts::runtimeBridgeFailurePayload(
            name, input, response.errorCode, response.message)) {
      return std::move(*failure);
    }
    return AnyCodableValue(JSONObject{{"status", "error"},
                                      {"ok", false},
                                      {"error_code", textOrNull(response.errorCode)},
                                      {"message", textOrNull(response.message)}});
  };
  return std::make_shared<AnyAgentTool>(std::move(spec), std::move(handler));
}

}  // namespace zorvik
