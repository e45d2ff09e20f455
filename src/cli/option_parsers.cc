#include "cli/option_parsers.h"

#include <algorithm>
#include <charconv>

#include "cli/zorvik_cli_error.h"
#include "foundation/atomic_file.h"
#include "foundation/text.h"

namespace zorvik {
namespace {

// Walks an argument list one token at a time.
class ArgumentCursor {
 public:
  explicit ArgumentCursor(const Arguments& arguments, size_t start = 0)
      : arguments_(arguments), position_(start) {}

  bool done() const { return position_ >= arguments_.size(); }
  const std::string& next() { return arguments_[position_++]; }
  // The token after a flag, whatever it looks like; `missingMessage` when there is none.
  std::string value(const std::string& missingMessage) {
    if (done()) throw ZorvikCLIError::invalidArguments(missingMessage);
    return next();
  }

 private:
  const Arguments& arguments_;
  size_t position_;
};

bool isHelpFlag(std::string_view token) { return token == "-h" || token == "--help"; }

[[noreturn]] void throwUnknownOption(const std::string& token) {
  throw ZorvikCLIError::invalidArguments("Unknown option: " + token);
}

// "--project" and "--app", shared by the agent and inspect parsers; false for any other token.
bool takeLocationOption(const std::string& token, ArgumentCursor& cursor,
                        std::optional<std::string>& projectPath,
                        std::optional<std::string>& appBundlePath) {
  if (token == "--project") {
    projectPath = cursor.value("--project requires a path value.");
    return true;
  }
  if (token == "--app") {
    appBundlePath = cursor.value("--app requires a bundle path value.");
    return true;
  }
  return false;
}

std::optional<int> parsePositiveInteger(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  int value = 0;
  const char* end = text.data() + text.size();
  auto [ptr, error] = std::from_chars(text.data(), end, value, 10);
  if (text.empty() || error != std::errc() || ptr != end || value <= 0) return std::nullopt;
  return value;
}

AnyCodableValue parseArgumentsJSON(const std::string& text) {
  try {
    return AnyCodableValue::parse(text);
  } catch (const std::exception& error) {
    throw ZorvikCLIError::invalidJSON(std::string("Failed to parse --args-json: ") + error.what());
  }
}

AnyCodableValue parseArgumentsFile(const std::string& path) {
  auto contents = readFileContents(path);
  if (!contents) {
    throw std::system_error(errno ? errno : EIO, std::generic_category(),
                            "Unable to read file at " + path);
  }
  if (!isValidUTF8(*contents)) {
    throw ZorvikCLIError::invalidJSON("Unable to read UTF-8 text from " + path + ".");
  }
  try {
    return AnyCodableValue::parse(*contents);
  } catch (const std::exception& error) {
    throw ZorvikCLIError::invalidJSON("Failed to parse JSON from " + path + ": " + error.what());
  }
}

}  // namespace

std::string normalizeToolName(std::string_view name) {
  std::string normalized = lowercased(trimWhitespaceAndNewlines(name));
  std::replace(normalized.begin(), normalized.end(), '-', '_');
  return normalized;
}

bool containsJSONFlag(const Arguments& arguments) {
  return std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
}

ParseResult<ProjectCurrentOptions> parseProjectCurrentOptions(const Arguments& arguments) {
  ProjectCurrentOptions options;
  ArgumentCursor cursor(arguments);
  while (!cursor.done()) {
    const std::string& token = cursor.next();
    if (token == "--app") {
      options.appBundlePath = cursor.value("--app requires a bundle path value.");
    } else if (token == "--json") {
      options.asJSON = true;
    } else if (isHelpFlag(token)) {
      return HelpRequest{HelpTopic::project, containsJSONFlag(arguments)};
    } else {
      throwUnknownOption(token);
    }
  }
  return options;
}

ParseResult<ProjectValidateOptions> parseProjectValidateOptions(const Arguments& arguments) {
  // The path check comes before any flag is looked at: `project validate --help` is this error.
  if (arguments.empty() || arguments.front().starts_with("-")) {
    throw ZorvikCLIError::invalidArguments("project validate requires a project folder path.");
  }
  ProjectValidateOptions options;
  options.projectPath = arguments.front();
  ArgumentCursor cursor(arguments, 1);
  while (!cursor.done()) {
    const std::string& token = cursor.next();
    if (token == "--json") {
      options.asJSON = true;
    } else if (token == "--errors-only") {
      options.includeWarnings = false;
    } else if (token == "--max-diagnostics") {
      const std::string message = "--max-diagnostics requires a positive integer.";
      auto value = parsePositiveInteger(cursor.value(message));
      if (!value) throw ZorvikCLIError::invalidArguments(message);
      options.maxDiagnostics = *value;
    } else if (isHelpFlag(token)) {
      return HelpRequest{HelpTopic::project, containsJSONFlag(arguments)};
    } else {
      throwUnknownOption(token);
    }
  }
  return options;
}

ParseResult<ToolInvocationOptions> parseToolInvocationOptions(std::string_view commandLabel,
                                                              const Arguments& arguments,
                                                              HelpTopic helpTopic) {
  const std::string label(commandLabel);
  if (arguments.empty() || arguments.front().starts_with("-")) {
    throw ZorvikCLIError::invalidArguments(label + " requires a tool name.");
  }
  ToolInvocationOptions options;
  options.toolName = normalizeToolName(arguments.front());
  std::optional<std::string> argumentsJSON;
  std::optional<std::string> argumentsFile;
  ArgumentCursor cursor(arguments, 1);
  while (!cursor.done()) {
    const std::string& token = cursor.next();
    if (takeLocationOption(token, cursor, options.projectPath, options.appBundlePath)) continue;
    if (token == "--args-json") {
      argumentsJSON = cursor.value("--args-json requires a JSON object string.");
    } else if (token == "--args-file") {
      argumentsFile = cursor.value("--args-file requires a file path.");
    } else if (isHelpFlag(token)) {
      return HelpRequest{helpTopic, containsJSONFlag(arguments)};
    } else {
      throwUnknownOption(token);
    }
  }
  if (argumentsJSON && argumentsFile) {
    throw ZorvikCLIError::invalidArguments("Use either --args-json or --args-file, not both.");
  }
  if (argumentsJSON) {
    options.arguments = parseArgumentsJSON(*argumentsJSON);
  } else if (argumentsFile) {
    options.arguments = parseArgumentsFile(*argumentsFile);
  }
  if (!options.arguments.isObject()) {
    throw ZorvikCLIError::invalidArguments(label + " arguments must be a JSON object.");
  }
  return options;
}

ParseResult<AgentListToolsOptions> parseAgentListToolsOptions(const Arguments& arguments) {
  AgentListToolsOptions options;
  ArgumentCursor cursor(arguments);
  while (!cursor.done()) {
    const std::string& token = cursor.next();
    if (takeLocationOption(token, cursor, options.projectPath, options.appBundlePath)) continue;
    if (token == "--json") {
      options.asJSON = true;
    } else if (isHelpFlag(token)) {
      return HelpRequest{HelpTopic::agent, containsJSONFlag(arguments)};
    } else {
      throwUnknownOption(token);
    }
  }
  return options;
}

ParseResult<AgentToolDetailsOptions> parseAgentToolDetailsOptions(const Arguments& arguments) {
  if (arguments.empty() || arguments.front().starts_with("-")) {
    throw ZorvikCLIError::invalidArguments("tool-details requires a tool name.");
  }
  AgentToolDetailsOptions options;
  options.toolName = normalizeToolName(arguments.front());
  ArgumentCursor cursor(arguments, 1);
  while (!cursor.done()) {
    const std::string& token = cursor.next();
    if (takeLocationOption(token, cursor, options.projectPath, options.appBundlePath)) continue;
    if (token == "--json") {
      options.asJSON = true;
    } else if (token == "--card-type") {
      options.cardType = trimWhitespaceAndNewlines(cursor.value("--card-type requires a value."));
    } else if (isHelpFlag(token)) {
      return HelpRequest{HelpTopic::agent, containsJSONFlag(arguments)};
    } else {
      throwUnknownOption(token);
    }
  }
  return options;
}

FlagOnlyOptions parseFlagOnlyOptions(const Arguments& arguments) {
  FlagOnlyOptions options;
  for (const std::string& token : arguments) {
    if (token == "--json") {
      options.asJSON = true;
    } else if (isHelpFlag(token) || token == "help") {
      options.help = true;
    } else {
      throwUnknownOption(token);
    }
  }
  return options;
}

}  // namespace zorvik
