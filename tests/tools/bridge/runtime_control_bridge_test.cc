// sendCommand against a live stand-in for the desktop application (zorvik_fake_app) and against
// project folders with no application at all.
#include "tools/bridge/runtime_control_bridge.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <set>
#include <thread>

#include "foundation/atomic_file.h"
#include "foundation/json/value_decoder.h"
#include "support/fake_app/fake_app_process.h"
#include "support/process_runner.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using testing::FakeAppProcess;
using testing::TempDirectory;

constexpr const char* kScript = R"({
  "echo": {"payload": {"request_id": "{{request_id}}", "arguments": "{{arguments}}",
                       "run_id": "{{run_id}}", "project_path": "{{project_path}}"}},
  "ping": {"ok": true},
  "fail": {"ok": false, "error_code": "card_not_found", "message": "No card with that id.",
           "payload": {"status": "error"}},
  "garbage": {"raw": "this is not json"},
  "slow": {"delay_ms": 400, "payload": {}}
})";

std::vector<fs::path> filesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
    files.push_back(it->path());
  }
  return files;
}

std::string member(const AnyCodableValue& value, std::string_view key) {
  const AnyCodableValue* found = value.member(key);
  return found && found->asString() ? *found->asString() : "<missing>";
}

class RuntimeControlBridgeTest : public ::testing::Test {
 protected:
  void startApp() {
    app_.emplace(testing::FakeAppOptions{.projectFolder = project_.path(),
                                         .responses = AnyCodableValue::parse(kScript)});
  }
  RuntimeToolResponse send(const std::string& command,
                           const AnyCodableValue& arguments = JSONObject{},
                           std::optional<Uuid> runID = std::nullopt, double timeout = 5.0) const {
    return bridge_.sendCommand(project_.path(), command, arguments, runID, timeout);
  }
  fs::path inbox() const { return project_.path() / ".zorvik-control/inbox"; }
  fs::path outbox() const { return project_.path() / ".zorvik-control/outbox"; }

  TempDirectory project_;
  const RuntimeControlBridge bridge_{};
  std::optional<FakeAppProcess> app_;
};

TEST_F(RuntimeControlBridgeTest, AnsweredCallCarriesThePayloadAndCleansUp) {
  startApp();
  const Uuid runID = Uuid::random();
  const AnyCodableValue arguments = JSONObject{{"card_id", "C1"}, {"width", 320}};
  const RuntimeToolResponse response = send("echo", arguments, runID);

  ASSERT_TRUE(response.ok) << response.message.value_or("");
  ASSERT_TRUE(response.payload);
  EXPECT_EQ(*response.payload->member("arguments"), arguments);
  EXPECT_EQ(member(*response.payload, "run_id"), runID.uppercaseString());
  EXPECT_EQ(member(*response.payload, "project_path"), project_.path().string());
  // The request id is a fresh UUID in lower-case text.
  const std::string requestId = member(*response.payload, "request_id");
  ASSERT_TRUE(Uuid::parse(requestId)) << requestId;
  EXPECT_EQ(Uuid::parse(requestId)->lowercaseString(), requestId);
  EXPECT_EQ(response.errorCode, std::nullopt);
  EXPECT_EQ(response.message, std::nullopt);

  EXPECT_TRUE(filesIn(outbox()).empty()) << "the decoded envelope is deleted";
  EXPECT_TRUE(filesIn(inbox()).empty()) << "the application removed the request";

  // What the application received: the request record with every field.
  const std::vector<AnyCodableValue> handled = app_->handledRequests();
  ASSERT_EQ(handled.size(), 1u);
  const auto request = decodeValue<RuntimeToolRequest>(handled[0]);
  EXPECT_EQ(request.requestId, requestId);
  EXPECT_EQ(request.command, "echo");
  EXPECT_EQ(request.runId, runID);
  EXPECT_EQ(request.arguments, arguments);
  EXPECT_LT(std::abs(std::chrono::duration<double>(currentDate() - request.createdAt).count()), 10);

  // Without a run id the key is left out of the request.
  ASSERT_TRUE(send("echo").ok);
  ASSERT_EQ(app_->handledRequests().size(), 2u);
  EXPECT_FALSE(app_->handledRequests()[1].asObject()->contains("run_id"));
}

TEST_F(RuntimeControlBridgeTest, ApplicationAnswersPassThrough) {
  startApp();
  const RuntimeToolResponse ping = send("ping");
  EXPECT_TRUE(ping.ok);
  EXPECT_EQ(ping.payload, std::nullopt) << "ok without payload stays without payload";
  EXPECT_EQ(ping.errorCode, std::nullopt);

  const RuntimeToolResponse fail = send("fail");
  EXPECT_FALSE(fail.ok);
  EXPECT_EQ(fail.errorCode, "card_not_found");
  EXPECT_EQ(fail.message, "No card with that id.");
  EXPECT_EQ(fail.payload, AnyCodableValue(JSONObject{{"status", "error"}}));

  const RuntimeToolResponse unknown = send("teleport");
  EXPECT_FALSE(unknown.ok);
  EXPECT_EQ(unknown.errorCode, "unsupported_command");
}

TEST_F(RuntimeControlBridgeTest, UndecodableEnvelopeIsReportedAndLeftInPlace) {
  startApp();
  const RuntimeToolResponse response = send("garbage");
  EXPECT_FALSE(response.ok);
  EXPECT_EQ(response.errorCode, kRuntimeDecodeFailed);
  EXPECT_FALSE(response.message.value_or("").empty());
  const auto left = filesIn(outbox());
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(readFileContents(left[0]), "this is not json");
  EXPECT_EQ(left[0].stem().string(), member(app_->handledRequests().at(0), "request_id"));
}

TEST_F(RuntimeControlBridgeTest, NoApplicationCreatesTheFoldersAndTimesOut) {
  ASSERT_FALSE(fs::exists(project_.path() / ".zorvik-control"));
  const RuntimeToolResponse immediate = send("ping", JSONObject{{"x", 1}}, std::nullopt, 0);
  EXPECT_FALSE(immediate.ok);
  EXPECT_EQ(immediate.errorCode, kRuntimeTimeout);
  EXPECT_EQ(immediate.message, "Runtime did not respond within 0ms.");
  EXPECT_TRUE(fs::is_directory(outbox()));

  // The request was written whole and stays behind for the application.
  const auto requests = filesIn(inbox());
  ASSERT_EQ(requests.size(), 1u);
  const auto request =
      decodeValue<RuntimeToolRequest>(AnyCodableValue::parse(*readFileContents(requests[0])));
  EXPECT_EQ(requests[0].filename().string(), request.requestId + ".json");
  EXPECT_EQ(request.command, "ping");
  EXPECT_EQ(request.projectPath, project_.path().string());

  const auto start = std::chrono::steady_clock::now();
  const RuntimeToolResponse waited = send("ping", JSONObject{}, std::nullopt, 0.3007);
  const double elapsed =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  EXPECT_EQ(waited.message, "Runtime did not respond within 300ms.");
  EXPECT_GE(elapsed, 0.3);
  EXPECT_LT(elapsed, 2.0);
  EXPECT_EQ(filesIn(inbox()).size(), 2u);
}

TEST_F(RuntimeControlBridgeTest, ALateAnswerIsATimeout) {
  startApp();
  const RuntimeToolResponse response = send("slow", JSONObject{}, std::nullopt, 0.15);
  EXPECT_EQ(response.errorCode, kRuntimeTimeout);
  EXPECT_EQ(response.message, "Runtime did not respond within 150ms.");
}

TEST_F(RuntimeControlBridgeTest, FolderAndWriteFailuresAreData) {
  const fs::path notAFolder = project_.write("plain-file", "x");
  const RuntimeToolResponse io =
      bridge_.sendCommand(notAFolder, "ping", JSONObject{}, std::nullopt, 1);
  EXPECT_FALSE(io.ok);
  EXPECT_EQ(io.errorCode, kRuntimeIOFailed);
  EXPECT_FALSE(io.message.value_or("").empty());

  const RuntimeToolResponse unencodable =
      send("ping", JSONObject{{"ratio", std::nan("")}}, std::nullopt, 1);
  EXPECT_FALSE(unencodable.ok);
  EXPECT_EQ(unencodable.errorCode, kRuntimeWriteFailed);
  EXPECT_TRUE(filesIn(inbox()).empty());
}

TEST_F(RuntimeControlBridgeTest, ConcurrentCallsFromThreadsEachGetTheirOwnAnswer) {
  startApp();
  constexpr int kCalls = 8;
  std::vector<RuntimeToolResponse> responses(kCalls);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < kCalls; ++i) {
      threads.emplace_back([&, i] { responses[i] = send("echo", JSONObject{{"n", i}}); });
    }
  }
  std::set<std::string> ids;
  for (int i = 0; i < kCalls; ++i) {
    ASSERT_TRUE(responses[i].ok) << i << ": " << responses[i].message.value_or("");
    EXPECT_EQ(*responses[i].payload->member("arguments"), AnyCodableValue(JSONObject{{"n", i}}));
    ids.insert(member(*responses[i].payload, "request_id"));
  }
  EXPECT_EQ(ids.size(), static_cast<size_t>(kCalls));
  EXPECT_EQ(app_->handledRequests().size(), static_cast<size_t>(kCalls));
  EXPECT_TRUE(filesIn(outbox()).empty());
}

TEST_F(RuntimeControlBridgeTest, ConcurrentCallsFromProcessesEachGetTheirOwnAnswer) {
  startApp();
  constexpr int kProcesses = 4;
  std::vector<testing::ProcessResult> results(kProcesses);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < kProcesses; ++i) {
      threads.emplace_back([&, i] {
        results[i] = testing::runProcess(
            ZORVIK_BRIDGE_SEND_COMMAND_PATH,
            {project_.path().string(), "echo", "{\"process\":" + std::to_string(i) + "}", "5"});
      });
    }
  }
  std::set<std::string> ids;
  for (int i = 0; i < kProcesses; ++i) {
    ASSERT_EQ(results[i].exitCode, 0) << results[i].standardError;
    const auto response =
        decodeValue<RuntimeToolResponse>(AnyCodableValue::parse(results[i].standardOutput));
    ASSERT_TRUE(response.ok) << results[i].standardOutput;
    EXPECT_EQ(*response.payload->member("arguments"), AnyCodableValue(JSONObject{{"process", i}}));
    ids.insert(member(*response.payload, "request_id"));
  }
  EXPECT_EQ(ids.size(), static_cast<size_t>(kProcesses));
}

TEST(RuntimeToolResponseTest, EncodesWithSnakeCaseKeysAndReadsBack) {
  const RuntimeToolResponse response{.ok = false,
                                     .payload = AnyCodableValue(JSONObject{{"a", 1}}),
                                     .errorCode = "runtime_timeout",
                                     .message = "late"};
  EXPECT_EQ(response.encode(), AnyCodableValue::parse(R"({"ok": false, "payload": {"a": 1},
      "error_code": "runtime_timeout", "message": "late"})"));
  EXPECT_EQ(decodeValue<RuntimeToolResponse>(response.encode()), response);
  EXPECT_EQ(RuntimeToolResponse{.ok = true}.encode(), AnyCodableValue::parse(R"({"ok": true})"));
  // An envelope's null payload reads as no payload.
  const auto envelope = decodeValue<RuntimeToolEnvelope>(
      AnyCodableValue::parse(R"({"request_id": "r", "ok": true, "payload": null})"));
  EXPECT_EQ(envelope.payload, std::nullopt);
}

}  // namespace
}  // namespace zorvik
