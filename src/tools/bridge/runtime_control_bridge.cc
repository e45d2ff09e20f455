#include "tools/bridge/runtime_control_bridge.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

#include "foundation/atomic_file.h"
#include "foundation/json/value_decoder.h"
#include "tools/bridge/outbox_watch.h"
#include "tools/bridge/runtime_heartbeat.h"

namespace zorvik {
namespace {

// The timeout in whole milliseconds, truncated toward zero; a figure that no integer can hold is
// clamped instead of overflowing.
std::string timeoutMilliseconds(double timeoutSeconds) {
  const double milliseconds = std::trunc(timeoutSeconds * 1000.0);
  if (std::isnan(milliseconds)) return "0";
  constexpr double kLimit = 9.2e18;
  if (milliseconds >= kLimit) return std::to_string(std::numeric_limits<int64_t>::max());
  if (milliseconds <= -kLimit) return std::to_string(std::numeric_limits<int64_t>::min());
  return std::to_string(static_cast<int64_t>(milliseconds));
}

}  // namespace

RuntimeControlPaths RuntimeControlPaths::forProject(const std::filesystem::path& projectURL) {
  const std::filesystem::path control = projectURL / ".zorvik-control";
  return {control, control / "runtime.json", control / "inbox", control / "outbox"};
}

bool RuntimeControlBridge::isRuntimeAvailable(const std::filesystem::path& projectURL) const {
  const auto heartbeat =
      readRuntimeHeartbeat(RuntimeControlPaths::forProject(projectURL).heartbeatFile);
  return heartbeat && isHeartbeatFresh(heartbeat->timestamp, currentDate());
}

RuntimeToolResponse RuntimeControlBridge::sendCommand(const std::filesystem::path& projectURL,
                                                      const std::string& command,
                                                      const AnyCodableValue& arguments,
                                                      std::optional<Uuid> runID,
                                                      double timeoutSeconds) const {
  const RuntimeControlPaths paths = RuntimeControlPaths::forProject(projectURL);
  try {
    std::filesystem::create_directories(paths.inbox);
    std::filesystem::create_directories(paths.outbox);
  } catch (const std::exception& error) {
    return RuntimeToolResponse::failure(kRuntimeIOFailed, error.what());
  }

  const RuntimeToolRequest request{
      .requestId = Uuid::random().lowercaseString(),
      .projectPath = projectURL.string(),
      .runId = runID,
      .command = command,
      .arguments = arguments,
      .createdAt = currentDate(),
  };
  const std::string fileName = request.requestId + ".json";
  // Watching starts before the request exists, so an answer cannot slip in unnoticed.
  OutboxWatch outbox(paths.outbox);
  try {
    const std::optional<std::string> text = request.encode().compactJSONString();
    if (!text) {
      return RuntimeToolResponse::failure(
          kRuntimeWriteFailed, "The request arguments hold a number that JSON cannot express.");
    }
    replaceFileByRename(paths.inbox / fileName, *text);
  } catch (const std::exception& error) {
    return RuntimeToolResponse::failure(kRuntimeWriteFailed, error.what());
  }

  // Elapsed time is compared as a double so that any timeout, infinite or NaN included, is
  // handled without overflowing a clock.
  const std::filesystem::path responseFile = paths.outbox / fileName;
  const auto start = std::chrono::steady_clock::now();
  const auto elapsedSeconds = [&start] {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  bool answered = false;
  while (elapsedSeconds() < timeoutSeconds) {
    std::error_code ignored;
    if (std::filesystem::exists(responseFile, ignored)) {
      answered = true;
      break;
    }
    outbox.wait(std::min(kPollIntervalSeconds, timeoutSeconds - elapsedSeconds()));
  }
  if (!answered) {
    return RuntimeToolResponse::failure(
        kRuntimeTimeout,
        "Runtime did not respond within " + timeoutMilliseconds(timeoutSeconds) + "ms.");
  }

  RuntimeToolEnvelope envelope;
  try {
    const std::optional<std::string> contents = readFileContents(responseFile);
    if (!contents) {
      return RuntimeToolResponse::failure(
          kRuntimeDecodeFailed,
          "The runtime response \"" + responseFile.string() + "\" cannot be read.");
    }
    envelope = decodeValue<RuntimeToolEnvelope>(AnyCodableValue::parse(*contents));
  } catch (const std::exception& error) {
    return RuntimeToolResponse::failure(kRuntimeDecodeFailed, error.what());
  }
  std::error_code ignored;
  std::filesystem::remove(responseFile, ignored);
  return {.ok = envelope.ok,
          .payload = std::move(envelope.payload),
          .errorCode = std::move(envelope.errorCode),
          .message = std::move(envelope.message)};
}

}  // namespace zorvik
