#include "cli/agent_commands.h"

#include "cli/board_grep_tool.h"
#include "cli/project_discovery.h"
#include "cli/runtime_bridge_tool.h"
#include "cli/tool_result_reporting.h"
#include "cli/zorvik_cli_error.h"
#include "tools/cards/board_get_card_content_tool.h"
#include "tools/cards/board_list_card_metadata_tool.h"
#include "tools/cards/board_search_cards_tool.h"
#include "tools/cards/board_search_in_card_tool.h"
#include "tools/framework/list_tools_tool.h"
#include "tools/framework/tool_details_tool.h"
#include "tools/layout/focus_card_tool.h"
#include "tools/layout/get_group_layout_tool.h"
#include "tools/layout/list_card_layouts_tool.h"
#include "tools/layout/screenshot_tool.h"
#include "tools/layout/viewport_state_tool.h"
#include "tools/mutations/guided_chat_tool_contracts.h"
#include "tools/mutations/workspace_runtime_tool_contracts.h"
#include "workspace_store/cli_workspace_cards_loader.h"

namespace zorvik {
namespace {

constexpr int kAgentCallFailureStatus = 8;

std::string stringMember(const AnyCodableValue& value, std::string_view key) {
  const AnyCodableValue* member = value.member(key);
  return member && member->asString() ? *member->asString() : std::string();
}

}  // namespace

std::unique_ptr<AgentToolRegistry> buildAgentToolRegistry(const std::filesystem::path& projectURL) {
  CLIWorkspaceLoadedBoard board;
  try {
    board = CLIWorkspaceCardsLoader::loadBoard(projectURL, WorkspaceProjectSnapshotStore());
  } catch (const std::exception& error) {
    throw ZorvikCLIError::invalidArguments(std::string("Failed to load project cards: ") +
                                           error.what());
  }
  auto registry = std::make_unique<AgentToolRegistry>();
  const SharedCards cards(std::move(board.cards));
  // In the catalogue's order of registration; list_tools and tool_details come last.
  registry->registerTool(std::make_shared<BoardSearchCardsTool>(cards, projectURL));
  registry->registerTool(makeBoardGrepTool(cards));
  registry->registerTool(std::make_shared<BoardListCardMetadataTool>(
      cards, std::move(board.loadDiagnostics), projectURL));
  registry->registerTool(std::make_shared<BoardGetCardContentTool>(cards, projectURL));
  registry->registerTool(std::make_shared<BoardSearchInCardTool>(cards));
  registry->registerTool(std::make_shared<ListCardLayoutsTool>(projectURL));
  registry->registerTool(std::make_shared<GetGroupLayoutTool>(projectURL));
  registry->registerTool(std::make_shared<FocusCardTool>(projectURL));
  registry->registerTool(std::make_shared<ScreenshotTool>(projectURL));
  registry->registerTool(std::make_shared<ViewportStateTool>(projectURL));
  const auto bridge = std::make_shared<const RuntimeControlBridge>();
  const AgentToolSpec bridgeSpecs[] = {
      GuidedChatToolContracts::askUserSpec(),
      GuidedChatToolContracts::proposeOptionsSpec(),
      WorkspaceRuntimeToolContracts::createCardsSpec(),
      WorkspaceRuntimeToolContracts::groupCardsSpec(),
      WorkspaceRuntimeToolContracts::editCardsSpec(),
      WorkspaceRuntimeToolContracts::deleteCardsSpec(),
      WorkspaceRuntimeToolContracts::resizeCardsSpec(),
      WorkspaceRuntimeToolContracts::compileHTMLSpec(),
      WorkspaceRuntimeToolContracts::parsePDFSpec(),
  };
  for (const AgentToolSpec& spec : bridgeSpecs) {
    registry->registerTool(makeRuntimeBridgeTool(spec, projectURL, bridge));
  }
  registry->registerTool(std::make_shared<ListToolsTool>(*registry));
  registry->registerTool(std::make_shared<ToolDetailsTool>(*registry));
  return registry;
}

namespace {

// The registry of one command, kept with the board its tools hold until the process ends.
// Freeing a large board piece by piece at exit costs more than many commands' own work, and the
// system takes the memory back at once. The registry stays reachable from here, so leak checkers
// do not count it.
const AgentToolRegistry& commandRegistry(const std::filesystem::path& projectURL) {
  static auto* kept = new std::vector<std::unique_ptr<AgentToolRegistry>>();
  kept->push_back(buildAgentToolRegistry(projectURL));
  return *kept->back();
}

}  // namespace

void runAgentListTools(const AgentListToolsOptions& options, std::ostream& out) {
  const auto projectURL = resolveAgentProjectURL(options.projectPath, options.appBundlePath);
  const AgentToolRegistry& registry = commandRegistry(projectURL);
  const AnyCodableValue result =
      ListToolsTool(registry).run(JSONObject{}, AgentToolContext::forSingleCall());
  const AnyCodableValue* tools = result.member("tools");
  if (options.asJSON || !tools || !tools->asArray()) {
    out << result.jsonString().value_or("{}") << '\n';
    return;
  }
  for (const AnyCodableValue& entry : *tools->asArray()) {
    if (!entry.isObject()) continue;
    std::string name = stringMember(entry, "name");
    if (!entry.member("name") || !entry.member("name")->asString()) name = "unknown";
    out << name << ": " << stringMember(entry, "summary") << '\n';
  }
}

void runAgentToolDetails(const AgentToolDetailsOptions& options, std::ostream& out) {
  const auto projectURL = resolveAgentProjectURL(options.projectPath, options.appBundlePath);
  const AgentToolRegistry& registry = commandRegistry(projectURL);
  JSONObject input{{"name", options.toolName}};
  if (options.cardType && !options.cardType->empty()) input.set("card_type", *options.cardType);
  AnyCodableValue result;
  try {
    result = ToolDetailsTool(registry).run(input, AgentToolContext::forSingleCall());
  } catch (const std::exception& error) {
    throw ZorvikCLIError::invalidArguments(formatToolInvocationError(options.toolName, error));
  }
  if (!options.asJSON) {
    out << "name: " << stringMember(result, "name") << '\n';
    out << "summary: " << stringMember(result, "summary") << '\n';
    const std::string notes = stringMember(result, "notes");
    if (!notes.empty()) out << "notes: " << notes << '\n';
    out << '\n';
  }
  out << result.jsonString().value_or("{}") << '\n';
}

void runAgentCall(const AgentCallOptions& options, std::ostream& out) {
  const auto projectURL = resolveAgentProjectURL(options.projectPath, options.appBundlePath);
  const auto tool = commandRegistry(projectURL).tool(options.toolName);
  if (!tool) throw ZorvikCLIError::invalidArguments("Unknown agent tool: " + options.toolName);
  AnyCodableValue input = options.arguments;
  if (JSONObject* members = input.asObject(); members && !members->contains("project_path")) {
    members->set("project_path", projectURL.string());
  }
  AnyCodableValue result;
  try {
    result = tool->run(input, AgentToolContext::forSingleCall());
  } catch (const std::exception& error) {
    throw ZorvikCLIError::invalidArguments(formatToolInvocationError(options.toolName, error));
  }
  reportToolResult(out, result, kAgentCallFailureStatus);
}

}  // namespace zorvik
