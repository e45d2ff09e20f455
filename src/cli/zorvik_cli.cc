#include "cli/zorvik_cli.h"

#include "cli/agent_commands.h"
#include "cli/discovery_commands.h"
#include "cli/help_documents.h"
#include "cli/project_commands.h"
#include "cli/version_info.h"
#include "cli/zorvik_cli_error.h"

namespace zorvik {
namespace {

bool isHelpWord(const std::string& word) {
  return word == "-h" || word == "--help" || word == "help";
}

Arguments tail(const Arguments& arguments, size_t from) {
  return from >= arguments.size() ? Arguments{}
                                  : Arguments(arguments.begin() + from, arguments.end());
}

}  // namespace

template <class Options, class Command>
void ZorvikCLI::dispatch(const ParseResult<Options>& parsed, Command command) {
  if (const auto* help = std::get_if<HelpRequest>(&parsed)) {
    printHelp(out_, help->topic, help->asJSON);
    return;
  }
  command(std::get<Options>(parsed), out_);
}

void ZorvikCLI::run(const Arguments& arguments) {
  if (arguments.empty()) {
    printHelp(out_, HelpTopic::root, false);
    return;
  }
  const std::string& command = arguments.front();
  const Arguments rest = tail(arguments, 1);
  if (command == "project") {
    runProject(rest);
  } else if (command == "runtime") {
    runRuntime(rest);
  } else if (command == "agent") {
    runAgent(rest);
  } else if (command == "doctor") {
    const FlagOnlyOptions options = parseFlagOnlyOptions(rest);
    if (options.help) {
      printHelp(out_, HelpTopic::doctor, options.asJSON);
    } else {
      runDoctor(options, out_);
    }
  } else if (command == "schema") {
    runSchema(rest);
  } else if (command == "help") {
    runHelp(rest, out_);
  } else if (command == "version" || command == "-v" || command == "--version") {
    runVersion(rest, out_);
  } else if (command == "-h" || command == "--help") {
    printHelp(out_, HelpTopic::root, containsJSONFlag(rest));
  } else {
    throw ZorvikCLIError::invalidArguments("Unknown command: " + command);
  }
}

void ZorvikCLI::runProject(const Arguments& rest) {
  if (rest.empty()) {
    printHelp(out_, HelpTopic::project, false);
    return;
  }
  const std::string& sub = rest.front();
  const Arguments options = tail(rest, 1);
  if (sub == "current") {
    dispatch(parseProjectCurrentOptions(options), printCurrentProject);
  } else if (sub == "validate") {
    dispatch(parseProjectValidateOptions(options), runProjectValidate);
  } else if (sub == "inspect") {
    dispatch(parseToolInvocationOptions("inspect", options, HelpTopic::project), runProjectInspect);
  } else if (isHelpWord(sub)) {
    printHelp(out_, HelpTopic::project, containsJSONFlag(options));
  } else {
    throw ZorvikCLIError::invalidArguments("Unknown project command: " + sub);
  }
}

void ZorvikCLI::runRuntime(const Arguments& rest) {
  if (rest.empty()) {
    printHelp(out_, HelpTopic::runtime, false);
    return;
  }
  const std::string& sub = rest.front();
  const Arguments options = tail(rest, 1);
  if (sub == "inspect") {
    dispatch(parseToolInvocationOptions("inspect", options, HelpTopic::runtime), runRuntimeInspect);
  } else if (isHelpWord(sub)) {
    printHelp(out_, HelpTopic::runtime, containsJSONFlag(options));
  } else {
    throw ZorvikCLIError::invalidArguments("Unknown runtime command: " + sub);
  }
}

void ZorvikCLI::runAgent(const Arguments& rest) {
  if (rest.empty()) {
    printHelp(out_, HelpTopic::agent, false);
    return;
  }
  const std::string& sub = rest.front();
  const Arguments options = tail(rest, 1);
  if (sub == "list-tools") {
    dispatch(parseAgentListToolsOptions(options), runAgentListTools);
  } else if (sub == "tool-details") {
    dispatch(parseAgentToolDetailsOptions(options), runAgentToolDetails);
  } else if (sub == "call") {
    dispatch(parseToolInvocationOptions("agent call", options, HelpTopic::agent), runAgentCall);
  } else if (isHelpWord(sub)) {
    printHelp(out_, HelpTopic::agent, containsJSONFlag(options));
  } else {
    throw ZorvikCLIError::invalidArguments("Unknown agent command: " + sub);
  }
}

void ZorvikCLI::runSchema(const Arguments& rest) {
  const FlagOnlyOptions options = parseFlagOnlyOptions(rest);
  if (options.help) {
    printHelp(out_, HelpTopic::schema, options.asJSON);
    return;
  }
  // The schema is a JSON document with or without --json.
  out_ << schemaDocument().jsonString().value_or("{}") << '\n';
}

}  // namespace zorvik
