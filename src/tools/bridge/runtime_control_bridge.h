// RuntimeControlBridge: asks the running desktop application to do work on a project, through
// files in the project's control folder. A request goes into `.zorvik-control/inbox/<id>.json`;
// the application acts, removes the request and leaves its envelope under the same name in
// `.zorvik-control/outbox/`, which the bridge reads and deletes.
//
// The bridge holds no state: it is immutable and may be shared by any number of threads, and
// several calls may be in flight at once, each with its own request id. sendCommand never throws;
// every failure is a response with ok false and one of the error codes below (or whatever code
// the application answers). It blocks the calling thread while it polls.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "tools/bridge/runtime_tool_messages.h"

namespace zorvik {

inline constexpr const char* kRuntimeIOFailed = "runtime_io_failed";
inline constexpr const char* kRuntimeWriteFailed = "runtime_write_failed";
inline constexpr const char* kRuntimeTimeout = "runtime_timeout";
inline constexpr const char* kRuntimeDecodeFailed = "runtime_decode_failed";

// Where the files of a project's control folder live.
struct RuntimeControlPaths {
  std::filesystem::path controlFolder;  // <project>/.zorvik-control
  std::filesystem::path heartbeatFile;  // <project>/.zorvik-control/runtime.json
  std::filesystem::path inbox;          // <project>/.zorvik-control/inbox
  std::filesystem::path outbox;         // <project>/.zorvik-control/outbox

  static RuntimeControlPaths forProject(const std::filesystem::path& projectURL);
};

class RuntimeControlBridge {
 public:
  // How often, at the least, the outbox is looked at while a call waits; a file arriving in the
  // outbox ends the wait at once (OutboxWatch).
  static constexpr double kPollIntervalSeconds = 0.05;

  // True only when the project's heartbeat file exists, reads, decodes and is fresh right now.
  bool isRuntimeAvailable(const std::filesystem::path& projectURL) const;

  // Writes the request atomically into the inbox (creating inbox and outbox as needed) and waits
  // up to `timeoutSeconds` for the envelope. No heartbeat check comes first: with no application
  // running the call spends its whole timeout. Failures:
  //   runtime_io_failed      the control folders cannot be created
  //   runtime_write_failed   the request cannot be encoded or written
  //   runtime_timeout        "Runtime did not respond within <timeout in whole ms>ms."
  //   runtime_decode_failed  the envelope cannot be read or decoded; the file is left in place
  // A decoded envelope's file is deleted; the request file is never touched.
  RuntimeToolResponse sendCommand(const std::filesystem::path& projectURL,
                                  const std::string& command, const AnyCodableValue& arguments,
                                  std::optional<Uuid> runID, double timeoutSeconds) const;
};

}  // namespace zorvik
