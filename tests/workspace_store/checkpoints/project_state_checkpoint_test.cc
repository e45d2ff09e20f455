#include <gtest/gtest.h>

#include "checkpoint_test_support.h"
#include "foundation/json/value_decoder.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

using testing::at;
using testing::cardUUID;
using testing::TestProject;
using Trigger = WorkspaceProjectCheckpointTrigger;

constexpr const char* kEntries = ".zorvik-control/checkpoints/entries";
constexpr const char* kSnapshots = ".zorvik-control/checkpoints/snapshots";

class ProjectStateCheckpointTest : public ::testing::Test {
 protected:
  ProjectStateCheckpointTest() {
    // A folder card with a child, so that archives carry parent ids and group stacks.
    const std::string folder =
        R"({"id":")" + cardUUID(5) +
        R"(","kindRawValue":"folder","title":"Group","shadowEnabled":true,)"
        R"("createdAt":"2026-01-01T00:00:00Z","layout":{"position":{"x":0,"y":0},"zIndex":0,)"
        R"("actualWidth":800,"actualHeight":600},"payload":{"type":"folder","folder":{)"
        R"("groupStacks":[{"axis":"vertical","anchorId":")" +
        cardUUID(1) + R"(","orderedIds":[")" + cardUUID(1) + R"("],"crossOffset":4}]}}})";
    std::string child = testing::entryJSON({.n = 1});
    child.insert(child.size() - 1, R"(,"parentID":")" + cardUUID(5) + "\"");
    project_.writeDocument(testing::workspaceJSON(
        {folder, child}, {.uiState = R"({"zoomLevelsByFolder":{"root":1.5}})"}));
  }

  std::filesystem::path root() const { return std::filesystem::canonical(project_.path()); }
  WorkspaceProjectStateCheckpoint seedEntry(std::string id, Date createdAt, Trigger trigger) const {
    return testing::writeStateEntry(root(), std::move(id), createdAt, trigger);
  }

  TestProject project_;
  WorkspaceProjectMutationCheckpointStore store_;
};

TEST_F(ProjectStateCheckpointTest, CaptureWritesTheEntryAndOnRequestTheFullArchive) {
  const WorkspaceProjectSnapshot snapshot = WorkspaceProjectSnapshotStore().load(root());
  const auto archived =
      store_.captureProjectCheckpoint(project_.path(), Trigger::turnEnd, "  after turn \n", true);
  EXPECT_EQ(archived.reason, "after turn");
  EXPECT_EQ(archived.trigger, Trigger::turnEnd);
  EXPECT_EQ(archived.projectPath, root().string());
  EXPECT_EQ(archived.stateHash, store_.stateHash(snapshot));
  EXPECT_EQ(archived.projectFingerprint, snapshot.projectFingerprint);
  EXPECT_EQ(std::tuple(archived.cardCount, archived.folderCount, archived.checkedFiles),
            std::tuple(2, 1, snapshot.checkedFiles));

  const std::string name = project_.fileNames(kEntries).at(0);
  EXPECT_TRUE(name.ends_with("-" + archived.checkpointID + ".json"));
  EXPECT_EQ(project_.fileNames(kSnapshots), std::vector<std::string>{name});
  EXPECT_EQ(archived.snapshotPath, std::string(kSnapshots) + "/" + name);

  const auto archive = store_.snapshotArchive(project_.path(), archived);
  ASSERT_TRUE(archive);
  EXPECT_EQ(archive->metadata, snapshot.metadata);
  EXPECT_EQ(archive->folders, snapshot.folders);
  EXPECT_EQ(archive->cards, snapshot.cards);
  EXPECT_EQ(std::tuple(archive->checkpointID, archive->createdAt, archive->stateHash),
            std::tuple(archived.checkpointID, archived.createdAt, archived.stateHash));
  // Archived folders and cards are spelled in snake case.
  const auto raw = CheckpointFolder::readJSON(root() / kSnapshots / name).value();
  EXPECT_TRUE(raw.member("folders")->asArray()->front().member("zoom_level"));
  const AnyCodableValue& child = raw.member("cards")->asArray()->back();
  for (const char* key : {"parent_id", "created_at", "z_index", "group_stacks", "frame"}) {
    EXPECT_TRUE(child.member(key)) << key;
  }

  const auto plain =
      store_.captureProjectCheckpoint(project_.path(), Trigger::onDemand, " \t", false);
  EXPECT_EQ(plain.reason, std::nullopt);
  EXPECT_EQ(plain.snapshotPath, std::nullopt);
  EXPECT_EQ(project_.fileNames(kSnapshots).size(), 1u);
  EXPECT_EQ(store_.snapshotArchive(project_.path(), plain), std::nullopt);
  const auto stored = store_.recentProjectCheckpoints(project_.path(), 10);
  EXPECT_EQ(stored.size(), 2u);
  EXPECT_TRUE(std::count(stored.begin(), stored.end(), archived));
  EXPECT_TRUE(std::count(stored.begin(), stored.end(), plain));
}

TEST_F(ProjectStateCheckpointTest, PeriodicCaptureWaitsForTheIntervalOfAtLeastOneSecond) {
  // Other triggers do not count: the first periodic call always captures.
  store_.captureProjectCheckpoint(project_.path(), Trigger::onDemand, std::nullopt, false);
  const auto first =
      store_.capturePeriodicCheckpointIfDue(project_.path(), 3600, "tick", false, currentDate());
  ASSERT_TRUE(first);
  EXPECT_EQ(first->trigger, Trigger::periodic);
  EXPECT_EQ(first->reason, "tick");

  const Date latest = first->createdAt;
  using std::chrono::milliseconds;
  EXPECT_FALSE(store_.capturePeriodicCheckpointIfDue(project_.path(), 3600, std::nullopt, false,
                                                     latest + std::chrono::seconds(3599)));
  EXPECT_FALSE(store_.capturePeriodicCheckpointIfDue(project_.path(), 0, std::nullopt, false,
                                                     latest + milliseconds(999)));
  EXPECT_FALSE(store_.capturePeriodicCheckpointIfDue(project_.path(), -5, std::nullopt, false,
                                                     latest + milliseconds(500)));
  const auto second = store_.capturePeriodicCheckpointIfDue(project_.path(), 0, std::nullopt, false,
                                                            latest + milliseconds(1000));
  ASSERT_TRUE(second);
  EXPECT_NE(second->checkpointID, first->checkpointID);
  EXPECT_EQ(
      store_.recentProjectCheckpoints(project_.path(), 10, std::set{Trigger::periodic}).size(), 2u);
}

TEST_F(ProjectStateCheckpointTest, ReadersFilterSortAndSkipBadFiles) {
  EXPECT_TRUE(store_.recentProjectCheckpoints(project_.path(), 5).empty());
  const auto start = seedEntry("aaaa", at(100), Trigger::turnStart);
  const auto endLow = seedEntry("bbbb", at(300), Trigger::turnEnd);
  const auto endHigh = seedEntry("cccc", at(300), Trigger::turnEnd);
  const auto mutation = seedEntry("dddd", at(200), Trigger::mutationAfter);
  project_.write(std::string(kEntries) + "/9-bad.json", R"({"checkpoint_id":"eeee",)");
  project_.write(std::string(kEntries) + "/9-trigger.json",
                 R"({"checkpoint_id":"ffff","created_at":"2026-01-01T00:00:00Z",)"
                 R"("project_path":"/p","trigger":"sometimes","state_hash":"s",)"
                 R"("project_fingerprint":"f","card_count":0,"folder_count":0,"checked_files":0})");

  using List = std::vector<WorkspaceProjectStateCheckpoint>;
  EXPECT_EQ(store_.recentProjectCheckpoints(project_.path(), 10),
            (List{endHigh, endLow, mutation, start}));
  EXPECT_EQ(store_.recentProjectCheckpoints(project_.path(), 2), (List{endHigh, endLow}));
  EXPECT_EQ(store_.recentProjectCheckpoints(project_.path(), 10,
                                            std::set{Trigger::turnStart, Trigger::mutationAfter}),
            (List{mutation, start}));
  EXPECT_EQ(store_.recentProjectCheckpoints(project_.path(), 10, std::set<Trigger>{}).size(), 4u);
  EXPECT_TRUE(store_.recentProjectCheckpoints(project_.path(), 0).empty());
}

TEST_F(ProjectStateCheckpointTest, PrunedOrDamagedArchivesLeaveCheckpointsReadable) {
  const WorkspaceProjectMutationCheckpointStore store(2);
  std::vector<WorkspaceProjectStateCheckpoint> captured;
  for (int i = 0; i < 3; ++i) {
    captured.push_back(store.captureProjectCheckpoint(project_.path(), Trigger::mutationBefore,
                                                      std::nullopt, true));
  }
  // Each folder keeps its own two newest files.
  EXPECT_EQ(project_.fileNames(kEntries).size(), 2u);
  EXPECT_EQ(project_.fileNames(kSnapshots), project_.fileNames(kEntries));
  EXPECT_EQ(store.snapshotArchive(project_.path(), captured[0]), std::nullopt);

  // The archive of a live entry pruned away by another writer: the entry stays valid.
  std::filesystem::remove(root() / *captured[1].snapshotPath);
  const auto live = store.recentProjectCheckpoints(project_.path(), 5);
  EXPECT_EQ(live.size(), 2u);
  EXPECT_TRUE(std::count(live.begin(), live.end(), captured[1]));
  EXPECT_EQ(store.snapshotArchive(project_.path(), captured[1]), std::nullopt);

  // A corrupt archive, and paths that lead outside the archive folder, give nothing.
  ASSERT_TRUE(store.snapshotArchive(project_.path(), captured[2]));
  const std::filesystem::path intact = root() / *captured[2].snapshotPath;
  std::filesystem::copy_file(intact, root() / ".zorvik-control/checkpoints/copy.json");
  auto escaping = captured[2];
  escaping.snapshotPath = std::string(kSnapshots) + "/../copy.json";
  EXPECT_EQ(store.snapshotArchive(project_.path(), escaping), std::nullopt);
  escaping.snapshotPath = (root() / ".zorvik-control/checkpoints/copy.json").string();
  EXPECT_EQ(store.snapshotArchive(project_.path(), escaping), std::nullopt);
  project_.write(*captured[2].snapshotPath, R"({"checkpoint_id":)");
  EXPECT_EQ(store.snapshotArchive(project_.path(), captured[2]), std::nullopt);
}

TEST_F(ProjectStateCheckpointTest, AFailedEntryWriteLeavesOnlyAWholeArchive) {
  project_.write(kEntries, "in the way");
  EXPECT_THROW(
      store_.captureProjectCheckpoint(project_.path(), Trigger::turnStart, std::nullopt, true),
      std::filesystem::filesystem_error);
  const auto archives = project_.fileNames(kSnapshots);
  ASSERT_EQ(archives.size(), 1u);
  const auto archive = CheckpointFolder::readJSON(root() / kSnapshots / archives[0]);
  ASSERT_TRUE(archive);
  EXPECT_NO_THROW(decodeValue<ProjectCheckpointSnapshotArchive>(*archive));
  EXPECT_EQ(project_.fileNames(".zorvik-control/checkpoints"),
            (std::vector<std::string>{"entries", "snapshots"}));

  project_.writeDocument("[]");
  EXPECT_THROW(
      store_.captureProjectCheckpoint(project_.path(), Trigger::turnStart, std::nullopt, false),
      std::exception);
}

}  // namespace
}  // namespace zorvik
