#include <gtest/gtest.h>

#include <chrono>
#include <set>
#include <thread>

#include "checkpoint_test_support.h"
#include "foundation/json/value_decoder.h"
#include "foundation/uuid.h"
#include "workspace_store/checkpoints/project_state_hash.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_envelope.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_ref_envelope.h"
#include "workspace_store/workspace_project_snapshot_error.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

using testing::at;
using testing::cardUUID;
using testing::TestEntry;
using testing::TestProject;
using Change = WorkspaceProjectMutationChangeType;

constexpr const char* kFolder = ".zorvik-control/mutation-checkpoints";

// A checkpoint record as another writer might have left it.
WorkspaceProjectMutationCheckpoint record(std::string id, Date createdAt) {
  return {.checkpointID = std::move(id),
          .command = "edit_cards",
          .createdAt = createdAt,
          .projectPath = "/p",
          .beforeStateHash = "b",
          .afterStateHash = "a"};
}

class MutationCheckpointTest : public ::testing::Test {
 protected:
  MutationCheckpointTest() { project_.writeBoard(cards_); }

  WorkspaceProjectSnapshot load() const { return WorkspaceProjectSnapshotStore().load(root()); }
  std::filesystem::path root() const { return std::filesystem::canonical(project_.path()); }
  // Brackets `mutate` with a capture.
  template <class Mutation>
  WorkspaceProjectMutationCheckpoint capture(const WorkspaceProjectMutationCheckpointStore& store,
                                             Mutation mutate) const {
    const CaptureContext context = store.beginCapture(project_.path(), "edit_cards", {});
    mutate();
    return store.finishCapture(context);
  }
  void seed(const std::string& name, const std::string& contents) const {
    project_.write(std::string(kFolder) + "/" + name, contents);
  }

  std::vector<TestEntry> cards_ = {{.n = 1}, {.n = 2}, {.n = 3}};
  TestProject project_;
  WorkspaceProjectMutationCheckpointStore store_;
};

TEST_F(MutationCheckpointTest, CaptureDiffsAddedRemovedAndUpdatedCardsAndPersistsTheRecord) {
  const WorkspaceProjectSnapshot before = load();
  const auto startMs = std::chrono::duration_cast<std::chrono::milliseconds>(
                           std::chrono::system_clock::now().time_since_epoch())
                           .count();
  const CaptureContext context = store_.beginCapture(
      project_.path(), "edit_cards", {" " + cardUUID(3), "", cardUUID(2), cardUUID(2), " \n"});
  EXPECT_EQ(context.targetCardIDs, (std::vector<std::string>{cardUUID(2), cardUUID(3)}));
  EXPECT_EQ(context.beforeStateHash, projectStateHash(before));

  // Remove 1, edit 2, keep 3, add 4.
  project_.writeBoard({{.n = 2, .markdown = "edited"}, {.n = 3}, {.n = 4}});
  const WorkspaceProjectSnapshot after = load();
  const WorkspaceProjectMutationCheckpoint checkpoint = store_.finishCapture(context);

  ASSERT_EQ(checkpoint.cardDiffs.size(), 3u);
  EXPECT_EQ(checkpoint.cardDiffs[0],
            (WorkspaceProjectMutationCardDiff{cardUUID(1), Change::removed,
                                              cardHash(before.cards[0]), std::nullopt}));
  EXPECT_EQ(checkpoint.cardDiffs[1], (WorkspaceProjectMutationCardDiff{cardUUID(2), Change::updated,
                                                                       cardHash(before.cards[1]),
                                                                       cardHash(after.cards[0])}));
  EXPECT_EQ(checkpoint.cardDiffs[2],
            (WorkspaceProjectMutationCardDiff{cardUUID(4), Change::added, std::nullopt,
                                              cardHash(after.cards[2])}));
  EXPECT_EQ(checkpoint.changedCardIDs,
            (std::vector<std::string>{cardUUID(1), cardUUID(2), cardUUID(4)}));
  EXPECT_EQ(std::tuple(checkpoint.addedCount, checkpoint.removedCount, checkpoint.updatedCount),
            std::tuple(1, 1, 1));
  EXPECT_TRUE(checkpoint.changedAny);
  EXPECT_EQ(checkpoint.beforeStateHash, projectStateHash(before));
  EXPECT_EQ(checkpoint.afterStateHash, projectStateHash(after));
  EXPECT_EQ(checkpoint.targetCardIDs, context.targetCardIDs);
  EXPECT_EQ(checkpoint.command, "edit_cards");
  EXPECT_EQ(checkpoint.projectPath, root().string());
  ASSERT_TRUE(Uuid::parse(checkpoint.checkpointID));
  EXPECT_EQ(checkpoint.checkpointID, Uuid::parse(checkpoint.checkpointID)->lowercaseString());

  // One whole file named by its creation millisecond and id, holding exactly the record.
  const auto names = project_.fileNames(kFolder);
  ASSERT_EQ(names.size(), 1u);
  const std::string suffix = "-" + checkpoint.checkpointID + ".json";
  ASSERT_TRUE(names[0].ends_with(suffix));
  const int64_t fileMs = std::stoll(names[0].substr(0, names[0].size() - suffix.size()));
  EXPECT_GE(fileMs, startMs);
  EXPECT_EQ(fileMs / 1000, std::chrono::duration_cast<std::chrono::seconds>(
                               checkpoint.createdAt.time_since_epoch())
                               .count());
  const auto stored = CheckpointFolder::readJSON(root() / kFolder / names[0]);
  ASSERT_TRUE(stored);
  EXPECT_EQ(decodeValue<WorkspaceProjectMutationCheckpoint>(*stored), checkpoint);

  EXPECT_EQ(store_.recentCheckpoints(project_.path(), 5),
            std::vector<WorkspaceProjectMutationCheckpoint>{checkpoint});
  std::string upper = checkpoint.checkpointID;
  std::transform(upper.begin(), upper.end(), upper.begin(), ::toupper);
  EXPECT_EQ(store_.mutationCheckpoint(project_.path(), " " + upper), checkpoint);
  EXPECT_EQ(store_.mutationCheckpoint(project_.path(), Uuid::random().lowercaseString()),
            std::nullopt);
}

TEST_F(MutationCheckpointTest, MetadataChangesMoveTheStateWithoutChangingCards) {
  const auto background = capture(
      store_, [&] { project_.writeBoard(cards_, {.uiState = R"({"backgroundStyle":"Grid"})"}); });
  EXPECT_FALSE(background.changedAny);
  EXPECT_TRUE(background.cardDiffs.empty() && background.changedCardIDs.empty());
  EXPECT_NE(background.beforeStateHash, background.afterStateHash);
}

TEST_F(MutationCheckpointTest, FailedCapturesThrowAndWriteNothing) {
  project_.writeDocument("{ not json");
  EXPECT_THROW(store_.beginCapture(project_.path(), "edit_cards", {}),
               WorkspaceProjectSnapshotError);

  project_.writeBoard(cards_);
  const CaptureContext context = store_.beginCapture(project_.path(), "edit_cards", {});
  project_.writeDocument(R"({"version":1})");
  EXPECT_THROW(store_.finishCapture(context), WorkspaceProjectSnapshotError);
  EXPECT_FALSE(std::filesystem::exists(project_.path() / ".zorvik-control"));

  // A file where the folder belongs makes the write fail; no stray file appears beside it.
  project_.writeBoard(cards_);
  project_.write(".zorvik-control/mutation-checkpoints", "in the way");
  EXPECT_THROW(store_.finishCapture(context), std::filesystem::filesystem_error);
  EXPECT_EQ(project_.fileNames(".zorvik-control"),
            std::vector<std::string>{"mutation-checkpoints"});
}

TEST_F(MutationCheckpointTest, ProjectPathsAreResolvedThroughSymbolicLinks) {
  const std::filesystem::path link =
      project_.path().parent_path() / (project_.path().filename().string() + "-link");
  std::filesystem::create_directory_symlink(project_.path(), link);
  const CaptureContext context = store_.beginCapture(link / "." / "", "edit_cards", {});
  project_.writeBoard({{.n = 1}});
  const auto checkpoint = store_.finishCapture(context);
  std::filesystem::remove(link);
  EXPECT_EQ(checkpoint.projectPath, root().string());
  EXPECT_EQ(project_.fileNames(kFolder).size(), 1u);
  EXPECT_EQ(store_.recentCheckpoints(project_.path(), 1).front(), checkpoint);
}

TEST_F(MutationCheckpointTest, PruningKeepsTheNewestFilesAndCountsCorruptOnes) {
  const WorkspaceProjectMutationCheckpointStore store(120);
  for (int i = 0; i < 120; ++i) {
    seed(std::to_string(1600000000000 + i) + "-" + std::to_string(i) + ".json",
         i == 7 ? "{ corrupt" : "{}");
  }
  seed("notes.txt", "not a checkpoint");
  const auto checkpoint = capture(store, [&] { project_.writeBoard({{.n = 9}}); });

  const auto names = project_.fileNames(kFolder);
  ASSERT_EQ(names.size(), 121u);  // 120 checkpoint files and the text file
  EXPECT_EQ(names.front(), "1600000000001-1.json");
  EXPECT_TRUE(std::count(names.begin(), names.end(), "1600000000007-7.json"));
  EXPECT_TRUE(std::count(names.begin(), names.end(), "notes.txt"));
  EXPECT_TRUE(names[119].ends_with(checkpoint.checkpointID + ".json"));

  // Upper-case extensions count too, and a limit below one keeps one file.
  TestProject small;
  small.writeBoard(cards_);
  small.write(std::string(kFolder) + "/1000-a.JSON", "{}");
  const WorkspaceProjectMutationCheckpointStore one(0);
  EXPECT_EQ(one.maxEntriesPerProject(), 1);
  const CaptureContext context = one.beginCapture(small.path(), "delete_cards", {});
  const auto last = one.finishCapture(context);
  const auto remaining = small.fileNames(kFolder);
  ASSERT_EQ(remaining.size(), 1u);
  EXPECT_TRUE(remaining.front().ends_with(last.checkpointID + ".json"));
}

TEST_F(MutationCheckpointTest, ReadersSkipBadFilesAndOrderNewestFirst) {
  EXPECT_TRUE(store_.allMutationCheckpoints(project_.path()).empty());  // no folder yet

  // File names run against creation order: readers sort by created_at, then id, highest first.
  const auto oldest = record("aaaa", at(100));
  const auto tieLow = record("bbbb", at(200));
  const auto tieHigh = record("cccc", at(200));
  seed("3-x.json", oldest.encode().jsonString().value());
  seed("2-x.json", tieLow.encode().jsonString().value());
  seed("1-x.json", tieHigh.encode().jsonString().value());
  seed("4-corrupt.json", "{\"checkpoint_id\": ");
  seed("5-shape.json", R"({"checkpoint_id":"dddd","command":"edit_cards"})");
  seed("6-binary.json", std::string("\xff\xfe\x00\x01", 4));
  seed("7-empty.json", "");
  std::filesystem::create_directories(root() / kFolder / "8-folder.json");

  EXPECT_EQ(store_.allMutationCheckpoints(project_.path()),
            (std::vector<WorkspaceProjectMutationCheckpoint>{tieHigh, tieLow, oldest}));
  EXPECT_EQ(store_.recentCheckpoints(project_.path(), 2),
            (std::vector<WorkspaceProjectMutationCheckpoint>{tieHigh, tieLow}));
  EXPECT_TRUE(store_.recentCheckpoints(project_.path(), 0).empty());
  EXPECT_EQ(store_.mutationCheckpoint(project_.path(), "BBBB"), tieLow);
  EXPECT_EQ(store_.mutationCheckpoint(project_.path(), "dddd"), std::nullopt);
}

TEST_F(MutationCheckpointTest, ConcurrentCapturesLeaveOnlyWholeDistinctFiles) {
  const WorkspaceProjectMutationCheckpointStore store(1000);
  std::vector<std::thread> threads;
  for (int t = 0; t < 6; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5; ++i) {
        store.finishCapture(store.beginCapture(project_.path(), "edit_cards", {}));
      }
    });
  }
  for (auto& thread : threads) thread.join();

  const auto names = project_.fileNames(kFolder);
  EXPECT_EQ(names.size(), 30u);
  for (const auto& name : names) EXPECT_TRUE(name.ends_with(".json")) << name;
  const auto all = store.allMutationCheckpoints(project_.path());
  std::set<std::string> ids;
  for (const auto& checkpoint : all) ids.insert(checkpoint.checkpointID);
  EXPECT_EQ(ids.size(), 30u);
}

TEST(MutationCheckpointEnvelopeTest, EnvelopesEncodeTheirFixedShapes) {
  auto checkpoint = record("0f0e", at(0));
  checkpoint.changedAny = true;
  checkpoint.cardDiffs = {{cardUUID(1), Change::added, std::nullopt, "h"}};

  const auto ok = WorkspaceProjectMutationCheckpointRefEnvelope::ok(checkpoint);
  EXPECT_EQ(ok.encode(), AnyCodableValue::parse(R"({"status":"ok","message":null,
      "checkpoint":{"checkpoint_id":"0f0e","command":"edit_cards","before_state_hash":"b",
      "after_state_hash":"a","changed_any":true}})"));
  const auto unavailable = WorkspaceProjectMutationCheckpointRefEnvelope::unavailable("lost");
  EXPECT_EQ(
      unavailable.encode(),
      AnyCodableValue::parse(R"({"status":"unavailable","checkpoint":null,"message":"lost"})"));
  EXPECT_EQ(decodeValue<WorkspaceProjectMutationCheckpointRefEnvelope>(
                AnyCodableValue::parse(R"({"status":"unavailable","message":"lost"})")),
            unavailable);

  const AnyCodableValue encoded =
      WorkspaceProjectMutationCheckpointEnvelope::ok(checkpoint).encode();
  EXPECT_EQ(*encoded.member("checkpoint")->member("card_diffs"),
            AnyCodableValue::parse(R"([{"card_id":")" + cardUUID(1) +
                                   R"(","change_type":"added","after_hash":"h"}])"));
  EXPECT_THROW(decodeValue<WorkspaceProjectMutationCheckpointEnvelope>(
                   AnyCodableValue::parse(R"({"status":"maybe"})")),
               DecodingError);
}

}  // namespace
}  // namespace zorvik
