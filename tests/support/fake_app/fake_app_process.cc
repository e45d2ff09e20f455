#include "support/fake_app/fake_app_process.h"

#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "foundation/atomic_file.h"
#include "tools/bridge/runtime_control_bridge.h"
#include "tools/bridge/runtime_heartbeat.h"

extern char** environ;

namespace zorvik::testing {
namespace {

std::string numberText(double value) {
  std::ostringstream out;
  out.precision(17);
  out << value;
  return out.str();
}

bool heartbeatOf(const std::filesystem::path& file, pid_t pid) {
  const auto heartbeat = readRuntimeHeartbeat(file);
  return heartbeat && heartbeat->processID == static_cast<int64_t>(pid);
}

}  // namespace

std::filesystem::path FakeAppProcess::executable() { return ZORVIK_FAKE_APP_PATH; }

FakeAppProcess::FakeAppProcess(FakeAppOptions options) : options_(std::move(options)) {
  std::vector<std::string> arguments{executable().string(), "--project",
                                     options_.projectFolder.string()};
  if (options_.registryFile) {
    arguments.insert(arguments.end(), {"--registry", options_.registryFile->string()});
  }
  if (options_.bundleIdentifier) {
    arguments.insert(arguments.end(), {"--bundle-id", *options_.bundleIdentifier});
  }
  if (options_.foreground) arguments.push_back("--foreground");
  if (options_.boardEdits) arguments.push_back("--board-edits");
  arguments.insert(
      arguments.end(),
      {"--heartbeat-interval-ms", std::to_string(options_.heartbeatIntervalMs), "--lifetime-ms",
       std::to_string(options_.lifetimeMs), "--stale-seconds", numberText(options_.staleSeconds)});
  if (options_.responses) {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "zorvik-fake-app-XXXXXX.json").string();
    const int fd = mkstemps(pattern.data(), 5);
    if (fd < 0) throw std::runtime_error("cannot create the responses script");
    ::close(fd);
    scriptFile_ = pattern;
    writeFileAtomically(*scriptFile_, options_.responses->compactJSONString().value_or("{}"));
    arguments.insert(arguments.end(), {"--responses", scriptFile_->string()});
  }

  std::vector<char*> argv;
  for (auto& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  const int spawned = posix_spawn(&pid_, argv[0], nullptr, nullptr, argv.data(), environ);
  if (spawned != 0) {
    pid_ = -1;
    throw std::runtime_error("cannot start " + executable().string() + ": " +
                             std::strerror(spawned));
  }
  try {
    waitForFirstHeartbeat();
  } catch (...) {
    stop();
    throw;
  }
}

FakeAppProcess::~FakeAppProcess() {
  stop();
  if (scriptFile_) {
    std::error_code ignored;
    std::filesystem::remove(*scriptFile_, ignored);
  }
}

void FakeAppProcess::waitForFirstHeartbeat() {
  const auto heartbeatFile = RuntimeControlPaths::forProject(options_.projectFolder).heartbeatFile;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (std::chrono::steady_clock::now() < deadline) {
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      throw std::runtime_error("zorvik_fake_app exited before its first heartbeat");
    }
    if (heartbeatOf(heartbeatFile, pid_) &&
        (!options_.registryFile || heartbeatOf(*options_.registryFile, pid_))) {
      return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  throw std::runtime_error("zorvik_fake_app wrote no heartbeat within 10 seconds");
}

void FakeAppProcess::stop() {
  if (pid_ <= 0) return;
  ::kill(pid_, SIGTERM);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
  int status = 0;
  while (waitpid(pid_, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() >= deadline) {
      ::kill(pid_, SIGKILL);
      waitpid(pid_, &status, 0);
      break;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  pid_ = -1;
}

std::vector<AnyCodableValue> FakeAppProcess::handledRequests() const {
  const auto log = readFileContents(
      RuntimeControlPaths::forProject(options_.projectFolder).controlFolder / "fake-app.log");
  std::vector<AnyCodableValue> requests;
  if (!log) return requests;
  std::istringstream lines(*log);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) requests.push_back(AnyCodableValue::parse(line));
  }
  return requests;
}

}  // namespace zorvik::testing
