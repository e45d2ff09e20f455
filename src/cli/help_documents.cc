#include "cli/help_documents.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "cli/zorvik_cli_error.h"
#include "foundation/text.h"

namespace zorvik {

namespace {

// Both forms of every topic are rendered from the tables below, so the text and the JSON document
// always state the same facts.

struct OptionDoc {
  std::string_view flags;
  std::string_view summary;
};

struct SubcommandDoc {
  std::string_view name;
  std::string_view summary;
  std::string_view usage;
  std::vector<std::string_view> tools;
  std::vector<std::string_view> notes;
  std::vector<OptionDoc> options;
  std::vector<int> exitCodes;
};

// A titled block that only the text form carries.
struct TextSection {
  std::string_view title;
  std::vector<std::string_view> lines;
};

struct CommandDoc {
  std::string_view name;
  std::string_view summary;
  // One line is written as a JSON string, several as an array.
  std::vector<std::string_view> usage;
  std::vector<OptionDoc> options;
  std::vector<SubcommandDoc> subcommands;
  std::vector<std::string_view> topics;
  std::vector<std::string_view> recommendedFlow;
  std::vector<std::string_view> schemaFirstRules;
  std::string_view machineReadableHelp;
  std::vector<TextSection> textSections;
  std::vector<std::string_view> examples;
};

struct ExitCodeDoc {
  int code;
  std::string_view summary;
};

constexpr std::string_view kRootSummary =
    "Zorvik CLI for project validation, runtime inspection, and agent tool execution.";
constexpr std::string_view kRootUsage = "zorvik <command> [options]";
constexpr std::string_view kProjectPathVariable = "ZORVIK_PROJECT_PATH";
constexpr std::string_view kProjectPathVariableSummary =
    "Explicit project path override for project discovery";
constexpr std::string_view kValidTopics = "Valid topics: project, runtime, agent, doctor, schema.";

const std::vector<ExitCodeDoc>& exitCodes() {
  static const std::vector<ExitCodeDoc> codes = {
      {0, "Success"},
      {1, "Unexpected runtime error"},
      {2, "Invalid CLI arguments"},
      {3, "Runtime/project discovery unavailable"},
      {4, "Invalid JSON input"},
      {5, "Project validation failed"},
      {6, "Project inspect tool returned status=error/ok=false"},
      {7, "Runtime inspect tool returned status=error/ok=false"},
      {8, "Agent call returned status=error/ok=false"},
  };
  return codes;
}

std::string_view exitCodeSummary(int code) {
  for (const ExitCodeDoc& entry : exitCodes()) {
    if (entry.code == code) return entry.summary;
  }
  return {};
}

const std::vector<OptionDoc>& globalFlags() {
  static const std::vector<OptionDoc> flags = {
      {"-h, --help", "Show help"},
      {"--json", "Machine-readable output for help-enabled commands"},
      {"-v, --version", "Print CLI version"},
  };
  return flags;
}

// The root document's `machine_readable` entries: key, command, and the text form's gloss.
struct PointerDoc {
  std::string_view key;
  std::string_view command;
  std::string_view summary;
};

const std::vector<PointerDoc>& machineReadablePointers() {
  static const std::vector<PointerDoc> pointers = {
      {"help", "zorvik help --json", "Root help as JSON"},
      {"command_help", "zorvik help <command> --json", "One command's help as JSON"},
      {"schema", "zorvik schema --json", "The whole CLI schema document"},
  };
  return pointers;
}

const std::vector<OptionDoc> kProjectSelectionOptions = {
    {"--project <path>", "Explicit project path"},
    {"--app <bundle_path>", "Runtime app bundle for implicit project discovery"},
};

std::vector<OptionDoc> inspectOptions() {
  std::vector<OptionDoc> options = kProjectSelectionOptions;
  options.push_back({"--args-json '{...}'", "Inline JSON object arguments"});
  options.push_back({"--args-file <file>", "Read JSON object arguments from file"});
  return options;
}

const std::vector<OptionDoc> kHelpFlagOptions = {
    {"--json", "Return structured JSON output"},
    {"-h, --help", "Show this help (JSON with --json)"},
};

CommandDoc projectCommand() {
  return {
      .name = "project",
      .summary = "Project discovery, validation, and headless inspection.",
      .usage = {"zorvik project <subcommand> [options]"},
      .subcommands =
          {
              {.name = "current",
               .summary = "Resolve current project path from env/runtime.",
               .usage = "zorvik project current [--app <bundle_path>] [--json]",
               .options = {{"--app <bundle_path>", "Filter runtime discovery to one app bundle"},
                           {"--json", "Return structured JSON output"}}},
              {.name = "validate",
               .summary = "Run project compiler validation on a Zorvik project directory.",
               .usage = "zorvik project validate <path> [--json] [--errors-only] "
                        "[--max-diagnostics <n>]",
               .options = {{"--json", "Return structured JSON diagnostics"},
                           {"--errors-only", "Exclude warnings from output"},
                           {"--max-diagnostics <n>", "Cap emitted diagnostics (default 200)"}},
               .exitCodes = {0, 5}},
              {.name = "inspect",
               .summary = "Run headless inspect tools for project state/layout.",
               .usage = "zorvik project inspect <tool> [--project <path>] [--app <bundle_path>] "
                        "[--args-json '{...}' | --args-file <file>]",
               .tools = {"compile_project", "list_card_layouts", "get_group_layout"},
               .options = inspectOptions(),
               .exitCodes = {0, 6}},
          },
      .machineReadableHelp = "zorvik help project --json",
      .examples =
          {
              "zorvik project current --json",
              "zorvik project validate /path/to/project --json",
              "zorvik project validate /path/to/project --errors-only --max-diagnostics 50",
              "zorvik project inspect compile_project --project /path/to/project",
              "zorvik project inspect list_card_layouts --args-json '{\"scope\":\"board\"}'",
              "zorvik project inspect get_group_layout --args-json '{\"group_ids\":[\"<uuid>\"]}'",
          },
  };
}

CommandDoc runtimeCommand() {
  return {
      .name = "runtime",
      .summary = "Runtime camera/screenshot inspection tools.",
      .usage = {"zorvik runtime <subcommand> [options]"},
      .subcommands =
          {
              {.name = "inspect",
               .summary = "Run runtime inspect tools against the running app (camera, viewport, "
                          "screenshots).",
               .usage = "zorvik runtime inspect <tool> [--project <path>] [--app <bundle_path>] "
                        "[--args-json '{...}' | --args-file <file>]",
               .tools = {"viewport_state", "focus_card", "screenshot"},
               .notes = {"screenshot snapshot_mode=board captures the current viewport/camera.",
                         "screenshot snapshot_mode=card captures an isolated full-card render for "
                         "card_id.",
                         "screenshot snapshot_mode=cards captures isolated full-card renders for "
                         "card_ids[]."},
               .options = inspectOptions(),
               .exitCodes = {0, 7}},
          },
      .machineReadableHelp = "zorvik help runtime --json",
      .textSections = {{"Screenshot modes (snapshot_mode):",
                        {"board  = viewport/camera snapshot of the board",
                         "card   = isolated full-card render for one card_id",
                         "cards  = isolated full-card renders for card_ids[]"}}},
      .examples =
          {
              "zorvik runtime inspect viewport_state",
              "zorvik runtime inspect focus_card --args-json '{\"card_id\":\"<uuid>\"}'",
              "zorvik runtime inspect screenshot --args-json '{\"snapshot_mode\":\"board\"}'",
              "zorvik runtime inspect screenshot --args-json "
              "'{\"snapshot_mode\":\"card\",\"card_id\":\"<uuid>\"}'",
              "zorvik runtime inspect screenshot --args-json "
              "'{\"snapshot_mode\":\"cards\",\"card_ids\":[\"<uuid>\",\"<uuid>\"]}'",
          },
  };
}

CommandDoc agentCommand() {
  std::vector<OptionDoc> listOptions = kProjectSelectionOptions;
  listOptions.push_back({"--json", "Return structured tool list"});
  std::vector<OptionDoc> detailOptions = kProjectSelectionOptions;
  detailOptions.push_back(
      {"--card-type <type>", "Optional card type context for detail expansion"});
  detailOptions.push_back({"--json", "Return structured tool details"});
  return {
      .name = "agent",
      .summary = "Discover and execute workspace agent tools.",
      .usage = {"zorvik agent <subcommand> [options]"},
      .subcommands =
          {
              {.name = "list-tools",
               .summary = "List available agent tools.",
               .usage = "zorvik agent list-tools [--project <path>] [--app <bundle_path>] [--json]",
               .options = listOptions},
              {.name = "tool-details",
               .summary = "Return schema/details for a specific agent tool.",
               .usage = "zorvik agent tool-details <tool> [--project <path>] "
                        "[--app <bundle_path>] [--card-type <type>] [--json]",
               .options = detailOptions},
              {.name = "call",
               .summary = "Invoke a single agent tool call.",
               .usage = "zorvik agent call <tool> [--project <path>] [--app <bundle_path>] "
                        "[--args-json '{...}' | --args-file <file>]",
               .options = inspectOptions(),
               .exitCodes = {0, 8}},
          },
      .recommendedFlow = {"zorvik agent list-tools --json",
                          "zorvik agent tool-details <tool> --json",
                          "zorvik agent call <tool> --args-json '{...}'"},
      .schemaFirstRules = {"Do not guess enum values or nested payload shapes.",
                           "Before first use of a tool, inspect its schema with tool-details.",
                           "get_card_content.mode accepts only: full, summary, type_specific."},
      .machineReadableHelp = "zorvik help agent --json",
      .examples =
          {
              "zorvik agent list-tools --json",
              "zorvik agent tool-details get_card_content --json",
              "zorvik agent tool-details get_card_content --card-type table --json",
              "zorvik agent call get_card_content --args-json "
              "'{\"card_ids\":[\"<uuid>\"],\"mode\":\"summary\"}'",
              "zorvik agent call get_card_content --project /path/to/project --args-file args.json",
          },
  };
}

CommandDoc doctorCommand() {
  return {
      .name = "doctor",
      .summary = "Report current project/runtime health.",
      .usage = {"zorvik doctor [--json]"},
      .options = kHelpFlagOptions,
      .machineReadableHelp = "zorvik help doctor --json",
      .textSections = {{"Reports:",
                        {"the current project and where it was found (env or runtime heartbeat)",
                         "whether that project's app is in the foreground",
                         "whether the runtime write bridge is available",
                         "the next commands to run; exits 0 even when no project is found"}}},
      .examples = {"zorvik doctor", "zorvik doctor --json"},
  };
}

CommandDoc schemaCommand() {
  return {
      .name = "schema",
      .summary = "Emit machine-readable CLI schema document.",
      .usage = {"zorvik schema [--json]"},
      .options = {{"--json", "Accepted for symmetry; the schema is always JSON"},
                  {"-h, --help", "Show this help (JSON with --json)"}},
      .machineReadableHelp = "zorvik help schema --json",
      .textSections = {{"Output:",
                        {"{\"schema_version\": 1, \"format\": \"zorvik_cli_schema\", \"cli\": "
                         "<root help document>}"}}},
      .examples = {"zorvik schema --json", "zorvik schema --json > zorvik-cli-schema.json"},
  };
}

CommandDoc helpCommand() {
  return {
      .name = "help",
      .summary = "Show help for zorvik or one command (supports --json).",
      .usage = {"zorvik help [<topic>] [--json]"},
      .topics = {"project", "runtime", "agent", "doctor", "schema"},
  };
}

CommandDoc versionCommand() {
  return {
      .name = "version",
      .summary = "Print CLI version.",
      .usage = {"zorvik version", "zorvik --version"},
  };
}

CommandDoc commandDoc(HelpTopic topic) {
  switch (topic) {
    case HelpTopic::project:
      return projectCommand();
    case HelpTopic::runtime:
      return runtimeCommand();
    case HelpTopic::agent:
      return agentCommand();
    case HelpTopic::doctor:
      return doctorCommand();
    case HelpTopic::schema:
    case HelpTopic::root:  // never asked: the root has no command document
      break;
  }
  return schemaCommand();
}

// ---- JSON form ----

AnyCodableValue stringArray(const std::vector<std::string_view>& strings) {
  AnyCodableValue::Array array;
  for (std::string_view text : strings) array.emplace_back(text);
  return array;
}

AnyCodableValue optionArray(const std::vector<OptionDoc>& options) {
  AnyCodableValue::Array array;
  for (const OptionDoc& option : options) {
    array.emplace_back(JSONObject{{"flags", option.flags}, {"summary", option.summary}});
  }
  return array;
}

AnyCodableValue intArray(const std::vector<int>& values) {
  AnyCodableValue::Array array;
  for (int value : values) array.emplace_back(value);
  return array;
}

// Adds `key` only when the list has entries.
template <typename List, typename Encode>
void setIfAny(JSONObject& object, const char* key, const List& list, Encode encode) {
  if (!list.empty()) object.set(key, encode(list));
}

AnyCodableValue subcommandPayload(const SubcommandDoc& sub) {
  JSONObject object{{"name", sub.name}, {"summary", sub.summary}, {"usage", sub.usage}};
  setIfAny(object, "tools", sub.tools, stringArray);
  setIfAny(object, "notes", sub.notes, stringArray);
  setIfAny(object, "options", sub.options, optionArray);
  setIfAny(object, "exit_codes", sub.exitCodes, intArray);
  return object;
}

AnyCodableValue commandPayload(const CommandDoc& doc) {
  JSONObject object{{"name", doc.name}, {"summary", doc.summary}};
  object.set("usage",
             doc.usage.size() == 1 ? AnyCodableValue(doc.usage.front()) : stringArray(doc.usage));
  setIfAny(object, "options", doc.options, optionArray);
  if (!doc.subcommands.empty()) {
    AnyCodableValue::Array subcommands;
    for (const SubcommandDoc& sub : doc.subcommands) subcommands.push_back(subcommandPayload(sub));
    object.set("subcommands", std::move(subcommands));
  }
  setIfAny(object, "topics", doc.topics, stringArray);
  setIfAny(object, "recommended_flow", doc.recommendedFlow, stringArray);
  setIfAny(object, "schema_first_rules", doc.schemaFirstRules, stringArray);
  if (!doc.machineReadableHelp.empty()) {
    object.set("machine_readable_help", doc.machineReadableHelp);
  }
  return object;
}

// ---- text form ----

using Row = std::pair<std::string, std::string>;

std::vector<Row> optionRows(const std::vector<OptionDoc>& options) {
  std::vector<Row> rows;
  for (const OptionDoc& option : options) rows.emplace_back(option.flags, option.summary);
  return rows;
}

std::vector<Row> exitCodeRows(const std::vector<int>& codes) {
  std::vector<Row> rows;
  for (int code : codes) rows.emplace_back(std::to_string(code), exitCodeSummary(code));
  return rows;
}

// Appends one line per row, "<indent><left>   <right>", with the right column aligned.
void appendColumns(std::string& text, const std::vector<Row>& rows, std::string_view indent) {
  size_t width = 0;
  for (const Row& row : rows) width = std::max(width, row.first.size());
  for (const auto& [left, right] : rows) {
    text.append(indent).append(left).append(width - left.size() + 3, ' ');
    text.append(right).append("\n");
  }
}

// Appends an empty line, the title, and the lines indented by two blanks.
template <typename Lines>
void appendSection(std::string& text, std::string_view title, const Lines& lines) {
  text.append("\n").append(title).append("\n");
  for (const auto& line : lines) text.append("  ").append(line).append("\n");
}

void appendColumnSection(std::string& text, std::string_view title, const std::vector<Row>& rows) {
  text.append("\n").append(title).append("\n");
  appendColumns(text, rows, "  ");
}

std::string joined(const std::vector<std::string_view>& words, std::string_view separator) {
  std::string result;
  for (std::string_view word : words) {
    if (!result.empty()) result.append(separator);
    result.append(word);
  }
  return result;
}

void appendSubcommand(std::string& text, const SubcommandDoc& sub) {
  text.append("  ").append(sub.name).append("\n");
  text.append("    ").append(sub.summary).append("\n");
  if (!sub.tools.empty()) {
    text.append("    Tools: ").append(joined(sub.tools, ", ")).append("\n");
  }
  if (!sub.options.empty()) {
    text.append("    Options:\n");
    appendColumns(text, optionRows(sub.options), "      ");
  }
  if (!sub.exitCodes.empty()) {
    text.append("    Exit codes:\n");
    appendColumns(text, exitCodeRows(sub.exitCodes), "      ");
  }
}

std::string commandText(const CommandDoc& doc) {
  std::string text = "zorvik " + std::string(doc.name) + " - " + std::string(doc.summary) + "\n";
  // A command family shows the full line of each subcommand rather than its own generic one.
  std::vector<std::string_view> usage;
  for (const SubcommandDoc& sub : doc.subcommands) usage.push_back(sub.usage);
  appendSection(text, "Usage:", usage.empty() ? doc.usage : usage);
  if (!doc.subcommands.empty()) {
    text.append("\nSubcommands:\n");
    for (const SubcommandDoc& sub : doc.subcommands) appendSubcommand(text, sub);
  }
  if (!doc.options.empty()) appendColumnSection(text, "Options:", optionRows(doc.options));
  if (!doc.recommendedFlow.empty()) {
    std::vector<std::string> steps;
    for (std::string_view step : doc.recommendedFlow) {
      steps.push_back(std::to_string(steps.size() + 1) + ". " + std::string(step));
    }
    appendSection(text, "Recommended flow:", steps);
  }
  if (!doc.schemaFirstRules.empty()) {
    std::vector<std::string> rules;
    for (std::string_view rule : doc.schemaFirstRules) rules.push_back("- " + std::string(rule));
    appendSection(text, "Schema-first guidance:", rules);
  }
  for (const TextSection& section : doc.textSections) {
    appendSection(text, section.title, section.lines);
  }
  if (!doc.examples.empty()) appendSection(text, "Examples:", doc.examples);
  if (!doc.machineReadableHelp.empty()) {
    appendSection(text, "Machine-readable help:", std::vector{doc.machineReadableHelp});
  }
  return text;
}

std::string rootText() {
  // The command list's one-line summaries, shorter than the command documents' own.
  static const std::vector<OptionDoc> commandLines = {
      {"project", "Project discovery, validation, and headless inspection"},
      {"runtime", "Runtime camera/screenshot inspection"},
      {"agent", "Agent tool catalog/details/calls"},
      {"doctor", "Verify CLI/runtime setup"},
      {"help", "Show help (supports --json)"},
      {"schema", "Emit machine-readable CLI schema"},
      {"version", "Print CLI version"},
  };
  static const std::vector<std::string_view> examples = {
      "zorvik doctor",
      "zorvik project current --json",
      "zorvik project validate /path/to/project --errors-only",
      "zorvik runtime inspect screenshot --args-json '{\"snapshot_mode\":\"board\"}'",
      "zorvik agent list-tools --json",
      "zorvik agent tool-details get_card_content --json",
      "zorvik agent call get_card_content --args-json "
      "'{\"card_ids\":[\"<uuid>\"],\"mode\":\"summary\"}'",
      "zorvik help agent --json",
  };
  std::vector<int> allCodes;
  for (const ExitCodeDoc& entry : exitCodes()) allCodes.push_back(entry.code);
  std::vector<Row> pointers;
  for (const PointerDoc& pointer : machineReadablePointers()) {
    pointers.emplace_back(pointer.command, pointer.summary);
  }

  std::string text = std::string(kRootSummary) + "\n\nUsage: " + std::string(kRootUsage) + "\n";
  appendColumnSection(text, "Commands:", optionRows(commandLines));
  appendColumnSection(text, "Global flags:", optionRows(globalFlags()));
  appendSection(text, "Examples:", examples);
  appendColumnSection(text, "Exit codes:", exitCodeRows(allCodes));
  appendColumnSection(
      text, "Environment:",
      {{std::string(kProjectPathVariable), std::string(kProjectPathVariableSummary)}});
  appendColumnSection(text, "Machine-readable:", pointers);
  text.append("\nDocs:\n").append(bundledCLIDocsPathHint(programPath())).append("\n");
  return text;
}

std::optional<HelpTopic> topicNamed(std::string_view name) {
  static const std::pair<std::string_view, HelpTopic> topics[] = {
      {"project", HelpTopic::project}, {"runtime", HelpTopic::runtime}, {"agent", HelpTopic::agent},
      {"doctor", HelpTopic::doctor},   {"schema", HelpTopic::schema},
  };
  for (const auto& [word, topic] : topics) {
    if (word == name) return topic;
  }
  return std::nullopt;
}

}  // namespace

AnyCodableValue rootHelpPayload() {
  const std::string program = programPath();
  AnyCodableValue::Array codes;
  for (const ExitCodeDoc& entry : exitCodes()) {
    codes.emplace_back(JSONObject{{"code", entry.code}, {"summary", entry.summary}});
  }
  AnyCodableValue::Array commands;
  for (const CommandDoc& doc : {projectCommand(), runtimeCommand(), agentCommand(), doctorCommand(),
                                schemaCommand(), helpCommand(), versionCommand()}) {
    commands.push_back(commandPayload(doc));
  }
  JSONObject machineReadable;
  for (const PointerDoc& pointer : machineReadablePointers()) {
    machineReadable.set(std::string(pointer.key), pointer.command);
  }
  return JSONObject{
      {"name", "zorvik"},
      {"version", currentVersionString()},
      {"summary", kRootSummary},
      {"usage", kRootUsage},
      {"global_flags", optionArray(globalFlags())},
      {"machine_readable", std::move(machineReadable)},
      {"discoverability",
       JSONObject{{"bundled_cli_path_hint", bundledCLIExecutablePathHint(program)},
                  {"bundled_docs_path_hint", bundledCLIDocsPathHint(program)}}},
      {"environment", AnyCodableValue::Array{JSONObject{{"name", kProjectPathVariable},
                                                        {"summary", kProjectPathVariableSummary}}}},
      {"exit_codes", std::move(codes)},
      {"commands", std::move(commands)},
  };
}

std::string helpText(HelpTopic topic) {
  return topic == HelpTopic::root ? rootText() : commandText(commandDoc(topic));
}

AnyCodableValue helpPayload(HelpTopic topic) {
  return topic == HelpTopic::root ? rootHelpPayload() : commandPayload(commandDoc(topic));
}

AnyCodableValue schemaDocument() {
  return JSONObject{
      {"schema_version", 1}, {"format", "zorvik_cli_schema"}, {"cli", rootHelpPayload()}};
}

void printHelp(std::ostream& out, HelpTopic topic, bool asJSON) {
  if (asJSON) {
    // The documents hold no doubles, so the writer cannot refuse them.
    out << helpPayload(topic).jsonString().value_or("{}") << "\n";
  } else {
    out << helpText(topic);
  }
}

void runHelp(const std::vector<std::string>& arguments, std::ostream& out) {
  bool asJSON = false;
  std::optional<std::string> topicWord;
  for (const std::string& argument : arguments) {
    if (argument == "--json") {
      asJSON = true;
    } else if (argument == "-h" || argument == "--help") {
      printHelp(out, HelpTopic::root, asJSON);
      return;
    } else if (argument.starts_with("-")) {
      throw ZorvikCLIError::invalidArguments("Unknown option: " + argument);
    } else if (!topicWord) {
      topicWord = argument;
    } else {
      throw ZorvikCLIError::invalidArguments("help accepts at most one topic. " +
                                             std::string(kValidTopics));
    }
  }
  const std::string normalized = lowercased(trimWhitespaceAndNewlines(topicWord.value_or("")));
  if (normalized.empty()) return printHelp(out, HelpTopic::root, asJSON);
  const std::optional<HelpTopic> topic = topicNamed(normalized);
  if (!topic) {
    throw ZorvikCLIError::invalidArguments("Unknown help topic: " + *topicWord + ". " +
                                           std::string(kValidTopics));
  }
  printHelp(out, *topic, asJSON);
}

}  // namespace zorvik
