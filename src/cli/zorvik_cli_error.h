// ZorvikCLIError: the one error the command layer throws on purpose. The entry maps it to a text on
// standard error and an exit code:
//   invalidArguments(m)  "Error: " + m          exit 2
//   processFailed(s)     nothing                exit s
//   invalidJSON(m)       "JSON error: " + m     exit 4
//   runtimeUnavailable   the discovery message  exit 3
#pragma once

#include <stdexcept>
#include <string>

namespace zorvik {

class ZorvikCLIError : public std::runtime_error {
 public:
  enum class Kind { invalidArguments, processFailed, invalidJSON, runtimeUnavailable };

  static ZorvikCLIError invalidArguments(const std::string& message) {
    return ZorvikCLIError(Kind::invalidArguments, message, 0);
  }
  static ZorvikCLIError processFailed(int status) {
    return ZorvikCLIError(Kind::processFailed,
                          "process failed with status " + std::to_string(status), status);
  }
  static ZorvikCLIError invalidJSON(const std::string& message) {
    return ZorvikCLIError(Kind::invalidJSON, message, 0);
  }
  static ZorvikCLIError runtimeUnavailable() {
    return ZorvikCLIError(Kind::runtimeUnavailable, kRuntimeUnavailableMessage, 0);
  }

  static constexpr const char* kRuntimeUnavailableMessage =
      "No Zorvik project could be discovered. Ensure Zorvik is running with the target board open, "
      "then retry.";

  Kind kind() const { return kind_; }
  // The message of invalidArguments and invalidJSON.
  std::string message() const { return what(); }
  // The exit status of processFailed.
  int status() const { return status_; }

 private:
  ZorvikCLIError(Kind kind, const std::string& message, int status)
      : std::runtime_error(message), kind_(kind), status_(status) {}

  Kind kind_;
  int status_;
};

}  // namespace zorvik
