// Bridge tools against a live stand-in for the desktop application: what the application answers
// is what the tool answers, and nothing pretends to succeed when it does not answer.
#include "cli/runtime_bridge_tool.h"

#include <gtest/gtest.h>

#include "support/fake_app/fake_app_process.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

using testing::FakeAppOptions;
using testing::FakeAppProcess;
using testing::TempDirectory;

AnyCodableValue call(const std::string& name, const std::filesystem::path& project,
                     const AnyCodableValue& input) {
  auto tool = makeRuntimeBridgeTool(AgentToolSpec{.name = name, .summary = "test"}, project,
                                    std::make_shared<const RuntimeControlBridge>());
  return tool->run(input, AgentToolContext::forSingleCall());
}

TEST(RuntimeBridgeToolTest, AnswersWhatTheApplicationAnswers) {
  TempDirectory project;
  FakeAppProcess app(
      FakeAppOptions{.projectFolder = project.path(), .responses = AnyCodableValue::parse(R"({
        "ask_user": {"ok": true, "payload": {"status": "ok", "answer": "{{arguments}}"}},
        "propose_options": {"ok": true},
        "create_cards": {"ok": false, "error_code": "invalid_card", "message": "No type."},
        "edit_cards": {"ok": false, "payload": {"ok": false, "reason": "locked"}},
        "delete_cards": {"ok": false, "error_code": "gone"}
      })")});

  const AnyCodableValue input = JSONObject{{"question", "Which region?"}};
  const AnyCodableValue answered = call("ask_user", project.path(), input);
  EXPECT_EQ(*answered.member("status")->asString(), "ok");
  EXPECT_EQ(*answered.member("answer"), input);
  EXPECT_EQ(call("propose_options", project.path(), JSONObject{}).compactJSONString(),
            R"({"ok":true,"status":"ok"})");
  // A board mutation that fails without a payload keeps its own answer shape.
  const AnyCodableValue created = call("create_cards", project.path(), JSONObject{});
  EXPECT_EQ(*created.member("error_code")->asString(), "invalid_card");
  EXPECT_EQ(*created.member("message")->asString(), "No type.");
  EXPECT_EQ(*created.member("mutation_outcome")->member("status")->asString(), "failed");
  EXPECT_EQ(*created.member("project_checkpoint_ref")->member("status")->asString(), "unavailable");
  EXPECT_EQ(call("edit_cards", project.path(), JSONObject{}).compactJSONString(),
            R"({"ok":false,"reason":"locked"})");
  EXPECT_EQ(
      call("delete_cards", project.path(), JSONObject{{"card_ids", AnyCodableValue::Array{"A"}}})
          .member("mutation_outcome")
          ->member("reason_codes")
          ->compactJSONString(),
      R"(["gone"])");
  // Any other tool answers the generic failure object.
  EXPECT_EQ(call("focus_board", project.path(), JSONObject{}).compactJSONString(),
            R"({"error_code":"unsupported_command","message":"Unsupported command: focus_board",)"
            R"("ok":false,"status":"error"})");

  const auto handled = app.handledRequests();
  ASSERT_EQ(handled.size(), 6u);
  EXPECT_EQ(*handled[4].member("command")->asString(), "delete_cards");
  EXPECT_EQ(*handled[0].member("command")->asString(), "ask_user");
}

TEST(RuntimeBridgeToolTest, RejectsNonObjectInputAndPicksTimeouts) {
  TempDirectory project;
  try {
    call("ask_user", project.path(), AnyCodableValue::Array{1});
    FAIL() << "no error";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "ask_user expects a JSON object input.");
  }
  EXPECT_FALSE(std::filesystem::exists(project.path() / ".zorvik-control"))
      << "nothing is sent for bad input";
  for (const char* mutation : {"create_cards", "group_cards", "edit_cards", "delete_cards",
                               "resize_cards", "compile_html", "parse_pdf"}) {
    EXPECT_EQ(runtimeBridgeTimeoutSeconds(mutation), 30) << mutation;
  }
  EXPECT_EQ(runtimeBridgeTimeoutSeconds("ask_user"), 8);
  EXPECT_EQ(runtimeBridgeTimeoutSeconds("screenshot"), 8);
}

}  // namespace
}  // namespace zorvik
