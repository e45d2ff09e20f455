// FakeAppProcess: runs zorvik_fake_app as a child process for the lifetime of the object.
//
// The constructor starts the app and returns once the app's first heartbeat is on disk (and in
// the registry file, when one is given); if the app exits or no heartbeat shows within ten
// seconds it throws std::runtime_error. The destructor stops the app (SIGTERM, then SIGKILL after
// a grace period) and removes the responses script it wrote. Not copyable; one owner.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"

namespace zorvik::testing {

struct FakeAppOptions {
  std::filesystem::path projectFolder;
  std::optional<std::filesystem::path> registryFile;
  std::optional<std::string> bundleIdentifier;
  bool foreground = false;
  int heartbeatIntervalMs = 100;
  // Command name -> {ok, payload, error_code, message, delay_ms, raw}; see fake_app_main.cc.
  std::optional<AnyCodableValue> responses;
  int lifetimeMs = 60000;
  // How far in the past each heartbeat is dated; negative dates it in the future.
  double staleSeconds = 0;
  // Performs create_cards, edit_cards, delete_cards and resize_cards on the project's files with a
  // mutation checkpoint around each (fake_board_edits.h), unless `responses` scripts them.
  bool boardEdits = false;
};

class FakeAppProcess {
 public:
  explicit FakeAppProcess(FakeAppOptions options);
  ~FakeAppProcess();
  FakeAppProcess(const FakeAppProcess&) = delete;
  FakeAppProcess& operator=(const FakeAppProcess&) = delete;

  pid_t pid() const { return pid_; }
  const FakeAppOptions& options() const { return options_; }

  // Stops the app and waits for it; further calls do nothing.
  void stop();

  // The requests the app has handled so far, one value per line of its log, oldest first.
  std::vector<AnyCodableValue> handledRequests() const;

  // The built zorvik_fake_app executable.
  static std::filesystem::path executable();

 private:
  void waitForFirstHeartbeat();

  FakeAppOptions options_;
  std::optional<std::filesystem::path> scriptFile_;
  pid_t pid_ = -1;
};

}  // namespace zorvik::testing
