// focus_card, screenshot and viewport_state against project folders with no application, with a
// stale one, and with the stand-in application (zorvik_fake_app) answering from a script.
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "layout_test_project.h"
#include "support/fake_app/fake_app_process.h"
#include "support/temp_directory.h"
#include "tools/bridge/runtime_tool_messages.h"
#include "tools/framework/agent_tool_context.h"
#include "tools/layout/focus_card_tool.h"
#include "tools/layout/get_group_layout_tool.h"
#include "tools/layout/list_card_layouts_tool.h"
#include "tools/layout/screenshot_tool.h"
#include "tools/layout/viewport_state_tool.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using testing::at;
using testing::FakeAppOptions;
using testing::FakeAppProcess;
using testing::folderPayload;
using testing::invalidArgumentMessage;
using testing::LayoutTestProject;
using testing::richTextPayload;
using Array = AnyCodableValue::Array;

constexpr const char* kGroup = "6A000000-0000-4000-8000-00000000006A";
constexpr const char* kInside = "6B000000-0000-4000-8000-00000000006B";
// The card the tools' own examples name.
constexpr const char* kExampleCard = "3F2B8C1E-5A7D-4E21-9B6C-0D4E8A1F2C3B";

std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    files.push_back(it->path());
  }
  return files;
}

class ViewportToolsTest : public ::testing::Test {
 protected:
  // Runs the tool and fails the test when the call took as long as a bridge wait would.
  AnyCodableValue runQuickly(const AgentTool& tool, const AnyCodableValue& input) const {
    const auto start = std::chrono::steady_clock::now();
    AnyCodableValue answer = tool.run(input, context_);
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_LT(seconds, 2.0) << tool.spec().name << " waited for an absent application";
    return answer;
  }
  void startApp(const char* script, double staleSeconds = 0) {
    app_ =
        std::make_unique<FakeAppProcess>(FakeAppOptions{.projectFolder = project_.path(),
                                                        .responses = AnyCodableValue::parse(script),
                                                        .staleSeconds = staleSeconds});
  }
  fs::path inbox() const { return project_.path() / ".zorvik-control/inbox"; }

  LayoutTestProject project_{{
      {kExampleCard, "richText", -200, -100, 50, 31, 0, {}, richTextPayload("example")},
      {kGroup, "folder", 80, 180, 400, 300, 0, {}, folderPayload({{"layout", "freeform"}})},
      {kInside, "richText", 100, 200, 300, 100, 0, kGroup, richTextPayload("inside")},
  }};
  const AgentToolContext context_ = AgentToolContext::forSingleCall();
  const FocusCardTool focus_{project_.path()};
  const ScreenshotTool screenshot_{project_.path()};
  const ViewportStateTool viewport_{project_.path()};
  std::unique_ptr<FakeAppProcess> app_;
};

TEST_F(ViewportToolsTest, WithoutTheApplicationEveryToolAnswersAtOnce) {
  const AnyCodableValue focused = runQuickly(focus_, JSONObject{{"card_id", kInside}});
  EXPECT_EQ(focused,
            AnyCodableValue(JSONObject{{"resolved_folder_id", kGroup},
                                       {"resolved_center", JSONObject{{"x", 250}, {"y", 250}}},
                                       {"zoom", 1},
                                       {"camera_scope", "user"},
                                       {"applied_runtime_scroll", false},
                                       {"error_code", "runtime_unavailable"},
                                       {"message", "Desktop runtime not connected."}}));
  const AnyCodableValue rootCard = runQuickly(
      focus_, JSONObject{{"card_id", kExampleCard}, {"zoom", 2.5}, {"camera_scope", "agent"}});
  EXPECT_TRUE(at(rootCard, "resolved_folder_id").isNull());
  EXPECT_EQ(at(rootCard, "resolved_center"),
            AnyCodableValue(JSONObject{{"x", -175}, {"y", -84.5}}));
  EXPECT_EQ(at(rootCard, "zoom"), AnyCodableValue(2.5));
  EXPECT_EQ(at(rootCard, "camera_scope"), AnyCodableValue("agent"));

  const AnyCodableValue shot = runQuickly(screenshot_, JSONObject{{"snapshot_mode", "cards"},
                                                                  {"card_ids", Array{kInside}},
                                                                  {"folder_id", kGroup},
                                                                  {"camera_scope", "agent"}});
  EXPECT_EQ(shot, AnyCodableValue(JSONObject{{"status", "error"},
                                             {"snapshot_mode", "cards"},
                                             {"focus_applied", false},
                                             {"image_path", nullptr},
                                             {"image_paths", Array{}},
                                             {"snapshots", Array{}},
                                             {"captured_rect", nullptr},
                                             {"zoom", 1},
                                             {"folder_id", kGroup},
                                             {"engine_mode", "headless"},
                                             {"camera_scope", "agent"},
                                             {"error_code", "runtime_unavailable"},
                                             {"message", "Desktop runtime not connected."}}));

  const AnyCodableValue viewport = runQuickly(viewport_, JSONObject{});
  EXPECT_EQ(viewport, AnyCodableValue(JSONObject{{"status", "error"},
                                                 {"engine_mode", "headless"},
                                                 {"camera_scope", "user"},
                                                 {"error_code", "runtime_unavailable"},
                                                 {"message", "Desktop runtime not connected."}}));
  EXPECT_FALSE(fs::exists(project_.path() / ".zorvik-control")) << "nothing was written";
}

TEST_F(ViewportToolsTest, StaleOrUndecodableHeartbeatWritesNoRequest) {
  // This app would answer any request, so a request written by mistake would show in its log.
  startApp(R"({"focus_card": {"payload": {}}, "screenshot": {"payload": {}},
               "viewport_state": {"payload": {}}})",
           30);
  for (const AgentTool* tool : std::vector<const AgentTool*>{&focus_, &screenshot_, &viewport_}) {
    EXPECT_EQ(at(runQuickly(*tool, JSONObject{{"card_id", kInside}}), "error_code"),
              AnyCodableValue("runtime_unavailable"));
  }
  EXPECT_TRUE(filesIn(inbox()).empty());
  EXPECT_TRUE(app_->handledRequests().empty());
  app_->stop();

  // A heartbeat whose date does not parse.
  std::ofstream(project_.path() / ".zorvik-control/runtime.json")
      << R"({"project_path": "x", "timestamp": "yesterday"})";
  const AnyCodableValue shot = runQuickly(screenshot_, JSONObject{});
  EXPECT_EQ(at(shot, "engine_mode"), AnyCodableValue("headless"));
  EXPECT_TRUE(filesIn(inbox()).empty());
}

TEST_F(ViewportToolsTest, LiveApplicationReceivesTheCommandAndItsPayloadPassesThrough) {
  startApp(R"({
    "focus_card": {"payload": {"zoom": 1.5, "viewport_saved": true}},
    "screenshot": {"payload": {"image_path": "/tmp/shot.png", "image_paths": ["/tmp/shot.png"],
                               "focus_applied": true, "received": "{{arguments}}"}},
    "viewport_state": {"payload": {"center": {"x": 10, "y": 20}, "zoom": 0.75,
                                   "received": "{{arguments}}"}}
  })");

  const AnyCodableValue focused =
      focus_.run(JSONObject{{"card_id", "6b000000-0000-4000-8000-00000000006b"},
                            {"zoom", 2},
                            {"camera_scope", "agent"},
                            {"persist_viewport", true}},
                 context_);
  EXPECT_EQ(focused,
            AnyCodableValue(JSONObject{{"resolved_folder_id", kGroup},
                                       {"resolved_center", JSONObject{{"x", 250}, {"y", 250}}},
                                       {"zoom", 1.5},
                                       {"viewport_saved", true},
                                       {"camera_scope", "agent"},
                                       {"applied_runtime_scroll", true},
                                       {"error_code", nullptr},
                                       {"message", nullptr}}));

  const AnyCodableValue shotInput =
      JSONObject{{"snapshot_mode", "card"},
                 {"card_id", kInside},
                 {"zoom", 0.5},
                 {"size", JSONObject{{"width", 800}, {"height", 600}}},
                 {"format", "png"}};
  const AnyCodableValue shot = screenshot_.run(shotInput, context_);
  EXPECT_EQ(shot, AnyCodableValue(JSONObject{{"status", "ok"},
                                             {"snapshot_mode", "card"},
                                             {"zoom", 0.5},
                                             {"camera_scope", "user"},
                                             {"image_path", "/tmp/shot.png"},
                                             {"image_paths", Array{"/tmp/shot.png"}},
                                             {"focus_applied", true},
                                             {"received", shotInput}}));

  const AnyCodableValue viewport = viewport_.run(JSONObject{}, context_);
  EXPECT_EQ(viewport,
            AnyCodableValue(JSONObject{{"center", JSONObject{{"x", 10}, {"y", 20}}},
                                       {"zoom", 0.75},
                                       {"received", JSONObject{{"camera_scope", "user"}}}}));

  const std::vector<AnyCodableValue> handled = app_->handledRequests();
  ASSERT_EQ(handled.size(), 3u);
  const auto focusRequest = decodeValue<RuntimeToolRequest>(handled[0]);
  EXPECT_EQ(focusRequest.command, "focus_card");
  EXPECT_EQ(focusRequest.runId, context_.runID);
  EXPECT_EQ(focusRequest.arguments,
            AnyCodableValue(JSONObject{{"card_id", kInside},
                                       {"center", JSONObject{{"x", 250}, {"y", 250}}},
                                       {"zoom", 2},
                                       {"camera_scope", "agent"},
                                       {"persist_viewport", true}}));
  EXPECT_EQ(decodeValue<RuntimeToolRequest>(handled[1]).command, "screenshot");
  EXPECT_EQ(decodeValue<RuntimeToolRequest>(handled[2]).command, "viewport_state");
  EXPECT_TRUE(filesIn(inbox()).empty());
}

TEST_F(ViewportToolsTest, FailingApplicationAnswersMapToErrorShapes) {
  startApp(R"({
    "focus_card": {"ok": false, "error_code": "card_hidden", "message": "Card is hidden."},
    "screenshot": {"ok": false, "payload": {"engine_mode": "offscreen", "message": "GPU lost."}},
    "viewport_state": {"ok": false}
  })");

  const AnyCodableValue focused = focus_.run(JSONObject{{"card_id", kInside}}, context_);
  EXPECT_EQ(at(focused, "applied_runtime_scroll"), AnyCodableValue(false));
  EXPECT_EQ(at(focused, "error_code"), AnyCodableValue("card_hidden"));
  EXPECT_EQ(at(focused, "message"), AnyCodableValue("Card is hidden."));
  EXPECT_EQ(at(focused, "resolved_center"), AnyCodableValue(JSONObject{{"x", 250}, {"y", 250}}));

  const AnyCodableValue shot = screenshot_.run(JSONObject{{"focus", true}}, context_);
  EXPECT_EQ(at(shot, "status"), AnyCodableValue("error"));
  EXPECT_EQ(at(shot, "error_code"), AnyCodableValue("runtime_error"));
  EXPECT_EQ(at(shot, "message"), AnyCodableValue("GPU lost."));
  EXPECT_EQ(at(shot, "engine_mode"), AnyCodableValue("offscreen"));
  EXPECT_EQ(at(shot, "snapshot_mode"), AnyCodableValue("board"));
  EXPECT_EQ(at(shot, "image_paths"), AnyCodableValue(Array{}));

  const AnyCodableValue viewport = viewport_.run(JSONObject{{"camera_scope", "agent"}}, context_);
  EXPECT_EQ(viewport, AnyCodableValue(JSONObject{{"status", "error"},
                                                 {"engine_mode", "runtime"},
                                                 {"camera_scope", "agent"},
                                                 {"error_code", "runtime_error"},
                                                 {"message", "Runtime command failed."}}));
  EXPECT_EQ(app_->handledRequests().size(), 3u);
}

TEST_F(ViewportToolsTest, ArgumentErrorsAreThrown) {
  const auto refusal = [&](const AgentTool& tool, const AnyCodableValue& input) {
    return invalidArgumentMessage([&] { tool.run(input, context_); });
  };
  EXPECT_EQ(refusal(focus_, JSONObject{{"card_id", "card-1"}}),
            "focus_card card_id is invalid UUID.");
  EXPECT_EQ(refusal(focus_, JSONObject{{"card_id", "99999999-0000-4000-8000-000000000099"}}),
            "focus_card card_id not found.");
  EXPECT_THROW(focus_.run(JSONObject{}, context_), DecodingError);
  EXPECT_THROW(focus_.run(JSONObject{{"card_id", kInside}, {"camera_scope", "boss"}}, context_),
               DecodingError);

  EXPECT_EQ(refusal(screenshot_, JSONObject{{"snapshot_mode", "card"}, {"card_id", "  "}}),
            "screenshot snapshot_mode=card requires card_id.");
  for (const AnyCodableValue& input :
       {AnyCodableValue(JSONObject{{"snapshot_mode", "cards"}}),
        AnyCodableValue(JSONObject{{"snapshot_mode", "cards"}, {"card_ids", Array{}}})}) {
    EXPECT_EQ(refusal(screenshot_, input),
              "screenshot snapshot_mode=cards requires non-empty card_ids.");
  }
  EXPECT_THROW(screenshot_.run(JSONObject{{"snapshot_mode", "movie"}}, context_), DecodingError);
  EXPECT_THROW(
      screenshot_.run(JSONObject{{"size", JSONObject{{"width", 1.5}, {"height", 2}}}}, context_),
      DecodingError);
  EXPECT_THROW(viewport_.run(JSONObject{{"camera_scope", 1}}, context_), DecodingError);

  const FocusCardTool unboundFocus(std::nullopt);
  const ScreenshotTool unboundShot(std::nullopt);
  const ViewportStateTool unboundViewport(std::nullopt);
  for (const AgentTool* tool :
       std::vector<const AgentTool*>{&unboundFocus, &unboundShot, &unboundViewport}) {
    EXPECT_EQ(refusal(*tool, JSONObject{{"card_id", kInside}}),
              tool->spec().name + " requires project_path when session is not bound.");
  }
  // project_path in the input binds an unbound tool.
  const AnyCodableValue bound = unboundFocus.run(
      JSONObject{{"card_id", kInside}, {"project_path", project_.path().string()}}, context_);
  EXPECT_EQ(at(bound, "resolved_folder_id"), AnyCodableValue(kGroup));
}

// Every example in every tool's AgentToolSpec is an input the tool accepts, using only declared
// keys and carrying the required ones.
TEST_F(ViewportToolsTest, SpecExamplesAreValidInputs) {
  const ListCardLayoutsTool layouts(project_.path());
  const GetGroupLayoutTool groups(project_.path());
  for (const AgentTool* tool :
       std::vector<const AgentTool*>{&layouts, &groups, &focus_, &screenshot_, &viewport_}) {
    const AgentToolSpec& spec = tool->spec();
    ASSERT_TRUE(spec.inputSchema && spec.outputSchema && spec.examples) << spec.name;
    const AnyCodableValue& properties = at(*spec.inputSchema, "properties");
    const AnyCodableValue* required = spec.inputSchema->member("required");
    for (const AnyCodableValue& example : *spec.examples) {
      ASSERT_TRUE(example.isObject()) << spec.name;
      for (const auto& [key, ignored] : *example.asObject()) {
        EXPECT_NE(properties.member(key), nullptr) << spec.name << " example key " << key;
      }
      if (required) {
        for (const AnyCodableValue& key : *required->asArray()) {
          EXPECT_TRUE(example.member(*key.asString())) << spec.name << " lacks " << *key.asString();
        }
      }
      EXPECT_NO_THROW(runQuickly(*tool, example)) << spec.name << " rejects its example";
    }
  }
}

}  // namespace
}  // namespace zorvik
