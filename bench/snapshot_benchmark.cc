// Snapshot load of synthetic boards beside the floor: reading and hashing the same files with
// OpenSSL's SHA-256 and nothing else. Boards come from $ZORVIK_BENCH_BOARDS/board-<n> (made by
// bench/snapshot_load.sh with generate_board).
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "foundation/atomic_file.h"
#include "foundation/sha256.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace {

std::filesystem::path boardPath(int64_t cards) {
  const char* root = std::getenv("ZORVIK_BENCH_BOARDS");
  return std::filesystem::path(root ? root : "build/bench/boards") /
         ("board-" + std::to_string(cards));
}

std::vector<std::filesystem::path> boardFiles(const std::filesystem::path& root) {
  std::vector<std::filesystem::path> files;
  for (const auto& item : std::filesystem::recursive_directory_iterator(root)) {
    if (item.is_regular_file()) files.push_back(item.path());
  }
  return files;
}

void BM_FloorReadAndHash(benchmark::State& state) {
  const auto files = boardFiles(boardPath(state.range(0)));
  for (auto _ : state) {
    for (const auto& file : files) {
      auto bytes = zorvik::readFileContents(file);
      benchmark::DoNotOptimize(zorvik::sha256Hex(*bytes));
    }
  }
  state.counters["files"] = double(files.size());
}

void BM_SnapshotLoad(benchmark::State& state) {
  const auto root = boardPath(state.range(0));
  const zorvik::WorkspaceProjectSnapshotStore store;
  size_t cards = 0;
  for (auto _ : state) {
    auto snapshot = store.load(root);
    cards = snapshot.cards.size();
    if (!snapshot.loadDiagnostics.empty()) state.SkipWithError("board has load diagnostics");
    benchmark::DoNotOptimize(snapshot);
    // Freeing the snapshot is no part of loading it (commands keep theirs until they exit).
    state.PauseTiming();
    snapshot = {};
    state.ResumeTiming();
  }
  state.counters["cards_per_second"] =
      benchmark::Counter(double(cards) * double(state.iterations()), benchmark::Counter::kIsRate);
}

// The goal is a ratio, and a shared machine drifts: each iteration times the floor and then the
// load of the same board, one right after the other, and reports both and their ratio.
void BM_SnapshotLoadOverFloor(benchmark::State& state) {
  const auto root = boardPath(state.range(0));
  const auto files = boardFiles(root);
  const zorvik::WorkspaceProjectSnapshotStore store;
  double floorSeconds = 0;
  double loadSeconds = 0;
  using Clock = std::chrono::steady_clock;
  for (auto _ : state) {
    const auto start = Clock::now();
    for (const auto& file : files) {
      auto bytes = zorvik::readFileContents(file);
      benchmark::DoNotOptimize(zorvik::sha256Hex(*bytes));
    }
    const auto floorEnd = Clock::now();
    auto snapshot = store.load(root);
    const auto loadEnd = Clock::now();
    benchmark::DoNotOptimize(snapshot);
    floorSeconds += std::chrono::duration<double>(floorEnd - start).count();
    loadSeconds += std::chrono::duration<double>(loadEnd - floorEnd).count();
    state.SetIterationTime(std::chrono::duration<double>(loadEnd - floorEnd).count());
    state.PauseTiming();
    snapshot = {};
    state.ResumeTiming();
  }
  const double iterations = double(state.iterations());
  state.counters["floor_ms"] = floorSeconds * 1000 / iterations;
  state.counters["load_ms"] = loadSeconds * 1000 / iterations;
  state.counters["load_over_floor"] = loadSeconds / floorSeconds;
}

BENCHMARK(BM_FloorReadAndHash)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SnapshotLoad)->Arg(1000)->Arg(10000)->Arg(50000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SnapshotLoadOverFloor)
    ->Arg(1000)
    ->Arg(10000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
