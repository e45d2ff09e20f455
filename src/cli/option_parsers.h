// The hand-written option parsers of every `zorvik` command. Matching is by exact string
// comparison; each parser walks its arguments once, in order, so the first problem met is the one
// reported. Errors are ZorvikCLIError values (invalidArguments, invalidJSON); a read failure of
// --args-file passes through as std::system_error. A help flag ends the walk and yields a
// HelpRequest instead of options.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/help_documents.h"
#include "foundation/json/any_codable_value.h"

namespace zorvik {

using Arguments = std::vector<std::string>;

struct HelpRequest {
  HelpTopic topic;
  bool asJSON = false;
  bool operator==(const HelpRequest&) const = default;
};

template <class Options>
using ParseResult = std::variant<Options, HelpRequest>;

struct ProjectCurrentOptions {
  std::optional<std::string> appBundlePath;
  bool asJSON = false;
};

struct ProjectValidateOptions {
  std::string projectPath;
  bool asJSON = false;
  bool includeWarnings = true;
  int maxDiagnostics = 200;
};

// `project inspect`, `runtime inspect` and `agent call`.
struct ToolInvocationOptions {
  std::string toolName;  // normalised
  std::optional<std::string> projectPath;
  std::optional<std::string> appBundlePath;
  AnyCodableValue arguments = JSONObject{};  // always an object
};
using InspectOptions = ToolInvocationOptions;
using AgentCallOptions = ToolInvocationOptions;

struct AgentListToolsOptions {
  std::optional<std::string> projectPath;
  std::optional<std::string> appBundlePath;
  bool asJSON = false;
};

struct AgentToolDetailsOptions {
  std::string toolName;                 // normalised
  std::optional<std::string> cardType;  // trimmed
  std::optional<std::string> projectPath;
  std::optional<std::string> appBundlePath;
  bool asJSON = false;
};

// `doctor` and `schema`: flags only, the whole list walked before anything runs.
struct FlagOnlyOptions {
  bool asJSON = false;
  bool help = false;
};

// Trim, lower-case, every "-" to "_": "Get-Card-Content" becomes "get_card_content".
std::string normalizeToolName(std::string_view name);

// Whether "--json" stands anywhere among `arguments`.
bool containsJSONFlag(const Arguments& arguments);

ParseResult<ProjectCurrentOptions> parseProjectCurrentOptions(const Arguments& arguments);
ParseResult<ProjectValidateOptions> parseProjectValidateOptions(const Arguments& arguments);
// `commandLabel` is "inspect" or "agent call"; `helpTopic` is the command family's help.
ParseResult<ToolInvocationOptions> parseToolInvocationOptions(std::string_view commandLabel,
                                                              const Arguments& arguments,
                                                              HelpTopic helpTopic);
ParseResult<AgentListToolsOptions> parseAgentListToolsOptions(const Arguments& arguments);
ParseResult<AgentToolDetailsOptions> parseAgentToolDetailsOptions(const Arguments& arguments);
FlagOnlyOptions parseFlagOnlyOptions(const Arguments& arguments);

}  // namespace zorvik
