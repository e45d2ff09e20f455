#include "tools/bridge/runtime_heartbeat.h"

#include <chrono>
#include <cmath>

#include "foundation/atomic_file.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

RuntimeHeartbeat RuntimeHeartbeat::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {
      .projectPath = object.required<std::string>("project_path"),
      .capabilities = object.value<std::vector<std::string>>("capabilities", {}),
      .timestamp = object.required<Date>("timestamp"),
      .bundleIdentifier = object.optional<std::string>("bundle_identifier"),
      .processID = object.optional<int64_t>("process_id"),
      .isForeground = object.value<bool>("is_foreground", false),
  };
}

AnyCodableValue RuntimeHeartbeat::encode() const {
  return ObjectEncoder()
      .add("project_path", projectPath)
      .add("capabilities", capabilities)
      .add("timestamp", timestamp)
      .add("bundle_identifier", bundleIdentifier)
      .add("process_id", processID)
      .add("is_foreground", isForeground)
      .build();
}

bool isHeartbeatFresh(Date timestamp, Date now) {
  const double seconds = std::chrono::duration<double>(now - timestamp).count();
  return std::fabs(seconds) <= kHeartbeatFreshnessSeconds;
}

std::optional<RuntimeHeartbeat> readRuntimeHeartbeat(const std::filesystem::path& path) {
  const std::optional<std::string> contents = readFileContents(path);
  if (!contents) return std::nullopt;
  try {
    return decodeValue<RuntimeHeartbeat>(AnyCodableValue::parse(*contents));
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace zorvik
