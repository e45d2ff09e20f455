// The heartbeat record, the freshness rule and isRuntimeAvailable on heartbeat files of every
// shape a project folder may hold.
#include "tools/bridge/runtime_heartbeat.h"

#include <gtest/gtest.h>

#include <chrono>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "support/fake_app/fake_app_process.h"
#include "support/temp_directory.h"
#include "tools/bridge/runtime_control_bridge.h"

namespace zorvik {
namespace {

using std::chrono::milliseconds;
using testing::TempDirectory;

RuntimeHeartbeat decodeText(std::string_view text) {
  return decodeValue<RuntimeHeartbeat>(AnyCodableValue::parse(text));
}

TEST(RuntimeHeartbeatTest, DecodesFullAndMinimalRecords) {
  const RuntimeHeartbeat full = decodeText(R"({
      "project_path": "/boards/a", "capabilities": ["create_cards", "screenshot"],
      "timestamp": "2026-03-01T10:00:00.250+01:00", "bundle_identifier": "com.example.App",
      "process_id": 4242, "is_foreground": true})");
  EXPECT_EQ(full.projectPath, "/boards/a");
  EXPECT_EQ(full.capabilities, (std::vector<std::string>{"create_cards", "screenshot"}));
  EXPECT_EQ(formatISO8601(full.timestamp), "2026-03-01T09:00:00Z");
  EXPECT_EQ(full.bundleIdentifier, "com.example.App");
  EXPECT_EQ(full.processID, 4242);
  EXPECT_TRUE(full.isForeground);

  const RuntimeHeartbeat minimal = decodeText(
      R"({"project_path": "/b", "timestamp": "2026-03-01T10:00:00Z", "bundle_identifier": null})");
  EXPECT_TRUE(minimal.capabilities.empty());
  EXPECT_FALSE(minimal.isForeground);
  EXPECT_EQ(minimal.bundleIdentifier, std::nullopt);
  EXPECT_EQ(minimal.processID, std::nullopt);

  // Encoding writes snake-case keys, leaves absent optionals out and reads back equal.
  EXPECT_EQ(minimal.encode(), AnyCodableValue::parse(R"({"project_path": "/b",
      "capabilities": [], "timestamp": "2026-03-01T10:00:00Z", "is_foreground": false})"));
  EXPECT_EQ(decodeValue<RuntimeHeartbeat>(full.encode()).bundleIdentifier, "com.example.App");
  EXPECT_EQ(decodeValue<RuntimeHeartbeat>(minimal.encode()), minimal);
}

TEST(RuntimeHeartbeatTest, RejectsMissingAndMistypedFields) {
  EXPECT_THROW(decodeText(R"({"timestamp": "2026-03-01T10:00:00Z"})"), DecodingError);
  EXPECT_THROW(decodeText(R"({"project_path": "/b"})"), DecodingError);
  EXPECT_THROW(decodeText(R"({"project_path": "/b", "timestamp": "yesterday"})"), DecodingError);
  EXPECT_THROW(decodeText(R"({"project_path": 7, "timestamp": "2026-03-01T10:00:00Z"})"),
               DecodingError);
  EXPECT_THROW(decodeText(R"({"project_path": "/b", "timestamp": "2026-03-01T10:00:00Z",
                     "is_foreground": "yes"})"),
               DecodingError);
}

TEST(RuntimeHeartbeatTest, FreshnessIsAnAbsoluteFiveSecondWindow) {
  const Date now = currentDate();
  EXPECT_TRUE(isHeartbeatFresh(now, now));
  EXPECT_TRUE(isHeartbeatFresh(now - milliseconds(5000), now));
  EXPECT_FALSE(isHeartbeatFresh(now - milliseconds(5100), now));
  EXPECT_TRUE(isHeartbeatFresh(now + milliseconds(3000), now));
  EXPECT_TRUE(isHeartbeatFresh(now + milliseconds(5000), now));
  EXPECT_FALSE(isHeartbeatFresh(now + milliseconds(5100), now));
  EXPECT_FALSE(isHeartbeatFresh(now - std::chrono::hours(24), now));
}

class RuntimeAvailabilityTest : public ::testing::Test {
 protected:
  void writeHeartbeat(std::string_view text) const {
    project_.write(".zorvik-control/runtime.json", text);
  }
  std::string heartbeatDated(Date timestamp) const {
    return R"({"project_path": ")" + project_.path().string() + R"(", "timestamp": ")" +
           formatISO8601(timestamp) + "\"}";
  }
  bool available() const { return RuntimeControlBridge().isRuntimeAvailable(project_.path()); }

  TempDirectory project_;
};

TEST_F(RuntimeAvailabilityTest, DependsOnAReadableFreshHeartbeat) {
  EXPECT_FALSE(available()) << "no control folder";

  const Date now = currentDate();
  writeHeartbeat(heartbeatDated(now));
  EXPECT_TRUE(available());
  writeHeartbeat(heartbeatDated(now - std::chrono::seconds(8)));
  EXPECT_FALSE(available()) << "stale";
  writeHeartbeat(heartbeatDated(now + std::chrono::seconds(3)));
  EXPECT_TRUE(available()) << "3 seconds in the future";
  writeHeartbeat(heartbeatDated(now + std::chrono::seconds(8)));
  EXPECT_FALSE(available()) << "too far in the future";

  writeHeartbeat(R"({"project_path": "/b", "timestamp": "not a date"})");
  EXPECT_FALSE(available()) << "unparsable date";
  writeHeartbeat(R"({"project_path": "/b", "timestamp": 1767225600})");
  EXPECT_FALSE(available()) << "number for a date";
  writeHeartbeat(R"({"project_path": ["/b"], "timestamp": ")" + formatISO8601(now) + "\"}");
  EXPECT_FALSE(available()) << "array for the path";
  writeHeartbeat("{\"timestamp\": \"" + formatISO8601(now) + "\"");
  EXPECT_FALSE(available()) << "truncated JSON";

  std::filesystem::remove(project_.path() / ".zorvik-control/runtime.json");
  std::filesystem::create_directory(project_.path() / ".zorvik-control/runtime.json");
  EXPECT_FALSE(available()) << "a folder in place of the file";
}

TEST_F(RuntimeAvailabilityTest, FollowsALiveApplication) {
  {
    testing::FakeAppProcess app({.projectFolder = project_.path()});
    EXPECT_TRUE(available());
  }
  testing::FakeAppProcess stale({.projectFolder = project_.path(), .staleSeconds = 6});
  EXPECT_FALSE(available());
}

}  // namespace
}  // namespace zorvik
