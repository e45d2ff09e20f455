// Board mutations end to end: the real `zorvik` binary sends each change through the file bridge
// to a second process that plays the desktop application and edits the project's files with a
// checkpoint around every change; the board read back from disk must show the change.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "foundation/atomic_file.h"
#include "foundation/json/any_codable_value.h"
#include "support/fake_app/fake_app_process.h"
#include "support/process_runner.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

using testing::FakeAppOptions;
using testing::FakeAppProcess;
using testing::ProcessOptions;
using testing::ProcessResult;
using testing::TempDirectory;

constexpr const char* kWorkspace = R"({
  "version": 1, "projectId": "B0A4D9E2-1C3F-4B5A-9D7E-2F6A8C0B1D3E",
  "createdAt": "2026-01-01T00:00:00Z", "updatedAt": "2026-01-01T00:00:00Z",
  "uiState": {}, "entries": []})";

struct CallResult {
  int exitCode;
  AnyCodableValue answer;
};

class BoardMutationEndToEndTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project_.write(".zorvik/workspace.json", kWorkspace);
    options_.workingDirectory = project_.path();
    options_.environment["ZORVIK_PROJECT_PATH"] = std::nullopt;
    options_.environment["HOME"] = project_.path().string();
  }

  CallResult call(const std::string& tool, const std::string& arguments) {
    const ProcessResult result = testing::runZorvik(
        {"agent", "call", tool, "--project", project_.path().string(), "--args-json", arguments},
        options_);
    EXPECT_TRUE(result.standardError.empty()) << result.standardError;
    return {result.exitCode, AnyCodableValue::parse(result.standardOutput)};
  }

  std::set<std::string> checkpointFiles() const {
    std::set<std::string> names;
    const auto folder = project_.path() / ".zorvik-control" / "mutation-checkpoints";
    if (!std::filesystem::exists(folder)) return names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  std::string contentText(const std::string& cardID) {
    const CallResult read = call("get_card_content", R"({"card_ids":[")" + cardID + R"("]})");
    EXPECT_EQ(read.exitCode, 0);
    const AnyCodableValue* results = read.answer.member("results");
    if (!results || !results->asArray() || results->asArray()->empty()) return "";
    return *results->asArray()->front().member("content")->member("text")->asString();
  }

  TempDirectory project_;
  ProcessOptions options_;
};

std::string text(const AnyCodableValue& value, std::string_view key) {
  const AnyCodableValue* member = value.member(key);
  return member && member->asString() ? *member->asString() : "<absent>";
}

TEST_F(BoardMutationEndToEndTest, CreatedEditedResizedAndDeletedCardsShowOnDisk) {
  FakeAppProcess app(FakeAppOptions{.projectFolder = project_.path(), .boardEdits = true});

  const std::string request = R"({"idempotency_key": "k1", "cards": [
      {"type": "rich_text", "title": "Plan", "markdown": "Ship the subsidy model."},
      {"type": "table", "title": "Costs", "table_columns": ["Item", "EUR"],
       "table_rows": [["Panels", "1200"]]}]})";
  const CallResult created = call("create_cards", request);
  ASSERT_EQ(created.exitCode, 0) << created.answer.jsonString().value_or("");
  const auto& ids = *created.answer.member("created_card_ids")->asArray();
  ASSERT_EQ(ids.size(), 2u);
  const std::string plan = *ids[0].asString();
  const std::string costs = *ids[1].asString();
  EXPECT_EQ(text(*created.answer.member("mutation_outcome"), "status"), "applied");
  EXPECT_EQ(text(*created.answer.member("persistence"), "status"), "verified");
  const AnyCodableValue& reference = *created.answer.member("project_checkpoint_ref");
  EXPECT_EQ(text(reference, "status"), "ok");
  const std::string checkpointID = text(*reference.member("checkpoint"), "checkpoint_id");

  // The checkpoint is on disk under its id, and the cards read back from the project files.
  std::set<std::string> files = checkpointFiles();
  ASSERT_EQ(files.size(), 1u);
  EXPECT_TRUE(files.begin()->ends_with("-" + checkpointID + ".json")) << *files.begin();
  EXPECT_NE(contentText(plan).find("Ship the subsidy model."), std::string::npos);
  EXPECT_NE(contentText(costs).find("Panels | 1200"), std::string::npos);

  // The same idempotency key replays the first answer and changes nothing.
  const CallResult replayed = call("create_cards", request);
  EXPECT_EQ(replayed.exitCode, 0);
  EXPECT_EQ(*replayed.answer.member("replayed"), AnyCodableValue(true));
  EXPECT_EQ(*replayed.answer.member("created_card_ids"),
            *created.answer.member("created_card_ids"));
  EXPECT_EQ(checkpointFiles().size(), 1u);

  const CallResult edited = call(
      "edit_cards", R"({"edits": [{"card_id": ")" + plan + R"(", "markdown": "Model shipped."}]})");
  EXPECT_EQ(edited.exitCode, 0) << edited.answer.jsonString().value_or("");
  EXPECT_EQ(*edited.answer.member("mutation_outcome")->member("changed_card_ids"),
            AnyCodableValue(AnyCodableValue::Array{plan}));
  EXPECT_NE(contentText(plan).find("Model shipped."), std::string::npos);

  const CallResult resized = call("resize_cards", R"({"resizes": [{"card_id": ")" + costs +
                                                      R"(", "width": 700, "height": 90}]})");
  EXPECT_EQ(resized.exitCode, 0);
  const CallResult layout = call("list_card_layouts", R"({"card_ids": [")" + costs + R"("]})");
  EXPECT_EQ(
      layout.answer.member("layouts")->asArray()->front().member("frame")->compactJSONString(),
      R"({"height":90,"width":700,"x":460,"y":0})");

  const CallResult deleted = call("delete_cards", R"({"card_ids": [")" + plan + R"("]})");
  EXPECT_EQ(deleted.exitCode, 0);
  EXPECT_EQ(text(*deleted.answer.member("mutation_outcome"), "status"), "applied");
  const CallResult gone = call("get_card_content", R"({"card_ids":[")" + plan + R"("]})");
  EXPECT_EQ(*gone.answer.member("not_found"), AnyCodableValue(AnyCodableValue::Array{plan}));

  // One checkpoint per change that ran, none for the replay; each chains onto the one before.
  files = checkpointFiles();
  ASSERT_EQ(files.size(), 4u);
  std::string previousAfter;
  for (const std::string& name : files) {
    const auto checkpoint = AnyCodableValue::parse(
        readFileContents(project_.path() / ".zorvik-control/mutation-checkpoints" / name)
            .value_or(""));
    if (!previousAfter.empty()) {
      EXPECT_EQ(text(checkpoint, "before_state_hash"), previousAfter);
    }
    previousAfter = text(checkpoint, "after_state_hash");
  }
  EXPECT_EQ(app.handledRequests().size(), 5u);
}

TEST_F(BoardMutationEndToEndTest, FailuresAnswerInTheToolsShapeWithExitCodeEight) {
  FakeAppProcess app(FakeAppOptions{.projectFolder = project_.path(), .boardEdits = true});

  // One card of two fails: the rest is applied and the outcome says partial.
  const CallResult partial = call("create_cards", R"({"cards": [
      {"type": "image", "title": "No picture"}, {"type": "rich_text", "markdown": "Kept."}]})");
  EXPECT_EQ(partial.exitCode, 8);
  EXPECT_EQ(text(*partial.answer.member("mutation_outcome"), "status"), "partial");
  const auto& results = *partial.answer.member("results")->asArray();
  EXPECT_EQ(text(results[0], "status"), "error");
  EXPECT_EQ(text(results[0], "message"), "Image cards require a url.");

  // Arguments the application refuses come back as the tool's failure answer.
  const CallResult refused = call("create_cards", R"({"cards": []})");
  EXPECT_EQ(refused.exitCode, 8);
  EXPECT_EQ(text(refused.answer, "error_code"), "invalid_arguments");
  EXPECT_EQ(text(refused.answer, "message"), "create_cards requires a non-empty cards array.");
  EXPECT_EQ(text(*refused.answer.member("project_checkpoint_ref"), "status"), "unavailable");

  // Editing a card that does not exist changes nothing and fails.
  const CallResult missing =
      call("edit_cards",
           R"({"cards": [{"card_id": "00000000-0000-4000-8000-000000000000", "title": "X"}]})");
  EXPECT_EQ(missing.exitCode, 8);
  EXPECT_EQ(text(*missing.answer.member("mutation_outcome"), "status"), "failed");
  EXPECT_EQ(*missing.answer.member("mutation_outcome")->member("changed_card_ids"),
            AnyCodableValue(AnyCodableValue::Array{}));
}

// Each bridge tool, with an application that refuses the call without a payload: the answer keeps
// the tool's own shape (held in detail by the in-process tests), carries the application's code and
// a message, and the exit code is 8.
TEST_F(BoardMutationEndToEndTest, EveryBridgeToolReportsARefusalInItsOwnShape) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"create_cards", R"({"cards": [{"type": 7}]})"},
      {"edit_cards", R"({"edits": "all"})"},
      {"group_cards", R"({"operation": "explode"})"},
      {"delete_cards", R"({"card_ids": []})"},
      {"resize_cards", R"({"resizes": [{"card_id": "x", "width": -1}]})"},
      {"compile_html", R"({})"},
      {"parse_pdf", R"({"operation": "inspect"})"},
      {"ask_user", R"({"message": 3})"},
      {"propose_options", R"({})"},
  };
  JSONObject script;
  for (const auto& [tool, arguments] : cases) {
    script.set(tool, JSONObject{{"ok", false}, {"error_code", "invalid_arguments"}});
  }
  FakeAppProcess app(FakeAppOptions{.projectFolder = project_.path(), .responses = script});
  for (const auto& [tool, arguments] : cases) {
    SCOPED_TRACE(tool);
    const CallResult refused = call(tool, arguments);
    EXPECT_EQ(refused.exitCode, 8);
    EXPECT_EQ(text(refused.answer, "error_code"), "invalid_arguments");
    // The board tools supply a message and a mutation outcome of their own; the chat tools answer
    // the generic object.
    if (tool == "ask_user" || tool == "propose_options") {
      EXPECT_EQ(*refused.answer.member("message"), AnyCodableValue());
      EXPECT_EQ(*refused.answer.member("ok"), AnyCodableValue(false));
    } else {
      EXPECT_EQ(text(refused.answer, "message"), tool + " failed before returning a payload.");
      EXPECT_NE(refused.answer.member(tool == "compile_html" ? "diagnostics" : "mutation_outcome"),
                nullptr);
    }
  }
  EXPECT_EQ(app.handledRequests().size(), cases.size());
}

TEST_F(BoardMutationEndToEndTest, WithoutAnApplicationATimedOutCreateSaysHowToRetry) {
  const CallResult timedOut =
      call("create_cards", R"({"idempotency_key": "k1", "cards": [{"type": "rich_text"}]})");
  EXPECT_EQ(timedOut.exitCode, 8);
  EXPECT_EQ(text(timedOut.answer, "error_code"), "runtime_timeout");
  EXPECT_TRUE(text(timedOut.answer, "message")
                  .ends_with("Re-run the exact same create_cards request with idempotency_key=k1 "
                             "before changing arguments."))
      << text(timedOut.answer, "message");
  EXPECT_EQ(text(*timedOut.answer.member("mutation_outcome"), "status"), "failed");
  EXPECT_TRUE(checkpointFiles().empty());
}

}  // namespace
}  // namespace zorvik
