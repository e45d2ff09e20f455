#include "tools/framework/tool_details_tool.h"

#include <gtest/gtest.h>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "tools/framework/agent_error.h"
#include "tools/framework/list_tools_tool.h"

namespace zorvik {
namespace {

AnyCodableValue json(std::string_view text) { return AnyCodableValue::parse(text); }

class ToolDetailsToolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    registry_.registerTool(std::make_shared<ListToolsTool>(registry_));
    registry_.registerTool(std::make_shared<ToolDetailsTool>(registry_));
    registerExamples("create_cards", R"([
      {"cards": [{"type": "Table"}]},
      {"cards": [{"type": "item"}, {"type": "image"}]},
      "not an object",
      {"cards": "not a list"}])");
    registerExamples("edit_cards", R"([
      {"edits": [{"table_cell": null}]},
      {"edits": [{"markdown": "x"}, {"note": "y"}]},
      {"edits": [{"group_style": {}}]}])");
    registerExamples("get_card_content", R"([
      {"type_options": {"table": {}}},
      {"type_options": {"chat": {}}},
      {"type_options": ["table"]}])");
  }

  void registerExamples(const std::string& name, std::string_view examples) {
    AgentToolSpec spec{.name = name, .summary = name + " summary", .notes = "Original notes."};
    spec.examples = decodeValue<std::vector<AnyCodableValue>>(json(examples));
    registry_.registerTool(std::make_shared<AnyAgentTool>(spec, nullptr));
  }

  AnyCodableValue details(std::string_view input) {
    return ToolDetailsTool(registry_).run(json(input), AgentToolContext::forSingleCall());
  }

  AgentToolRegistry registry_;
};

TEST_F(ToolDetailsToolTest, FiltersExamplesByCardType) {
  struct Case {
    std::string input;
    std::string examples;  // compact JSON of the answer's examples
  };
  const std::vector<Case> cases = {
      {R"({"name":"create_cards","card_type":"  TABLE\n"})", R"([{"cards":[{"type":"Table"}]}])"},
      {R"({"name":"create_cards","card_type":"image"})",
       R"([{"cards":[{"type":"item"},{"type":"image"}]}])"},
      {R"({"name":"edit_cards","card_type":"item"})",
       R"([{"edits":[{"markdown":"x"},{"note":"y"}]}])"},
      {R"({"name":"edit_cards","card_type":"rich_text"})",
       R"([{"edits":[{"markdown":"x"},{"note":"y"}]}])"},
      {R"({"name":"edit_cards","card_type":"table"})", R"([{"edits":[{"table_cell":null}]}])"},
      {R"({"name":"get_card_content","card_type":"chat"})", R"([{"type_options":{"chat":{}}}])"},
      // No match keeps every example.
      {R"({"name":"edit_cards","card_type":"chat"})",
       R"([{"edits":[{"table_cell":null}]},{"edits":[{"markdown":"x"},{"note":"y"}]},)"
       R"({"edits":[{"group_style":{}}]}])"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.input);
    const AnyCodableValue answer = details(test.input);
    EXPECT_EQ(answer.member("examples")->compactJSONString(), test.examples);
    EXPECT_TRUE(
        answer.member("notes")->asString()->starts_with("Filtered examples for card_type="));
    EXPECT_TRUE(answer.member("notes")->asString()->ends_with(". Original notes."));
  }
}

TEST_F(ToolDetailsToolTest, UnknownToolsKeepAllExamplesAndBlankTypesChangeNothing) {
  const AnyCodableValue filtered = details(R"({"name":"list_tools","card_type":"table"})");
  EXPECT_EQ(filtered.member("examples")->compactJSONString(), "[{}]");
  EXPECT_EQ(*filtered.member("notes")->asString(),
            "Filtered examples for card_type=table. " + *registry_.spec("list_tools")->notes);

  const AnyCodableValue unfiltered = details(R"({"name":"create_cards","card_type":"  "})");
  EXPECT_EQ(*unfiltered.member("notes")->asString(), "Original notes.");
  EXPECT_EQ(unfiltered.member("examples")->asArray()->size(), 4u);

  AgentToolSpec bare{.name = "bare", .summary = "no notes"};
  registry_.registerTool(std::make_shared<AnyAgentTool>(bare, nullptr));
  const AnyCodableValue noNotes = details(R"({"name":"bare","card_type":"html"})");
  EXPECT_EQ(*noNotes.member("notes")->asString(), "Filtered examples for card_type=html.");
  EXPECT_EQ(noNotes.member("examples"), nullptr);
}

TEST_F(ToolDetailsToolTest, BadRequestsThrow) {
  try {
    details(R"({"name":"nope"})");
    ADD_FAILURE() << "no error";
  } catch (const AgentError& error) {
    EXPECT_STREQ(error.what(), "Tool not found: nope");
  }
  EXPECT_THROW(details(R"({"card_type":"table"})"), DecodingError);
  EXPECT_THROW(details(R"({"name":7})"), DecodingError);
}

}  // namespace
}  // namespace zorvik
