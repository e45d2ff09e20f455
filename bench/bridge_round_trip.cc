// Bridge round trips against the stand-in application answering at once: the time one
// sendCommand takes from writing the request to returning the decoded answer.
//
//   bridge_round_trip [calls]
//
// Prints the median, 90th percentile and worst round trip in milliseconds. The application picks
// up requests every few milliseconds, so the figures bound the latency the bridge adds from above.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "support/fake_app/fake_app_process.h"
#include "support/temp_directory.h"
#include "tools/bridge/runtime_control_bridge.h"

int main(int argc, char** argv) {
  using namespace zorvik;
  const int calls = argc > 1 ? std::stoi(argv[1]) : 200;
  testing::TempDirectory project;
  testing::FakeAppProcess app(testing::FakeAppOptions{
      .projectFolder = project.path(),
      .responses = AnyCodableValue::parse(R"({"echo": {"ok": true, "payload": {"status": "ok"}}})"),
      .lifetimeMs = 600000});
  const RuntimeControlBridge bridge;
  std::vector<double> milliseconds;
  for (int i = 0; i < calls + 10; ++i) {
    const auto start = std::chrono::steady_clock::now();
    const RuntimeToolResponse response =
        bridge.sendCommand(project.path(), "echo", JSONObject{{"call", i}}, std::nullopt, 8);
    const auto elapsed = std::chrono::steady_clock::now() - start;
    if (!response.ok) {
      std::fprintf(stderr, "call %d failed: %s\n", i, response.message.value_or("").c_str());
      return 1;
    }
    if (i >= 10) {  // the first calls warm the caches
      milliseconds.push_back(std::chrono::duration<double, std::milli>(elapsed).count());
    }
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  const auto at = [&](double fraction) {
    return milliseconds[static_cast<size_t>(fraction * (milliseconds.size() - 1))];
  };
  std::printf(
      "%d round trips: median %.2f ms, p90 %.2f ms, worst %.2f ms (poll interval %.0f ms)\n", calls,
      at(0.5), at(0.9), milliseconds.back(), RuntimeControlBridge::kPollIntervalSeconds * 1000);
  return 0;
}
