// Checkpoint costs on synthetic data.
//
// State hash: hashing a loaded board beside loading it (goal: the hash at most twice the load).
// Boards come from $ZORVIK_BENCH_BOARDS/board-<n> (made by bench/checkpoints.sh with
// generate_board).
//
// Folders of 10,000 checkpoint files, written once into a temporary project and removed at exit:
// pruning that only lists and sorts, pruning down to 120 files, and the readers
// recentCheckpoints and recentProjectCheckpoints, which read and decode every file.
#include <benchmark/benchmark.h>

#include <unistd.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "foundation/uuid.h"
#include "workspace_store/checkpoints/checkpoint_folder.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_store.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace {

using zorvik::CheckpointFolder;
using zorvik::WorkspaceProjectMutationCheckpointStore;

constexpr int kFiles = 10000;

std::filesystem::path boardPath(int64_t cards) {
  const char* root = std::getenv("ZORVIK_BENCH_BOARDS");
  return std::filesystem::path(root ? root : "build/bench/boards") /
         ("board-" + std::to_string(cards));
}

zorvik::WorkspaceProjectSnapshot loadBoard(benchmark::State& state) {
  auto snapshot = zorvik::WorkspaceProjectSnapshotStore().load(boardPath(state.range(0)));
  if (snapshot.cards.empty()) state.SkipWithError("no board; run bench/checkpoints.sh");
  return snapshot;
}

void BM_SnapshotLoad(benchmark::State& state) {
  const auto root = boardPath(state.range(0));
  const zorvik::WorkspaceProjectSnapshotStore store;
  for (auto _ : state) benchmark::DoNotOptimize(store.load(root));
}

void BM_StateHash(benchmark::State& state) {
  const auto snapshot = loadBoard(state);
  const WorkspaceProjectMutationCheckpointStore store;
  for (auto _ : state) benchmark::DoNotOptimize(store.stateHash(snapshot));
  state.counters["cards_per_second"] = benchmark::Counter(
      double(snapshot.cards.size()) * double(state.iterations()), benchmark::Counter::kIsRate);
}

// Both in each iteration, timed apart, for the ratio the goal is stated in.
void BM_StateHashOverLoad(benchmark::State& state) {
  const auto root = boardPath(state.range(0));
  const zorvik::WorkspaceProjectSnapshotStore snapshots;
  const WorkspaceProjectMutationCheckpointStore store;
  double loadSeconds = 0;
  double hashSeconds = 0;
  for (auto _ : state) {
    const auto start = std::chrono::steady_clock::now();
    const auto snapshot = snapshots.load(root);
    const auto loaded = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(store.stateHash(snapshot));
    const auto hashed = std::chrono::steady_clock::now();
    loadSeconds += std::chrono::duration<double>(loaded - start).count();
    hashSeconds += std::chrono::duration<double>(hashed - loaded).count();
  }
  const double n = double(state.iterations());
  state.counters["load_ms"] = loadSeconds * 1000 / n;
  state.counters["hash_ms"] = hashSeconds * 1000 / n;
  state.counters["hash_over_load"] = hashSeconds / loadSeconds;
}

// A temporary project whose checkpoint folders each hold kFiles realistic records.
class CheckpointFixture {
 public:
  static const CheckpointFixture& shared() {
    static const CheckpointFixture fixture;
    return fixture;
  }
  ~CheckpointFixture() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
  }

  const std::filesystem::path& project() const { return project_; }
  std::filesystem::path mutations() const {
    return project_ / WorkspaceProjectMutationCheckpointStore::kMutationCheckpointsFolder;
  }

  // Fills `folder` with kFiles mutation checkpoint files, one second apart.
  static void fillMutations(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    const auto start = std::chrono::system_clock::now() - std::chrono::hours(24);
    for (int i = 0; i < kFiles; ++i) {
      zorvik::WorkspaceProjectMutationCheckpoint checkpoint{
          .checkpointID = zorvik::Uuid::random().lowercaseString(),
          .command = i % 2 ? "edit_cards" : "create_cards",
          .createdAt = std::chrono::floor<std::chrono::seconds>(start + std::chrono::seconds(i)),
          .projectPath = "/projects/board",
          .beforeStateHash = std::string(64, 'b'),
          .afterStateHash = std::string(64, 'a'),
      };
      for (int d = 0; d < 3; ++d) {
        const std::string id = zorvik::Uuid::random().uppercaseString();
        checkpoint.changedCardIDs.push_back(id);
        checkpoint.cardDiffs.push_back({id, zorvik::WorkspaceProjectMutationChangeType::updated,
                                        std::string(64, 'c'), std::string(64, 'd')});
      }
      checkpoint.targetCardIDs = checkpoint.changedCardIDs;
      checkpoint.updatedCount = 3;
      checkpoint.changedAny = true;
      write(folder, checkpoint.createdAt, checkpoint.checkpointID, checkpoint.encode());
    }
  }

 private:
  CheckpointFixture()
      : root_(std::filesystem::temp_directory_path() /
              ("zorvik-checkpoint-bench-" + std::to_string(::getpid()))),
        project_(root_ / "project") {
    fillMutations(mutations());
    const auto entries =
        project_ / WorkspaceProjectMutationCheckpointStore::kStateCheckpointsFolder;
    std::filesystem::create_directories(entries);
    const auto start = std::chrono::system_clock::now() - std::chrono::hours(24);
    for (int i = 0; i < kFiles; ++i) {
      const zorvik::WorkspaceProjectStateCheckpoint checkpoint{
          .checkpointID = zorvik::Uuid::random().lowercaseString(),
          .createdAt = std::chrono::floor<std::chrono::seconds>(start + std::chrono::seconds(i)),
          .projectPath = "/projects/board",
          .trigger = zorvik::WorkspaceProjectCheckpointTrigger::periodic,
          .stateHash = std::string(64, 's'),
          .projectFingerprint = std::string(64, 'f'),
          .cardCount = 10000,
          .folderCount = 1,
          .checkedFiles = 10001,
      };
      write(entries, checkpoint.createdAt, checkpoint.checkpointID, checkpoint.encode());
    }
  }

  // Seeding needs whole files only, not durable ones, so it skips the atomic writer's flushes.
  static void write(const std::filesystem::path& folder, zorvik::Date createdAt,
                    const std::string& id, const zorvik::AnyCodableValue& record) {
    std::ofstream(folder / CheckpointFolder::fileName(createdAt, id)) << *record.jsonString();
  }

  std::filesystem::path root_;
  std::filesystem::path project_;
};

void BM_PruneFullFolderNothingToRemove(benchmark::State& state) {
  const CheckpointFolder folder(CheckpointFixture::shared().mutations());
  for (auto _ : state) folder.prune(kFiles);
}

void BM_PruneTo120(benchmark::State& state) {
  const auto location = CheckpointFixture::shared().project().parent_path() / "prune";
  const CheckpointFolder folder(location);
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove_all(location);
    CheckpointFixture::fillMutations(location);
    state.ResumeTiming();
    folder.prune(WorkspaceProjectMutationCheckpointStore::kDefaultMaxEntriesPerProject);
  }
  if (folder.checkpointFiles().size() != 120) state.SkipWithError("pruning kept the wrong count");
  std::filesystem::remove_all(location);
}

void BM_RecentCheckpoints(benchmark::State& state) {
  const auto& fixture = CheckpointFixture::shared();
  const WorkspaceProjectMutationCheckpointStore store(kFiles);
  for (auto _ : state) {
    const auto recent = store.recentCheckpoints(fixture.project(), 10);
    if (recent.size() != 10) state.SkipWithError("expected 10 checkpoints");
  }
}

void BM_RecentProjectCheckpoints(benchmark::State& state) {
  const auto& fixture = CheckpointFixture::shared();
  const WorkspaceProjectMutationCheckpointStore store(kFiles);
  for (auto _ : state) {
    const auto recent = store.recentProjectCheckpoints(fixture.project(), 4);
    if (recent.size() != 4) state.SkipWithError("expected 4 checkpoints");
  }
}

BENCHMARK(BM_SnapshotLoad)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StateHash)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StateHashOverLoad)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PruneFullFolderNothingToRemove)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PruneTo120)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RecentCheckpoints)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RecentProjectCheckpoints)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
