// zorvik_fake_app: plays the desktop application on the file bridge for tests.
//
//   zorvik_fake_app --project <dir> [--registry <file>] [--bundle-id <id>] [--foreground]
//                   [--heartbeat-interval-ms N] [--responses <script.json>] [--lifetime-ms N]
//                   [--stale-seconds S] [--board-edits]
//
// Every interval it writes a heartbeat (dated now minus S seconds) to
// <dir>/.zorvik-control/runtime.json and, when given, to the registry file, both atomically. It
// watches .zorvik-control/inbox/ and answers each request on a thread of its own: it appends the
// request as one JSON line to .zorvik-control/fake-app.log, waits the script's delay, writes the
// envelope under the request's file name into outbox/ atomically, after removing the request.
//
// The script maps a command name to {ok, payload, error_code, message, delay_ms, raw}. Inside
// `payload` the strings "{{request_id}}", "{{command}}", "{{arguments}}", "{{run_id}}" and
// "{{project_path}}" are replaced by the request's values. `raw` writes that text verbatim instead
// of an envelope. A command missing from the script answers ok false, "unsupported_command".
//
// With --board-edits the app also performs create_cards, edit_cards, delete_cards and resize_cards
// on the project's files, each bracketed by a mutation checkpoint (see fake_board_edits.h), unless
// the script has an entry for the command. Refused arguments answer ok false, "invalid_arguments".
//
// Folders are created once at start, never again: a project folder deleted while the app runs
// stays deleted. The app exits after --lifetime-ms (default 60000) or on SIGTERM and removes
// nothing besides the requests it answered.
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "foundation/atomic_file.h"
#include "foundation/json/value_decoder.h"
#include "support/fake_app/fake_board_edits.h"
#include "tools/bridge/runtime_control_bridge.h"
#include "tools/bridge/runtime_heartbeat.h"
#include "tools/bridge/runtime_tool_messages.h"

namespace zorvik {
namespace {

volatile std::sig_atomic_t stopRequested = 0;

void onTerminate(int) { stopRequested = 1; }

struct FakeAppConfig {
  std::filesystem::path project;
  std::optional<std::filesystem::path> registry;
  std::optional<std::string> bundleIdentifier;
  bool foreground = false;
  int heartbeatIntervalMs = 100;
  std::optional<std::filesystem::path> responses;
  int lifetimeMs = 60000;
  double staleSeconds = 0;
  bool boardEdits = false;
};

[[noreturn]] void usage(const std::string& problem) {
  std::cerr << "zorvik_fake_app: " << problem << '\n'
            << "usage: zorvik_fake_app --project <dir> [--registry <file>] [--bundle-id <id>] "
               "[--foreground] [--heartbeat-interval-ms N] [--responses <script.json>] "
               "[--lifetime-ms N] [--stale-seconds S] [--board-edits]\n";
  std::exit(2);
}

FakeAppConfig parseArguments(int argc, char** argv) {
  FakeAppConfig config;
  bool haveProject = false;
  for (int i = 1; i < argc; ++i) {
    const std::string option = argv[i];
    if (option == "--foreground") {
      config.foreground = true;
      continue;
    }
    if (option == "--board-edits") {
      config.boardEdits = true;
      continue;
    }
    if (i + 1 >= argc) usage(option + " needs a value");
    const std::string value = argv[++i];
    try {
      if (option == "--project") {
        config.project = value;
        haveProject = true;
      } else if (option == "--registry") {
        config.registry = value;
      } else if (option == "--bundle-id") {
        config.bundleIdentifier = value;
      } else if (option == "--heartbeat-interval-ms") {
        config.heartbeatIntervalMs = std::stoi(value);
      } else if (option == "--responses") {
        config.responses = value;
      } else if (option == "--lifetime-ms") {
        config.lifetimeMs = std::stoi(value);
      } else if (option == "--stale-seconds") {
        config.staleSeconds = std::stod(value);
      } else {
        usage("unknown option " + option);
      }
    } catch (const std::logic_error&) {
      usage("bad value for " + option + ": " + value);
    }
  }
  if (!haveProject) usage("--project is required");
  if (config.heartbeatIntervalMs <= 0) usage("--heartbeat-interval-ms must be positive");
  return config;
}

AnyCodableValue substitute(const AnyCodableValue& value, const RuntimeToolRequest& request) {
  if (const std::string* text = value.asString()) {
    if (*text == "{{request_id}}") return request.requestId;
    if (*text == "{{command}}") return request.command;
    if (*text == "{{arguments}}") return request.arguments;
    if (*text == "{{project_path}}") return request.projectPath;
    if (*text == "{{run_id}}") {
      return request.runId ? AnyCodableValue(request.runId->uppercaseString()) : AnyCodableValue();
    }
    return value;
  }
  if (const auto* array = value.asArray()) {
    AnyCodableValue::Array result;
    for (const auto& element : *array) result.push_back(substitute(element, request));
    return result;
  }
  if (const auto* object = value.asObject()) {
    JSONObject result;
    for (const auto& [key, member] : *object) result.set(key, substitute(member, request));
    return result;
  }
  return value;
}

std::optional<std::string> stringMember(const AnyCodableValue& value, std::string_view key) {
  const AnyCodableValue* member = value.member(key);
  if (member && member->asString()) return *member->asString();
  return std::nullopt;
}

class FakeApp {
 public:
  explicit FakeApp(FakeAppConfig config)
      : config_(std::move(config)), paths_(RuntimeControlPaths::forProject(config_.project)) {
    std::filesystem::create_directories(paths_.inbox);
    std::filesystem::create_directories(paths_.outbox);
    if (config_.registry) std::filesystem::create_directories(config_.registry->parent_path());
    if (config_.responses) {
      const auto text = readFileContents(*config_.responses);
      if (!text) throw std::runtime_error("cannot read " + config_.responses->string());
      script_ = AnyCodableValue::parse(*text);
      if (!script_.isObject()) throw std::runtime_error("the responses script is no object");
    }
  }

  void run() {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(config_.lifetimeMs);
    const auto interval = std::chrono::milliseconds(config_.heartbeatIntervalMs);
    auto nextHeartbeat = Clock::now();
    while (!stopRequested && Clock::now() < end) {
      if (Clock::now() >= nextHeartbeat) {
        writeHeartbeat();
        nextHeartbeat = Clock::now() + interval;
      }
      pickUpRequests();
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    for (auto& worker : workers_) worker.join();
  }

 private:
  void writeHeartbeat() const {
    const auto age = std::chrono::duration_cast<std::chrono::system_clock::duration>(
        std::chrono::duration<double>(config_.staleSeconds));
    std::vector<std::string> capabilities;
    if (const auto* commands = script_.asObject()) {
      for (const auto& [name, ignored] : *commands) capabilities.push_back(name);
    }
    const RuntimeHeartbeat heartbeat{
        .projectPath = config_.project.string(),
        .capabilities = capabilities,
        .timestamp = currentDate() - age,
        .bundleIdentifier = config_.bundleIdentifier,
        .processID = static_cast<int64_t>(::getpid()),
        .isForeground = config_.foreground,
    };
    const std::string text = heartbeat.encode().compactJSONString().value_or("{}");
    // A project folder deleted under the app makes these writes fail; the app carries on.
    try {
      replaceFileByRename(paths_.heartbeatFile, text);
    } catch (const std::exception&) {
    }
    if (config_.registry) {
      try {
        replaceFileByRename(*config_.registry, text);
      } catch (const std::exception&) {
      }
    }
  }

  void pickUpRequests() {
    std::error_code error;
    for (std::filesystem::directory_iterator it(paths_.inbox, error), end; !error && it != end;
         it.increment(error)) {
      const std::string name = it->path().filename().string();
      // Hidden names are the temporary files of writes still under way.
      if (name.starts_with(".") || it->path().extension() != ".json") continue;
      if (!claimed_.insert(name).second) continue;
      workers_.emplace_back([this, name] { answer(name); });
    }
  }

  void answer(const std::string& name) const {
    const std::filesystem::path requestFile = paths_.inbox / name;
    const std::string requestId = std::filesystem::path(name).stem().string();
    RuntimeToolEnvelope envelope{.requestId = requestId};
    std::optional<std::string> raw;
    bool logged = false;
    try {
      const AnyCodableValue value =
          AnyCodableValue::parse(readFileContents(requestFile).value_or(""));
      appendLog(value);
      logged = true;
      const auto request = decodeValue<RuntimeToolRequest>(value);
      const AnyCodableValue* entry = script_.member(request.command);
      if ((!entry || !entry->isObject()) && config_.boardEdits &&
          testing::isFakeBoardEditCommand(request.command)) {
        performBoardEdit(request, envelope);
      } else if (!entry || !entry->isObject()) {
        envelope.errorCode = "unsupported_command";
        envelope.message = "Unsupported command: " + request.command;
      } else {
        const AnyCodableValue* delay = entry->member("delay_ms");
        if (delay && delay->numericValue()) {
          std::this_thread::sleep_for(
              std::chrono::duration<double, std::milli>(*delay->numericValue()));
        }
        const AnyCodableValue* ok = entry->member("ok");
        envelope.ok = !ok || !ok->asBool() || *ok->asBool();
        if (const AnyCodableValue* payload = entry->member("payload")) {
          envelope.payload = substitute(*payload, request);
        }
        envelope.errorCode = stringMember(*entry, "error_code");
        envelope.message = stringMember(*entry, "message");
        raw = stringMember(*entry, "raw");
      }
    } catch (const std::exception& error) {
      if (!logged) appendLog(JSONObject{{"invalid_request", name}});
      envelope.errorCode = "invalid_request";
      envelope.message = error.what();
    }
    // The request is consumed before the answer appears: a caller woken by the answer finds the
    // inbox already clean.
    std::error_code ignored;
    std::filesystem::remove(requestFile, ignored);
    try {
      replaceFileByRename(paths_.outbox / name,
                          raw ? *raw : envelope.encode().compactJSONString().value_or("{}"));
    } catch (const std::exception& error) {
      std::cerr << "zorvik_fake_app: " << error.what() << '\n';
    }
  }

  void performBoardEdit(const RuntimeToolRequest& request, RuntimeToolEnvelope& envelope) const {
    try {
      envelope.payload =
          testing::performFakeBoardMutation(config_.project, request.command, request.arguments);
      envelope.ok = true;
    } catch (const std::invalid_argument& error) {
      envelope.ok = false;
      envelope.errorCode = "invalid_arguments";
      envelope.message = error.what();
    } catch (const std::exception& error) {
      envelope.ok = false;
      envelope.errorCode = "mutation_failed";
      envelope.message = error.what();
    }
  }

  void appendLog(const AnyCodableValue& entry) const {
    const std::string line = entry.compactJSONString().value_or("{}") + "\n";
    std::lock_guard lock(logMutex_);
    const int fd = ::open((paths_.controlFolder / "fake-app.log").c_str(),
                          O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd < 0) return;
    [[maybe_unused]] const ssize_t written = ::write(fd, line.data(), line.size());
    ::close(fd);
  }

  const FakeAppConfig config_;
  const RuntimeControlPaths paths_;
  AnyCodableValue script_ = JSONObject{};
  std::set<std::string> claimed_;
  std::vector<std::thread> workers_;
  mutable std::mutex logMutex_;
};

}  // namespace
}  // namespace zorvik

int main(int argc, char** argv) {
  std::signal(SIGTERM, zorvik::onTerminate);
  std::signal(SIGINT, zorvik::onTerminate);
  try {
    zorvik::FakeApp(zorvik::parseArguments(argc, argv)).run();
  } catch (const std::exception& error) {
    std::cerr << "zorvik_fake_app: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
