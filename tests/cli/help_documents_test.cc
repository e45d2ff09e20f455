#include "cli/help_documents.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "cli/zorvik_cli_error.h"

namespace zorvik {
namespace {

constexpr HelpTopic kCommandTopics[] = {HelpTopic::project, HelpTopic::runtime, HelpTopic::agent,
                                        HelpTopic::doctor, HelpTopic::schema};

std::string helpOutput(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  runHelp(arguments, out);
  return out.str();
}

std::string printed(HelpTopic topic, bool asJSON) {
  std::ostringstream out;
  printHelp(out, topic, asJSON);
  return out.str();
}

// `command` (runHelp or runVersion) must refuse `arguments` with `message` and print nothing.
void expectInvalidArguments(const std::vector<std::string>& arguments, const std::string& message,
                            void (*command)(const std::vector<std::string>&,
                                            std::ostream&) = runHelp) {
  std::ostringstream out;
  try {
    command(arguments, out);
    ADD_FAILURE() << "no error for " << ::testing::PrintToString(arguments);
  } catch (const ZorvikCLIError& error) {
    EXPECT_EQ(error.kind(), ZorvikCLIError::Kind::invalidArguments);
    EXPECT_EQ(error.message(), message);
  }
  EXPECT_EQ(out.str(), "");
}

const std::string& stringAt(const AnyCodableValue& value, std::string_view key) {
  const AnyCodableValue* member = value.member(key);
  static const std::string missing = "<missing>";
  return member && member->asString() ? *member->asString() : missing;
}

TEST(HelpCommandTest, TopicIsMatchedCaseInsensitivelyAfterTrimming) {
  EXPECT_EQ(helpOutput({"Project"}), helpText(HelpTopic::project));
  EXPECT_EQ(AnyCodableValue::parse(helpOutput({" RUNTIME\n", "--json"})),
            helpPayload(HelpTopic::runtime));
  EXPECT_EQ(helpOutput({"--json", "agent"}), printed(HelpTopic::agent, true));
  EXPECT_EQ(helpOutput({}), helpText(HelpTopic::root));
  EXPECT_EQ(helpOutput({"  "}), helpText(HelpTopic::root));
  EXPECT_EQ(AnyCodableValue::parse(helpOutput({"--json"})), rootHelpPayload());
}

TEST(HelpCommandTest, RejectsBadArgumentsWithExactMessages) {
  expectInvalidArguments(
      {"project", "doctor"},
      "help accepts at most one topic. Valid topics: project, runtime, agent, doctor, schema.");
  expectInvalidArguments({"--bogus"}, "Unknown option: --bogus");
  expectInvalidArguments({"agent", "-x"}, "Unknown option: -x");
  expectInvalidArguments(
      {" Bogus "},
      "Unknown help topic:  Bogus . Valid topics: project, runtime, agent, doctor, schema.");
  // Command words that are no help topics.
  expectInvalidArguments(
      {"version"},
      "Unknown help topic: version. Valid topics: project, runtime, agent, doctor, schema.");
}

TEST(HelpCommandTest, HelpFlagStopsTheWalkAndPrintsRootHelp) {
  EXPECT_EQ(helpOutput({"--help", "--bogus", "a", "b"}), helpText(HelpTopic::root));
  EXPECT_EQ(helpOutput({"project", "-h", "doctor"}), helpText(HelpTopic::root));
  EXPECT_EQ(helpOutput({"--json", "-h", "--bogus"}), printed(HelpTopic::root, true));
}

TEST(HelpDocumentsTest, EveryDocumentHasNameSummaryAndUsage) {
  const AnyCodableValue root = rootHelpPayload();
  std::vector<AnyCodableValue> documents = {root};
  for (HelpTopic topic : kCommandTopics) documents.push_back(helpPayload(topic));
  std::vector<std::string> names;
  for (const AnyCodableValue& command : *root.member("commands")->asArray()) {
    names.push_back(stringAt(command, "name"));
    documents.push_back(command);
    if (const AnyCodableValue* subs = command.member("subcommands")) {
      for (const AnyCodableValue& sub : *subs->asArray()) documents.push_back(sub);
    }
  }
  EXPECT_EQ(names, (std::vector<std::string>{"project", "runtime", "agent", "doctor", "schema",
                                             "help", "version"}));
  for (const AnyCodableValue& document : documents) {
    SCOPED_TRACE(document.compactJSONString().value_or(""));
    EXPECT_NE(stringAt(document, "name"), "<missing>");
    EXPECT_NE(stringAt(document, "summary"), "<missing>");
    const AnyCodableValue* usage = document.member("usage");
    ASSERT_NE(usage, nullptr);
    EXPECT_TRUE(usage->isString() || usage->isArray());
  }
  // A topic's payload is the same document as its entry in the root's command list.
  EXPECT_EQ((*root.member("commands")->asArray())[1], helpPayload(HelpTopic::runtime));
}

TEST(HelpDocumentsTest, RootDocumentStatesExitCodesFlagsAndPointers) {
  const AnyCodableValue root = rootHelpPayload();
  EXPECT_EQ(stringAt(root, "name"), "zorvik");
  EXPECT_EQ(stringAt(root, "version"), currentVersionString());
  EXPECT_EQ(stringAt(root, "usage"), "zorvik <command> [options]");
  // Exit codes 0 to 8 in order; two anchors for their summaries.
  const auto& exitCodes = *root.member("exit_codes")->asArray();
  ASSERT_EQ(exitCodes.size(), 9u);
  for (size_t i = 0; i < exitCodes.size(); ++i) {
    EXPECT_EQ(*exitCodes[i].member("code"), AnyCodableValue(static_cast<int64_t>(i)));
  }
  EXPECT_EQ(stringAt(exitCodes[2], "summary"), "Invalid CLI arguments");
  EXPECT_EQ(stringAt(exitCodes[8], "summary"), "Agent call returned status=error/ok=false");
  EXPECT_EQ(*root.member("machine_readable"), AnyCodableValue::parse(R"({
    "help": "zorvik help --json", "command_help": "zorvik help <command> --json",
    "schema": "zorvik schema --json"})"));
  EXPECT_EQ(*root.member("environment"), AnyCodableValue::parse(R"([{"name": "ZORVIK_PROJECT_PATH",
    "summary": "Explicit project path override for project discovery"}])"));
  EXPECT_EQ(root.member("global_flags")->asArray()->size(), 3u);

  const std::string text = helpText(HelpTopic::root);
  EXPECT_NE(text.find("Usage: zorvik <command> [options]\n"), std::string::npos);
  for (const AnyCodableValue& code : *root.member("exit_codes")->asArray()) {
    EXPECT_NE(text.find(stringAt(code, "summary")), std::string::npos);
  }
  EXPECT_NE(text.find("ZORVIK_PROJECT_PATH"), std::string::npos);
  EXPECT_NE(text.find("zorvik help <command> --json"), std::string::npos);
}

TEST(HelpDocumentsTest, RootHintsFollowTheProgramPath) {
  const std::string saved = programPath();
  setProgramPath("/tmp/X.app/Contents/MacOS/zorvik");
  EXPECT_EQ(*rootHelpPayload().member("discoverability"), AnyCodableValue::parse(R"({
    "bundled_cli_path_hint": "/tmp/X.app/Contents/MacOS/zorvik",
    "bundled_docs_path_hint": "/tmp/X.app/Contents/Resources/CLI.md"})"));
  EXPECT_TRUE(
      helpText(HelpTopic::root).ends_with("\nDocs:\n/tmp/X.app/Contents/Resources/CLI.md\n"))
      << helpText(HelpTopic::root);
  setProgramPath(saved);
}

TEST(HelpDocumentsTest, CommandDocumentsCarryTheirDetails) {
  const AnyCodableValue project = helpPayload(HelpTopic::project);
  const auto& projectSubs = *project.member("subcommands")->asArray();
  ASSERT_EQ(projectSubs.size(), 3u);
  EXPECT_EQ(*projectSubs[1].member("exit_codes"), AnyCodableValue::parse("[0, 5]"));
  EXPECT_EQ(
      *projectSubs[2].member("tools"),
      AnyCodableValue::parse(R"(["compile_project", "list_card_layouts", "get_group_layout"])"));
  EXPECT_EQ(stringAt(project, "machine_readable_help"), "zorvik help project --json");

  const AnyCodableValue runtime = helpPayload(HelpTopic::runtime);
  const AnyCodableValue& runtimeInspect = (*runtime.member("subcommands")->asArray())[0];
  EXPECT_EQ(*runtimeInspect.member("exit_codes"), AnyCodableValue::parse("[0, 7]"));
  EXPECT_EQ(stringAt((*helpPayload(HelpTopic::agent).member("subcommands")->asArray())[2], "name"),
            "call");

  const AnyCodableValue version = (*rootHelpPayload().member("commands")->asArray()).back();
  EXPECT_EQ(*version.member("usage"),
            AnyCodableValue::parse(R"(["zorvik version", "zorvik --version"])"));
}

TEST(HelpDocumentsTest, TextFormsStateTheDocumentsFacts) {
  for (HelpTopic topic : kCommandTopics) {
    const AnyCodableValue document = helpPayload(topic);
    const std::string text = helpText(topic);
    SCOPED_TRACE(stringAt(document, "name"));
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.back(), '\n');
    EXPECT_NE(text.find("Usage:\n"), std::string::npos);
    EXPECT_NE(text.find(stringAt(document, "machine_readable_help")), std::string::npos);
    EXPECT_NE(text.find("Examples:\n"), std::string::npos);
    std::vector<AnyCodableValue> usages = {*document.member("usage")};
    if (const AnyCodableValue* subs = document.member("subcommands")) {
      usages.clear();
      for (const AnyCodableValue& sub : *subs->asArray()) {
        usages.push_back(*sub.member("usage"));
        if (const AnyCodableValue* tools = sub.member("tools")) {
          for (const AnyCodableValue& tool : *tools->asArray()) {
            EXPECT_NE(text.find(*tool.asString()), std::string::npos);
          }
        }
      }
    }
    for (const AnyCodableValue& usage : usages) {
      EXPECT_NE(text.find("  " + *usage.asString() + "\n"), std::string::npos);
    }
  }
  const std::string runtime = helpText(HelpTopic::runtime);
  EXPECT_NE(runtime.find("card   = isolated full-card render for one card_id\n"),
            std::string::npos);
  EXPECT_NE(helpText(HelpTopic::agent).find("Schema-first guidance:\n"), std::string::npos);
}

TEST(HelpDocumentsTest, SchemaDocumentWrapsTheRootDocument) {
  const AnyCodableValue schema = schemaDocument();
  ASSERT_TRUE(schema.isObject());
  EXPECT_EQ(schema.asObject()->size(), 3u);
  EXPECT_EQ(*schema.member("schema_version"), AnyCodableValue(1));
  EXPECT_EQ(stringAt(schema, "format"), "zorvik_cli_schema");
  EXPECT_EQ(*schema.member("cli"), rootHelpPayload());
  const std::string json = printed(HelpTopic::schema, true);
  EXPECT_EQ(json, *helpPayload(HelpTopic::schema).jsonString() + "\n");
}

TEST(VersionInfoTest, VersionStringHasFourForms) {
  EXPECT_EQ(versionString(" 0.1.0 ", "\tabc123\n"), "zorvik 0.1.0 (abc123)");
  EXPECT_EQ(versionString("0.1.0", "  "), "zorvik 0.1.0");
  EXPECT_EQ(versionString("", "123"), "zorvik build 123");
  EXPECT_EQ(versionString("\n", ""), "zorvik dev");
}

TEST(VersionInfoTest, RunVersionPrintsOrRejectsArguments) {
  std::ostringstream out;
  runVersion({}, out);
  EXPECT_EQ(out.str(), currentVersionString() + "\n");
  EXPECT_TRUE(currentVersionString().starts_with("zorvik "));
  expectInvalidArguments({"--json"}, "version does not accept positional arguments.", runVersion);
}

TEST(VersionInfoTest, BundleHintsPointIntoTheBundleOrTheInstallPrefix) {
  EXPECT_EQ(bundledCLIExecutablePathHint("/tmp/X.app/Contents/MacOS/zorvik"),
            "/tmp/X.app/Contents/MacOS/zorvik");
  EXPECT_EQ(bundledCLIDocsPathHint("/tmp/X.app/Contents/MacOS/zorvik"),
            "/tmp/X.app/Contents/Resources/CLI.md");
  // The path is standardised before the bundle test.
  EXPECT_EQ(bundledCLIDocsPathHint("/tmp/Y/../X.app/Contents/MacOS/./other"),
            "/tmp/X.app/Contents/Resources/CLI.md");

  EXPECT_EQ(bundledCLIExecutablePathHint("/opt/zv/bin/zorvik"), "/opt/zv/bin/zorvik");
  EXPECT_EQ(bundledCLIDocsPathHint("/opt/zv/bin/zorvik"), "/opt/zv/share/zorvik/CLI.md");

  const std::filesystem::path cwd = std::filesystem::current_path();
  EXPECT_EQ(bundledCLIExecutablePathHint("x/../bin/zorvik"), (cwd / "bin/zorvik").string());

  // No usable path: the running executable, this test binary.
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
  EXPECT_EQ(bundledCLIExecutablePathHint(""), self.string());
  EXPECT_EQ(bundledCLIExecutablePathHint("zorvik"), self.string());
  EXPECT_EQ(bundledCLIDocsPathHint(""),
            (self.parent_path().parent_path() / "share/zorvik/CLI.md").string());
}

}  // namespace
}  // namespace zorvik
