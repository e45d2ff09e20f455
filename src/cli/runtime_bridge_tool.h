// Tools that the running desktop application performs: the input goes to the application through
// the runtime control bridge, and its answer is the tool's answer.
#pragma once

#include <filesystem>
#include <memory>

#include "tools/bridge/runtime_control_bridge.h"
#include "tools/framework/agent_tool.h"

namespace zorvik {

// How long a bridge call waits for the application: 30 seconds for the board mutations
// (create_cards, group_cards, edit_cards, delete_cards, resize_cards, compile_html, parse_pdf),
// 8 seconds for every other command.
double runtimeBridgeTimeoutSeconds(std::string_view toolName);

// A tool with `spec` whose call sends command spec.name with the input as arguments. The answer is
// the application's payload (also when it reports failure); ok without payload answers
// {"status":"ok","ok":true}; a failure without payload answers the board mutation tools' own
// failure shape (WorkspaceRuntimeToolContracts::runtimeBridgeFailurePayload) and, for any other
// tool, {"status":"error","ok":false,"error_code":..., "message":...}, null where the response has
// none. Input that is not an object throws std::invalid_argument("<name> expects a JSON object
// input.").
std::shared_ptr<AnyAgentTool> makeRuntimeBridgeTool(
    AgentToolSpec spec, std::filesystem::path projectURL,
    std::shared_ptr<const RuntimeControlBridge> bridge);

}  // namespace zorvik
