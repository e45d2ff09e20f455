#include "cli/option_parsers.h"

#include <gtest/gtest.h>

#include "cli/zorvik_cli_error.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

// The message of the ZorvikCLIError that `parse` throws, prefixed by its kind.
template <class Parse>
std::string failure(Parse parse) {
  try {
    parse();
  } catch (const ZorvikCLIError& error) {
    const char* kind = error.kind() == ZorvikCLIError::Kind::invalidJSON ? "json: " : "args: ";
    return kind + error.message();
  }
  return "no error";
}

TEST(OptionParsersTest, ToolInvocationRejectsBadCommandLines) {
  const auto invoke = [](Arguments arguments) {
    return failure([&] { parseToolInvocationOptions("agent call", arguments, HelpTopic::agent); });
  };
  EXPECT_EQ(invoke({}), "args: agent call requires a tool name.");
  EXPECT_EQ(invoke({"--help"}), "args: agent call requires a tool name.");
  EXPECT_EQ(invoke({"x", "--project"}), "args: --project requires a path value.");
  EXPECT_EQ(invoke({"x", "--app"}), "args: --app requires a bundle path value.");
  EXPECT_EQ(invoke({"x", "--args-json"}), "args: --args-json requires a JSON object string.");
  EXPECT_EQ(invoke({"x", "--args-file"}), "args: --args-file requires a file path.");
  EXPECT_EQ(invoke({"x", "--json"}), "args: Unknown option: --json");
  EXPECT_EQ(invoke({"x", "extra"}), "args: Unknown option: extra");
  EXPECT_EQ(invoke({"x", "--args-json", "{}", "--args-file", "/does/not/exist"}),
            "args: Use either --args-json or --args-file, not both.");
  EXPECT_EQ(invoke({"x", "--args-json", "[1]"}),
            "args: agent call arguments must be a JSON object.");
  EXPECT_TRUE(invoke({"x", "--args-json", "{"}).starts_with("json: Failed to parse --args-json: "));
  EXPECT_EQ(invoke({"x", "--args-json", "{\"a\":\"\xFF\"}"}),
            "json: Failed to parse --args-json: Invalid UTF-8 string");
  EXPECT_EQ(failure([] { parseToolInvocationOptions("inspect", {"-x"}, HelpTopic::project); }),
            "args: inspect requires a tool name.");
}

TEST(OptionParsersTest, ToolInvocationReadsNamesArgumentsAndHelp) {
  auto parsed =
      parseToolInvocationOptions("agent call",
                                 {" Get-Card-Content\n", "--project", "--odd", "--app", "A",
                                  "--project", "/p", "--args-json", R"({"mode":"full"})"},
                                 HelpTopic::agent);
  const auto& options = std::get<ToolInvocationOptions>(parsed);
  EXPECT_EQ(options.toolName, "get_card_content");
  EXPECT_EQ(options.projectPath, "/p");
  EXPECT_EQ(options.appBundlePath, "A");
  EXPECT_EQ(options.arguments.compactJSONString(), R"({"mode":"full"})");

  auto empty = parseToolInvocationOptions("agent call", {"t"}, HelpTopic::agent);
  EXPECT_EQ(std::get<ToolInvocationOptions>(empty).arguments, AnyCodableValue(JSONObject{}));

  // A help flag met before a bad token wins; "--json" anywhere asks for the JSON form.
  auto help = parseToolInvocationOptions("inspect", {"t", "--args-json", "{", "-h", "--json"},
                                         HelpTopic::runtime);
  EXPECT_EQ(std::get<HelpRequest>(help), (HelpRequest{HelpTopic::runtime, true}));
  EXPECT_EQ(failure([] {
              parseToolInvocationOptions("inspect", {"t", "--json", "--help"}, HelpTopic::project);
            }),
            "args: Unknown option: --json");
}

TEST(OptionParsersTest, ArgumentsFileMustBeReadableUTF8JSON) {
  testing::TempDirectory folder;
  const auto good = folder.write("good.json", R"({"query":"solar"})").string();
  const auto latin1 = folder.write("latin1.json", "{\"q\":\"caf\xE9\"}").string();
  const auto broken = folder.write("broken.json", "{\"q\":").string();
  const auto list = folder.write("list.json", "[]").string();

  auto parsed =
      parseToolInvocationOptions("agent call", {"t", "--args-file", good}, HelpTopic::agent);
  EXPECT_EQ(std::get<ToolInvocationOptions>(parsed).arguments.compactJSONString(),
            R"({"query":"solar"})");
  const auto fromFile = [](const std::string& path) {
    return failure([&] {
      parseToolInvocationOptions("agent call", {"t", "--args-file", path}, HelpTopic::agent);
    });
  };
  EXPECT_EQ(fromFile(latin1), "json: Unable to read UTF-8 text from " + latin1 + ".");
  EXPECT_TRUE(fromFile(broken).starts_with("json: Failed to parse JSON from " + broken + ": "));
  EXPECT_EQ(fromFile(list), "args: agent call arguments must be a JSON object.");
  EXPECT_THROW(parseToolInvocationOptions(
                   "agent call", {"t", "--args-file", folder.path() / "missing"}, HelpTopic::agent),
               std::system_error);
}

TEST(OptionParsersTest, ProjectValidateChecksPathFirstAndCountStrictly) {
  const auto validate = [](Arguments arguments) {
    return failure([&] { parseProjectValidateOptions(arguments); });
  };
  EXPECT_EQ(validate({}), "args: project validate requires a project folder path.");
  EXPECT_EQ(validate({"--help"}), "args: project validate requires a project folder path.");
  for (std::string bad : {"0", "-3", "", "5x", "++5", "1.5", "99999999999", " 5"}) {
    SCOPED_TRACE(bad);
    EXPECT_EQ(validate({".", "--max-diagnostics", bad}),
              "args: --max-diagnostics requires a positive integer.");
  }
  EXPECT_EQ(validate({".", "--max-diagnostics"}),
            "args: --max-diagnostics requires a positive integer.");
  EXPECT_EQ(validate({".", "other"}), "args: Unknown option: other");

  auto parsed =
      parseProjectValidateOptions({"p", "--json", "--max-diagnostics", "+5", "--errors-only"});
  const auto& options = std::get<ProjectValidateOptions>(parsed);
  EXPECT_EQ(options.projectPath, "p");
  EXPECT_TRUE(options.asJSON);
  EXPECT_FALSE(options.includeWarnings);
  EXPECT_EQ(options.maxDiagnostics, 5);
  EXPECT_EQ(std::get<ProjectValidateOptions>(parseProjectValidateOptions({"p"})).maxDiagnostics,
            200);
}

TEST(OptionParsersTest, SmallerParsers) {
  auto current = parseProjectCurrentOptions({"--app", "--json", "--app", "B"});
  EXPECT_EQ(std::get<ProjectCurrentOptions>(current).appBundlePath, "B");
  EXPECT_FALSE(std::get<ProjectCurrentOptions>(current).asJSON);
  EXPECT_EQ(std::get<HelpRequest>(parseProjectCurrentOptions({"--help", "--json"})),
            (HelpRequest{HelpTopic::project, true}));
  EXPECT_EQ(failure([] { parseProjectCurrentOptions({"--app"}); }),
            "args: --app requires a bundle path value.");

  auto details =
      parseAgentToolDetailsOptions({"Create-Cards", "--card-type", "  table ", "--json"});
  EXPECT_EQ(std::get<AgentToolDetailsOptions>(details).toolName, "create_cards");
  EXPECT_EQ(std::get<AgentToolDetailsOptions>(details).cardType, "table");
  EXPECT_EQ(failure([] {
              parseAgentToolDetailsOptions({"t", "--card-type"});
            }),
            "args: --card-type requires a value.");
  EXPECT_EQ(failure([] { parseAgentToolDetailsOptions({}); }),
            "args: tool-details requires a tool name.");

  EXPECT_EQ(std::get<HelpRequest>(parseAgentListToolsOptions({"--project", "p", "-h"})),
            (HelpRequest{HelpTopic::agent, false}));
  EXPECT_EQ(failure([] { parseAgentListToolsOptions({"--verbose"}); }),
            "args: Unknown option: --verbose");

  // The whole list is walked before anything runs: a later bad token fails even after help.
  EXPECT_EQ(failure([] {
              parseFlagOnlyOptions({"--help", "--bogus"});
            }),
            "args: Unknown option: --bogus");
  const auto flags = parseFlagOnlyOptions({"help", "--json"});
  EXPECT_TRUE(flags.help);
  EXPECT_TRUE(flags.asJSON);
}

}  // namespace
}  // namespace zorvik
