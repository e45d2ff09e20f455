// Runs the built `zorvik` binary on real folders and checks the three observable channels: exit
// code, standard output and standard error.
#include <gtest/gtest.h>

#include <algorithm>

#include "foundation/json/any_codable_value.h"
#include "support/fake_app/fake_app_process.h"
#include "support/process_runner.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

using testing::ProcessOptions;
using testing::ProcessResult;
using testing::TempDirectory;

constexpr const char* kWorkspace = R"({
  "version": 1, "projectId": "P", "createdAt": "2026-01-01T00:00:00Z",
  "updatedAt": "2026-01-01T00:00:00Z", "uiState": {}, "entries": []})";

constexpr const char* kCard = "6F1D2C9A-3B4E-4F5A-8B6C-7D8E9F0A1B2C";

constexpr const char* kRuntimeUnavailable =
    "No Zorvik project could be discovered. Ensure Zorvik is running with the target board open, "
    "then retry.\n";

// One command line and what it must produce. `stdoutPrefix` empty means standard output is empty.
struct CommandCase {
  std::vector<std::string> arguments;
  int exitCode;
  std::string stdoutPrefix;
  std::string standardError;
};

class CLIEndToEndTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project_.write(".zorvik/workspace.json", kWorkspace);
    // Discovery must find nothing unless a test says otherwise.
    options_.workingDirectory = sandbox_.path();
    options_.environment["ZORVIK_PROJECT_PATH"] = std::nullopt;
    options_.environment["HOME"] = sandbox_.path().string();
    options_.environment["XDG_DATA_HOME"] = (sandbox_.path() / "data").string();
  }

  ProcessResult run(const std::vector<std::string>& arguments) {
    return testing::runZorvik(arguments, options_);
  }

  void expectAll(const std::vector<CommandCase>& cases) {
    for (const auto& test : cases) {
      std::string line;
      for (const auto& argument : test.arguments) line += argument + " ";
      SCOPED_TRACE("zorvik " + line);
      const ProcessResult result = run(test.arguments);
      EXPECT_EQ(result.exitCode, test.exitCode);
      EXPECT_EQ(result.standardError, test.standardError);
      if (test.stdoutPrefix.empty()) {
        EXPECT_EQ(result.standardOutput, "");
      } else {
        EXPECT_TRUE(result.standardOutput.starts_with(test.stdoutPrefix)) << result.standardOutput;
      }
    }
  }

  std::string projectPath() const { return project_.path().string(); }

  // A board of one rich-text card whose text lives in notes/a.md.
  void writeNoteBoard() {
    project_.write("notes/a.md", "Solar prices fell.");
    project_.write(".zorvik/workspace.json", R"({
    "version": 1, "projectId": "P", "createdAt": "2026-01-01T00:00:00Z",
    "updatedAt": "2026-01-01T00:00:00Z", "uiState": {}, "entries": [{
      "id": ")" + std::string(kCard) + R"(", "kindRawValue": "richText", "title": "Notes",
      "shadowEnabled": true, "createdAt": "2026-01-01T00:00:00Z", "relativePath": "notes/a.md",
      "layout": {"position": {"x": 10, "y": 20}, "zIndex": 1, "actualWidth": 100,
                 "actualHeight": 50},
      "payload": {"type": "richText", "richText": {}}}]})");
  }

  TempDirectory sandbox_;
  TempDirectory project_;
  ProcessOptions options_;
};

TEST_F(CLIEndToEndTest, RoutingHelpAndArgumentErrors) {
  expectAll({
      {{}, 0, "Zorvik CLI", ""},
      {{"--help"}, 0, "Zorvik CLI", ""},
      {{"-h", "--json"}, 0, "{\n  \"commands\" : [", ""},
      {{"project"}, 0, "zorvik project - Project discovery", ""},
      {{"project", "help", "--json"}, 0, "{", ""},
      {{"runtime", "-h"}, 0, "zorvik runtime - ", ""},
      {{"agent", "--help"}, 0, "zorvik agent - ", ""},
      {{"help", "Project"}, 0, "zorvik project - ", ""},
      {{"schema"}, 0, "{\n  \"cli\" : {", ""},
      {{"doctor", "--help", "--bogus"}, 2, "", "Error: Unknown option: --bogus\n"},
      {{"version"}, 0, "zorvik ", ""},
      {{"--version", "--json"}, 2, "", "Error: version does not accept positional arguments.\n"},
      {{"bogus"}, 2, "", "Error: Unknown command: bogus\n"},
      {{"Project"}, 2, "", "Error: Unknown command: Project\n"},
      {{"project", "list"}, 2, "", "Error: Unknown project command: list\n"},
      {{"runtime", "current"}, 2, "", "Error: Unknown runtime command: current\n"},
      {{"agent", "run"}, 2, "", "Error: Unknown agent command: run\n"},
      {{"project", "validate", "/does/not/exist"},
       2,
       "",
       "Error: project validate expects an existing project directory path.\n"},
      {{"runtime", "inspect", "x", "--args-json", "1"},
       2,
       "",
       "Error: inspect arguments must be a JSON object.\n"},
      {{"agent", "list-tools", "--project"}, 2, "", "Error: --project requires a path value.\n"},
  });
}

TEST_F(CLIEndToEndTest, JSONErrorsAndUnreadableArgumentFilesHaveTheirOwnExitCodes) {
  const ProcessResult broken = run({"agent", "call", "x", "--args-json", "{"});
  EXPECT_EQ(broken.exitCode, 4);
  EXPECT_EQ(broken.standardOutput, "");
  EXPECT_TRUE(broken.standardError.starts_with("JSON error: Failed to parse --args-json: "));
  EXPECT_TRUE(broken.standardError.ends_with("\n"));

  const ProcessResult missing = run({"agent", "call", "x", "--args-file", "/no/such/file"});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_TRUE(missing.standardError.starts_with("Unexpected error: ")) << missing.standardError;
  EXPECT_EQ(missing.standardOutput, "");
}

TEST_F(CLIEndToEndTest, AgentCommandsOnAProject) {
  const std::string project = projectPath();
  expectAll({
      {{"agent", "list-tools", "--project", project},
       0,
       "ask_user: Append a guided assistant prompt to the active chat for free-form replies or "
       "structured form input.\ncompile_html: ",
       ""},
      {{"agent", "list-tools", "--project", project, "--json"}, 0, "{\n  \"tools\" : [", ""},
      {{"agent", "tool-details", "List-Tools", "--project", project, "--card-type", " table "},
       0,
       "name: list_tools\nsummary: List available tools and their summaries.\nnotes: Filtered "
       "examples for card_type=table. Use only",
       ""},
      {{"agent", "tool-details", "nope", "--project", project},
       2,
       "",
       "Error: Invalid arguments for tool 'nope': Tool not found: nope. Run `zorvik agent "
       "tool-details nope --json` for exact schema and examples.\n"},
      {{"agent", "call", "tool_details", "--project", project, "--args-json", "{\"name\":3}"},
       2,
       "",
       "Error: Invalid arguments for tool 'tool_details': Type mismatch at name for String: "
       "Expected to decode String but found a number instead.. Run `zorvik agent tool-details "
       "tool_details --json` for exact schema and examples.\n"},
      {{"agent", "call", "tool_details", "--project", project},
       2,
       "",
       "Error: Invalid arguments for tool 'tool_details': Missing required key 'name'.. Run "
       "`zorvik agent tool-details tool_details --json` for exact schema and examples.\n"},
      {{"agent", "call", "Unknown-Tool", "--project", project},
       2,
       "",
       "Error: Unknown agent tool: unknown_tool\n"},
      {{"agent", "call", "tool_details", "--project", project, "--args-json",
        "{\"name\":\"tool_details\"}"},
       0,
       "{\n  \"examples\" : [",
       ""},
  });
}

TEST_F(CLIEndToEndTest, ProjectResolution) {
  expectAll({
      {{"agent", "list-tools"}, 3, "", kRuntimeUnavailable},
      {{"agent", "list-tools", "--project", "  "}, 3, "", kRuntimeUnavailable},
      {{"agent", "list-tools", "--project", "/does/not/exist"},
       2,
       "",
       "Error: agent commands require an existing project directory.\n"},
  });

  options_.environment["ZORVIK_PROJECT_PATH"] = " \n";
  expectAll({{{"agent", "list-tools"}, 3, "", kRuntimeUnavailable}});
  options_.environment["ZORVIK_PROJECT_PATH"] = projectPath();
  expectAll({{{"agent", "call", "list_tools"}, 0, "{\n  \"tools\" : [", ""}});
  // An explicit path wins over the environment.
  options_.environment["ZORVIK_PROJECT_PATH"] = "/does/not/exist";
  expectAll({{{"agent", "list-tools", "--project", projectPath()}, 0, "ask_user: ", ""}});
}

TEST_F(CLIEndToEndTest, ABoardThatDoesNotLoadFailsEveryAgentCommand) {
  project_.write(".zorvik/workspace.json", R"({"version": 1, "entries": []})");
  const ProcessResult result = run({"agent", "list-tools", "--project", projectPath()});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.standardOutput, "");
  EXPECT_EQ(result.standardError,
            "Error: Failed to load project cards: Failed to decode .zorvik/workspace.json: Missing "
            "required key 'projectId'.\n");

  project_.write(".zorvik/workspace.json", "{ not json");
  const ProcessResult garbled = run({"agent", "call", "list_tools", "--project", projectPath()});
  EXPECT_EQ(garbled.exitCode, 2);
  EXPECT_TRUE(garbled.standardError.starts_with(
      "Error: Failed to load project cards: Failed to decode .zorvik/workspace.json: The given "
      "data was not valid JSON"));

  // A folder without a workspace document is an empty board.
  TempDirectory bare;
  expectAll({{{"agent", "list-tools", "--project", bare.path().string()}, 0, "ask_user: ", ""}});
}

TEST_F(CLIEndToEndTest, TheCatalogueHoldsTheBoardToolsSortedByName) {
  const ProcessResult result = run({"agent", "call", "list_tools", "--project", projectPath()});
  ASSERT_EQ(result.exitCode, 0);
  const AnyCodableValue answer = AnyCodableValue::parse(result.standardOutput);
  std::vector<std::string> names;
  for (const auto& tool : *answer.member("tools")->asArray()) {
    names.push_back(*tool.member("name")->asString());
  }
  EXPECT_EQ(names, (std::vector<std::string>{
                       "ask_user",      "compile_html", "create_cards",      "delete_cards",
                       "edit_cards",    "focus_card",   "get_card_content",  "get_group_layout",
                       "grep_cards",    "group_cards",  "list_card_layouts", "list_card_metadata",
                       "list_tools",    "parse_pdf",    "propose_options",   "resize_cards",
                       "screenshot",    "search_cards", "search_in_card",    "tool_details",
                       "viewport_state"}));
  EXPECT_EQ(result.standardOutput.back(), '\n');
}

TEST_F(CLIEndToEndTest, BoardToolsAnswerAndReportFailuresWithTheirExitCodes) {
  writeNoteBoard();
  const std::string project = projectPath();
  expectAll({
      {{"agent", "call", "get_card_content", "--project", project, "--args-json",
        R"({"card_ids":["6f1d2c9a-3b4e-4f5a-8b6c-7d8e9f0a1b2c"],"mode":"summary"})"},
       0,
       "{\n  \"not_found\" : [],",
       ""},
      {{"agent", "call", "search-cards", "--project", project, "--args-json",
        R"({"query":"solar"})"},
       0,
       "{\n  \"results\" : [",
       ""},
      {{"agent", "call", "search_cards", "--project", project, "--args-json", R"({"query":"  "})"},
       2,
       "",
       "Error: Invalid arguments for tool 'search_cards': search_cards query must be non-empty.. "
       "Run `zorvik agent tool-details search_cards --json` for exact schema and examples.\n"},
      {{"agent", "call", "grep_cards", "--project", project, "--args-json",
        R"({"query":"(","mode":"regex"})"},
       2,
       "",
       "Error: Invalid arguments for tool 'grep_cards': grep_cards regex is invalid: "
       "U_REGEX_MISMATCHED_PAREN. Run `zorvik agent tool-details grep_cards --json` for exact "
       "schema and examples.\n"},
      {{"agent", "call", "get_card_content", "--project", project, "--args-json",
        R"({"mode":"raw"})"},
       2,
       "",
       "Error: Invalid arguments for tool 'get_card_content': Cannot initialize "
       "WorkspaceCardContentMode from invalid String value raw at mode. Run `zorvik agent "
       "tool-details get_card_content --json` for exact schema and examples.\n"},
  });
  const ProcessResult content = run({"agent", "call", "get_card_content", "--project", project,
                                     "--args-json", R"({"card_ids":["nope"]})"});
  const AnyCodableValue answer = AnyCodableValue::parse(content.standardOutput);
  EXPECT_EQ(answer.member("not_found")->compactJSONString(), R"(["nope"])");
  EXPECT_EQ(content.exitCode, 0);
}

// The inspect commands reach their tools without building the agent catalogue: the layout tools
// read the project, the runtime tools answer at once without an application and pass the
// application's answer through when one runs.
TEST_F(CLIEndToEndTest, InspectCommandsReachTheLayoutAndViewportTools) {
  writeNoteBoard();
  const std::string project = projectPath();
  const std::string focus = R"({"card_id": ")" + std::string(kCard) + R"("})";
  expectAll({
      {{"project", "inspect", "list-card-layouts", "--project", project, "--args-json",
        R"({"scope": "board"})"},
       0,
       "{\n  \"layouts\" : [",
       ""},
      {{"project", "inspect", "get_group_layout", "--project", project},
       0,
       "{\n  \"groups\" : [",
       ""},
      {{"project", "inspect", "focus_card", "--project", project},
       2,
       "",
       "Error: Unknown project inspect tool: focus_card\n"},
      {{"runtime", "inspect", "screenshot", "--project", project},
       7,
       "{\n  \"camera_scope\" : \"user\"",
       ""},
      {{"runtime", "inspect", "list_card_layouts", "--project", project},
       2,
       "",
       "Error: Unknown runtime inspect tool: list_card_layouts\n"},
  });
  // Without an application focus_card still computes the card's centre, and says why it could
  // not move the camera.
  const ProcessResult unfocused =
      run({"runtime", "inspect", "focus-card", "--project", project, "--args-json", focus});
  const AnyCodableValue answer = AnyCodableValue::parse(unfocused.standardOutput);
  EXPECT_EQ(answer.member("resolved_center")->compactJSONString(), R"({"x":60,"y":45})");
  EXPECT_EQ(*answer.member("error_code")->asString(), "runtime_unavailable");

  testing::FakeAppProcess app(testing::FakeAppOptions{.projectFolder = project_.path(),
                                                      .responses = AnyCodableValue::parse(R"({
        "viewport_state": {"ok": true, "payload": {"zoom": 2, "camera_scope": "agent"}}})")});
  const ProcessResult viewport = run({"runtime", "inspect", "viewport_state", "--project", project,
                                      "--args-json", R"({"camera_scope": "agent"})"});
  EXPECT_EQ(viewport.exitCode, 0) << viewport.standardError;
  EXPECT_EQ(AnyCodableValue::parse(viewport.standardOutput).compactJSONString(),
            R"({"camera_scope":"agent","zoom":2})");
}

}  // namespace
}  // namespace zorvik
