// `project current`, `doctor` and agent project resolution, run with the built `zorvik` in a
// sandbox (its own HOME, XDG_DATA_HOME and working directory) while zorvik_fake_app processes
// keep writing heartbeats.
#include <gtest/gtest.h>

#include <thread>

#include "foundation/atomic_file.h"
#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "support/fake_app/fake_app_process.h"
#include "support/process_runner.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

namespace fs = std::filesystem;
using testing::FakeAppOptions;
using testing::FakeAppProcess;
using testing::ProcessOptions;
using testing::ProcessResult;
using testing::TempDirectory;

constexpr const char* kRuntimeUnavailable =
    "No Zorvik project could be discovered. Ensure Zorvik is running with the target board open, "
    "then retry.\n";

constexpr const char* kWorkspace = R"({
  "version": 1, "projectId": "P", "createdAt": "2026-01-01T00:00:00Z",
  "updatedAt": "2026-01-01T00:00:00Z", "uiState": {}, "entries": []})";

std::string doctorText(const std::string& project, const std::string& source, bool foreground,
                       bool bridge) {
  return "zorvik doctor\n- current project: " + project + "\n- project source: " + source +
         "\n- project foreground: " + (foreground ? "yes" : "no") +
         "\n- runtime write bridge: " + (bridge ? "available" : "unavailable") +
         "\n- headless validation: zorvik project validate <path>\n"
         "- headless inspect: zorvik project inspect <tool> ...\n"
         "- runtime inspect: zorvik runtime inspect <tool> ...\n";
}

AnyCodableValue doctorJSON(AnyCodableValue project, AnyCodableValue source, bool foreground,
                           bool bridge) {
  return JSONObject{
      {"command", "doctor"},
      {"status", "ok"},
      {"current_project", std::move(project)},
      {"project_source", std::move(source)},
      {"project_foreground", foreground},
      {"runtime_write_bridge_available", bridge},
      {"recommended_next_commands",
       AnyCodableValue::Array{"zorvik project validate <path>", "zorvik project inspect <tool> ...",
                              "zorvik runtime inspect <tool> ...",
                              "zorvik agent list-tools --json"}},
  };
}

class DiscoveryEndToEndTest : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(work());
    options_.workingDirectory = work();
    options_.environment["HOME"] = (sandbox_.path() / "home").string();
    options_.environment["XDG_DATA_HOME"] = data().string();
    options_.environment["ZORVIK_PROJECT_PATH"] = std::nullopt;
  }

  fs::path work() const { return sandbox_.path() / "work"; }
  fs::path data() const { return sandbox_.path() / "data"; }
  fs::path registry() const { return data() / "Zorvik" / "active-runtime.json"; }

  // A board folder below the sandbox.
  fs::path board(const std::string& relative) const {
    return sandbox_.write(relative + "/.zorvik/workspace.json", kWorkspace)
        .parent_path()
        .parent_path();
  }

  FakeAppProcess& startApp(FakeAppOptions options) {
    return *apps_.emplace_back(std::make_unique<FakeAppProcess>(std::move(options)));
  }

  // Stops every application and removes the heartbeats it left, which would stay fresh for a
  // few more seconds.
  void stopApps() {
    for (const auto& app : apps_) {
      app->stop();
      fs::remove(app->options().projectFolder / ".zorvik-control/runtime.json");
    }
    apps_.clear();
    fs::remove(registry());
  }

  ProcessResult run(const std::vector<std::string>& arguments) const {
    return testing::runZorvik(arguments, options_);
  }

  // `project current --json` as a value; fails the test when the command fails.
  AnyCodableValue currentJSON(const std::vector<std::string>& extra = {}) const {
    std::vector<std::string> arguments{"project", "current", "--json"};
    arguments.insert(arguments.end(), extra.begin(), extra.end());
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.standardError;
    EXPECT_EQ(result.standardError, "");
    if (result.exitCode != 0) return nullptr;
    return AnyCodableValue::parse(result.standardOutput);
  }

  std::string currentPath() const {
    const ProcessResult result = run({"project", "current"});
    EXPECT_EQ(result.exitCode, 0) << result.standardError;
    return result.standardOutput;
  }

  void expectNoProject(const std::vector<std::string>& extra = {}) const {
    std::vector<std::string> arguments{"project", "current"};
    arguments.insert(arguments.end(), extra.begin(), extra.end());
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.exitCode, 3) << result.standardOutput;
    EXPECT_EQ(result.standardOutput, "");
    EXPECT_EQ(result.standardError, kRuntimeUnavailable);
  }

  // A heartbeat file written by the test itself, for cases that need exact timestamps.
  static void writeHeartbeat(const fs::path& file, const fs::path& project, Date timestamp,
                             bool foreground = false) {
    fs::create_directories(file.parent_path());
    writeFileAtomically(file, AnyCodableValue(JSONObject{{"project_path", project.string()},
                                                         {"timestamp", formatISO8601(timestamp)},
                                                         {"is_foreground", foreground}})
                                  .compactJSONString()
                                  .value());
  }

  TempDirectory sandbox_;
  ProcessOptions options_;
  std::vector<std::unique_ptr<FakeAppProcess>> apps_;
};

std::string stringAt(const AnyCodableValue& value, std::string_view key) {
  const AnyCodableValue* member = value.member(key);
  return member && member->asString() ? *member->asString() : "<missing>";
}

TEST_F(DiscoveryEndToEndTest, NothingRunning) {
  expectNoProject();
  const ProcessResult doctor = run({"doctor"});
  EXPECT_EQ(doctor.exitCode, 0);
  EXPECT_EQ(doctor.standardOutput, doctorText("none", "none", false, false));
  EXPECT_EQ(doctor.standardError, "");

  const ProcessResult json = run({"doctor", "--json"});
  EXPECT_EQ(json.exitCode, 0);
  EXPECT_EQ(AnyCodableValue::parse(json.standardOutput),
            doctorJSON(nullptr, nullptr, false, false));
}

TEST_F(DiscoveryEndToEndTest, EnvironmentOverride) {
  const fs::path live = board("elsewhere/live");
  startApp({.projectFolder = live});

  // Blank is as if unset: discovery goes on (and finds nothing, the board is outside the roots).
  options_.environment["ZORVIK_PROJECT_PATH"] = " \n\t";
  expectNoProject();

  // A folder that does not exist is printed as written; agent commands refuse it.
  const std::string missing = (sandbox_.path() / "no such board ").string();
  options_.environment["ZORVIK_PROJECT_PATH"] = missing;
  EXPECT_EQ(currentPath(), missing + "\n");
  EXPECT_EQ(currentJSON(), AnyCodableValue(JSONObject{{"projectPath", missing},
                                                      {"source", "env"},
                                                      {"runtimeConnected", false},
                                                      {"isForeground", false}}));
  const ProcessResult agent = run({"agent", "list-tools"});
  EXPECT_EQ(agent.exitCode, 2);
  EXPECT_EQ(agent.standardError, "Error: agent commands require an existing project directory.\n");

  // A live project: connected, and --app is ignored.
  options_.environment["ZORVIK_PROJECT_PATH"] = live.string();
  const AnyCodableValue current = currentJSON({"--app", work().string()});
  EXPECT_EQ(*current.member("runtimeConnected"), AnyCodableValue(true));
  EXPECT_EQ(stringAt(current, "source"), "env");
  EXPECT_EQ(current.member("heartbeatAt"), nullptr);

  const ProcessResult doctor = run({"doctor"});
  EXPECT_EQ(doctor.standardOutput, doctorText(live.string(), "env", false, true));
  EXPECT_EQ(run({"agent", "list-tools", "--json"}).exitCode, 0);
}

TEST_F(DiscoveryEndToEndTest, RegistryRecordOfALiveApplication) {
  const fs::path project = board("elsewhere/registered");
  const FakeAppProcess& app = startApp({.projectFolder = project,
                                        .registryFile = registry(),
                                        .bundleIdentifier = "com.example.Desk",
                                        .foreground = true});
  EXPECT_EQ(currentPath(), project.string() + "\n");
  const AnyCodableValue current = currentJSON();
  EXPECT_EQ(stringAt(current, "source"), "runtime_registry");
  EXPECT_EQ(stringAt(current, "projectPath"), project.string());
  EXPECT_EQ(stringAt(current, "bundleIdentifier"), "com.example.Desk");
  EXPECT_EQ(*current.member("processID"), AnyCodableValue(app.pid()));
  EXPECT_EQ(*current.member("isForeground"), AnyCodableValue(true));
  EXPECT_EQ(*current.member("runtimeConnected"), AnyCodableValue(true));
  const auto heartbeatAt = parseISO8601(stringAt(current, "heartbeatAt"));
  ASSERT_TRUE(heartbeatAt);
  EXPECT_LT(std::abs(std::chrono::duration<double>(currentDate() - *heartbeatAt).count()), 5.0);

  const ProcessResult doctor = run({"doctor"});
  EXPECT_EQ(doctor.standardOutput, doctorText(project.string(), "runtime_registry", true, true));
  const ProcessResult doctorJson = run({"doctor", "--json"});
  EXPECT_EQ(AnyCodableValue::parse(doctorJson.standardOutput),
            doctorJSON(project.string(), "runtime_registry", true, true));

  // Discovery feeds the agent commands.
  EXPECT_EQ(run({"agent", "list-tools", "--json"}).exitCode, 0);
}

TEST_F(DiscoveryEndToEndTest, ScanFindsProjectsBelowTheRootsButNotTheRootsThemselves) {
  // The working directory itself holds a live heartbeat: not found.
  sandbox_.write("work/.zorvik/workspace.json", kWorkspace);
  startApp({.projectFolder = work()});
  expectNoProject();

  // Hidden folders and package contents are not entered.
  startApp({.projectFolder = board("work/.hidden/board")});
  startApp({.projectFolder = board("work/Viewer.app/board")});
  expectNoProject();

  const fs::path nested = board("work/research/2026/board");
  startApp({.projectFolder = nested});
  EXPECT_EQ(currentPath(), nested.string() + "\n");
  EXPECT_EQ(stringAt(currentJSON(), "source"), "runtime_scan");

  // A package folder is itself looked at, and the data home is a scan root too.
  stopApps();
  const fs::path package = board("work/Saved.zpk");
  startApp({.projectFolder = package});
  EXPECT_EQ(currentPath(), package.string() + "\n");
  stopApps();
  const fs::path inDataHome = board("data/Zorvik/Boards/kept");
  startApp({.projectFolder = inDataHome});
  EXPECT_EQ(currentPath(), inDataHome.string() + "\n");
}

TEST_F(DiscoveryEndToEndTest, ForegroundBeatsANewerBackgroundHeartbeat) {
  const fs::path older = board("work/older");
  const fs::path newer = board("work/newer");
  startApp({.projectFolder = older, .foreground = true, .staleSeconds = 2.5});
  startApp({.projectFolder = newer});
  const AnyCodableValue current = currentJSON();
  EXPECT_EQ(stringAt(current, "projectPath"), older.string());
  EXPECT_EQ(*current.member("isForeground"), AnyCodableValue(true));
  // A heartbeat 2.5 s old still counts as connected.
  EXPECT_EQ(*current.member("runtimeConnected"), AnyCodableValue(true));

  // Among background heartbeats the later one wins, wherever it was found.
  stopApps();
  startApp({.projectFolder = older, .registryFile = registry(), .staleSeconds = 2.5});
  startApp({.projectFolder = newer});
  EXPECT_EQ(stringAt(currentJSON(), "projectPath"), newer.string());
}

TEST_F(DiscoveryEndToEndTest, RegistryWinsATieAndTheScanStillRuns) {
  const fs::path registered = board("elsewhere/registered");
  const fs::path scanned = board("work/scanned");
  const Date now = currentDate();
  writeHeartbeat(registry(), registered, now);
  writeHeartbeat(scanned / ".zorvik-control/runtime.json", scanned, now);
  AnyCodableValue current = currentJSON();
  EXPECT_EQ(stringAt(current, "projectPath"), registered.string());
  EXPECT_EQ(stringAt(current, "source"), "runtime_registry");
  // The registered folder has no heartbeat of its own.
  EXPECT_EQ(*current.member("runtimeConnected"), AnyCodableValue(false));

  // The same project in both places, same time: the registry reading stays.
  writeHeartbeat(registry(), scanned, now);
  current = currentJSON();
  EXPECT_EQ(stringAt(current, "projectPath"), scanned.string());
  EXPECT_EQ(stringAt(current, "source"), "runtime_registry");
  EXPECT_EQ(*current.member("runtimeConnected"), AnyCodableValue(true));

  // A foreground project found by the scan beats the registry.
  writeHeartbeat(registry(), registered, now);
  writeHeartbeat(scanned / ".zorvik-control/runtime.json", scanned, now - std::chrono::seconds(2),
                 true);
  current = currentJSON();
  EXPECT_EQ(stringAt(current, "projectPath"), scanned.string());
  EXPECT_EQ(stringAt(current, "source"), "runtime_scan");

  // Stale records count for nothing; one 3 seconds in the future counts.
  writeHeartbeat(registry(), registered, now - std::chrono::seconds(30), true);
  writeHeartbeat(scanned / ".zorvik-control/runtime.json", scanned, now - std::chrono::seconds(30));
  expectNoProject();
  writeHeartbeat(registry(), registered, currentDate() + std::chrono::seconds(3));
  EXPECT_EQ(currentPath(), registered.string() + "\n");
}

TEST_F(DiscoveryEndToEndTest, DeletedProjectFolderIsSkipped) {
  const fs::path doomed = board("elsewhere/doomed");
  startApp({.projectFolder = doomed, .registryFile = registry()});
  EXPECT_EQ(currentPath(), doomed.string() + "\n");

  // The application keeps writing its registry record while its folder is gone.
  for (int attempt = 0; attempt < 50 && fs::exists(doomed); ++attempt) {
    std::error_code ignored;
    fs::remove_all(doomed, ignored);
  }
  ASSERT_FALSE(fs::exists(doomed));
  std::this_thread::sleep_for(std::chrono::milliseconds(250));
  ASSERT_TRUE(fs::exists(registry()));
  expectNoProject();
  EXPECT_EQ(run({"doctor"}).standardOutput, doctorText("none", "none", false, false));
}

TEST_F(DiscoveryEndToEndTest, AppBundleFiltersByIdentifier) {
  sandbox_.write("Apps/Desk.app/Contents/Info.plist", R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>com.example.Desk</string></dict></plist>
)");
  sandbox_.write("Apps/Other.app/Contents/Info.plist", R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>org.nobody.Else</string></dict></plist>
)");
  const std::string desk = (sandbox_.path() / "Apps/Desk.app").string();
  const fs::path mine = board("work/mine");
  const fs::path theirs = board("work/theirs");
  const fs::path anonymous = board("work/anonymous");
  startApp({.projectFolder = mine, .bundleIdentifier = "COM.EXAMPLE.DESK"});
  startApp({.projectFolder = theirs, .bundleIdentifier = "com.other.Viewer", .foreground = true});
  startApp({.projectFolder = anonymous, .foreground = true});

  EXPECT_NE(stringAt(currentJSON(), "projectPath"), mine.string());
  const AnyCodableValue filtered = currentJSON({"--app", desk});
  EXPECT_EQ(stringAt(filtered, "projectPath"), mine.string());
  EXPECT_EQ(stringAt(filtered, "bundleIdentifier"), "COM.EXAMPLE.DESK");
  EXPECT_EQ(run({"project", "current", "--app", " " + desk + " "}).standardOutput,
            mine.string() + "\n");

  // A bundle nobody runs, and a path that is no bundle: no project at all.
  expectNoProject({"--app", (sandbox_.path() / "Apps/Other.app").string()});
  expectNoProject({"--app", work().string()});
  const ProcessResult agent = run({"agent", "list-tools", "--app", work().string()});
  EXPECT_EQ(agent.exitCode, 3);
  EXPECT_EQ(agent.standardError, kRuntimeUnavailable);

  // doctor never filters.
  const AnyCodableValue doctor = AnyCodableValue::parse(run({"doctor", "--json"}).standardOutput);
  EXPECT_EQ(*doctor.member("project_foreground"), AnyCodableValue(true));
}

}  // namespace
}  // namespace zorvik
