// The `agent` commands: list the tool catalogue, describe one tool, call one tool.
//
// Each command resolves the project, loads its board and builds the registry, so a project that
// does not load fails every agent command. Answers go to `out`; failures are ZorvikCLIError values.
#pragma once

#include <filesystem>
#include <memory>
#include <ostream>

#include "cli/option_parsers.h"
#include "tools/framework/agent_tool_registry.h"

namespace zorvik {

// Every tool the command line offers for the project at `projectURL`, `list_tools` and
// `tool_details` last. A board that fails to load throws invalidArguments("Failed to load project
// cards: " + reason).
std::unique_ptr<AgentToolRegistry> buildAgentToolRegistry(const std::filesystem::path& projectURL);

void runAgentListTools(const AgentListToolsOptions& options, std::ostream& out);
void runAgentToolDetails(const AgentToolDetailsOptions& options, std::ostream& out);
// Exit status 8 (processFailed) when the answer reports an error; a thrown tool error becomes
// invalidArguments worded by formatToolInvocationError.
void runAgentCall(const AgentCallOptions& options, std::ostream& out);

}  // namespace zorvik
