#include <gtest/gtest.h>

#include <algorithm>

#include "checkpoint_test_support.h"
#include "foundation/json/value_decoder.h"
#include "workspace_store/checkpoints/project_state_hash.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_store.h"
#include "workspace_store/workspace_project_snapshot_error.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

using testing::at;
using testing::cardUUID;
using testing::TestProject;
using Change = WorkspaceProjectMutationChangeType;
using Trigger = WorkspaceProjectCheckpointTrigger;

WorkspaceProjectMutationCardDiff diff(int card, Change change) {
  const std::string id = cardUUID(card);
  return {id, change,
          change == Change::added ? std::nullopt : std::optional<std::string>("before-" + id),
          change == Change::removed ? std::nullopt : std::optional<std::string>("after-" + id)};
}

// The board now holds cards 1 and 2. The history: M1 added 1 and 3, M2 updated 1, M3 removed 3,
// M4 updated 1 and 2.
class CheckpointDigestTest : public ::testing::Test {
 protected:
  CheckpointDigestTest() {
    project_.writeBoard({{.n = 1}, {.n = 2}});
    seed("m1", "create_cards", 100, {diff(1, Change::added), diff(3, Change::added)});
    seed("m2", "edit_cards", 200, {diff(1, Change::updated)});
    seed("m3", "delete_cards", 300, {diff(3, Change::removed)});
    seed("m4", " Edit_Cards ", 400, {diff(1, Change::updated), diff(2, Change::updated)});
  }

  void seed(std::string id, std::string command, int64_t seconds,
            std::vector<WorkspaceProjectMutationCardDiff> diffs) {
    WorkspaceProjectMutationCheckpoint checkpoint{.checkpointID = std::move(id),
                                                  .command = std::move(command),
                                                  .createdAt = at(seconds),
                                                  .projectPath = project_.path().string(),
                                                  .changedAny = true,
                                                  .beforeStateHash = "b",
                                                  .afterStateHash = "a",
                                                  .cardDiffs = std::move(diffs)};
    for (const auto& item : checkpoint.cardDiffs) checkpoint.changedCardIDs.push_back(item.cardID);
    testing::writeRecord(project_.path(),
                         WorkspaceProjectMutationCheckpointStore::kMutationCheckpointsFolder,
                         checkpoint);
  }

  std::string currentHash(int card) const {
    for (const auto& record : WorkspaceProjectSnapshotStore().load(project_.path()).cards) {
      if (record.id.uppercaseString() == cardUUID(card)) return cardHash(record);
    }
    return "";
  }

  // card id, last checkpoint id, mutation/added/removed/updated counts.
  using Row = std::tuple<std::string, std::optional<std::string>, int, int, int, int>;
  static std::vector<Row> rows(const std::vector<WorkspaceProjectCardCheckpointSummary>& list) {
    std::vector<Row> result;
    for (const auto& s : list) {
      result.emplace_back(s.cardID, s.lastMutationCheckpointID, s.mutationCount, s.addedCount,
                          s.removedCount, s.updatedCount);
    }
    return result;
  }

  TestProject project_;
  WorkspaceProjectMutationCheckpointStore store_;
};

TEST_F(CheckpointDigestTest, CardSummariesFoldTheWindowNewestFirst) {
  const auto summaries = store_.cardCheckpointSummaries(project_.path(), 10);
  // Cards 1 and 2 tie on M4's time and go by id; the removed card 3 follows.
  EXPECT_EQ(rows(summaries), (std::vector<Row>{{cardUUID(1), "m4", 3, 1, 0, 2},
                                               {cardUUID(2), "m4", 1, 0, 0, 1},
                                               {cardUUID(3), "m3", 2, 1, 1, 0}}));
  const auto& first = summaries[0];
  EXPECT_TRUE(first.presentInCurrentSnapshot);
  EXPECT_EQ(first.currentHash, currentHash(1));
  EXPECT_EQ(first.lastMutationCommand, " Edit_Cards ");
  EXPECT_EQ(first.lastMutationAt, at(400));
  EXPECT_EQ(first.lastChangeType, Change::updated);
  EXPECT_EQ(first.lastBeforeHash, "before-" + cardUUID(1));
  EXPECT_EQ(first.lastAfterHash, "after-" + cardUUID(1));
  const auto& removed = summaries[2];
  EXPECT_FALSE(removed.presentInCurrentSnapshot);
  EXPECT_EQ(removed.currentHash, std::nullopt);
  EXPECT_EQ(removed.lastChangeType, Change::removed);
  EXPECT_EQ(removed.lastAfterHash, std::nullopt);

  // A window of one (zero acts as one) sees M4 only: card 3 is neither on the board nor touched.
  const auto narrow = store_.cardCheckpointSummaries(project_.path(), 0);
  EXPECT_EQ(rows(narrow),
            (std::vector<Row>{{cardUUID(1), "m4", 1, 0, 0, 1}, {cardUUID(2), "m4", 1, 0, 0, 1}}));
  // A window of two (M4, M3) holds card 3's removal but not its addition.
  EXPECT_EQ(rows(store_.cardCheckpointSummaries(project_.path(), 2)).back(),
            (Row{cardUUID(3), "m3", 1, 0, 1, 0}));
}

TEST_F(CheckpointDigestTest, GivenCardIDsAreTheWholeScopeAndCompareIgnoringCase) {
  std::string lower = cardUUID(3);
  std::transform(lower.begin(), lower.end(), lower.begin(), ::tolower);
  const auto summaries = store_.cardCheckpointSummaries(
      project_.path(), 48, {" " + lower, "card-x", "", cardUUID(2), cardUUID(2)});
  EXPECT_EQ(rows(summaries), (std::vector<Row>{{cardUUID(2), "m4", 1, 0, 0, 1},
                                               {cardUUID(3), "m3", 2, 1, 1, 0},
                                               {"CARD-X", std::nullopt, 0, 0, 0, 0}}));
  EXPECT_FALSE(summaries[2].presentInCurrentSnapshot);
  EXPECT_EQ(summaries[2].lastMutationAt, std::nullopt);
  EXPECT_EQ(summaries[0].currentHash, currentHash(2));
}

TEST_F(CheckpointDigestTest, MutationSummariesFilterByCommandWithoutTheirDiffs) {
  auto ids = [](const std::vector<WorkspaceProjectMutationCheckpointSummary>& list) {
    std::vector<std::string> result;
    for (const auto& summary : list) result.push_back(summary.checkpointID);
    return result;
  };
  const auto edits = store_.recentMutationCheckpointSummaries(
      project_.path(), 10, std::vector<std::string>{"EDIT_CARDS\n"});
  EXPECT_EQ(ids(edits), (std::vector<std::string>{"m4", "m2"}));
  EXPECT_EQ(ids(store_.recentMutationCheckpointSummaries(project_.path(), 1,
                                                         std::vector<std::string>{"edit_cards"})),
            std::vector<std::string>{"m4"});
  EXPECT_EQ(ids(store_.recentMutationCheckpointSummaries(project_.path(), 10,
                                                         std::vector<std::string>{" "})),
            (std::vector<std::string>{"m4", "m3", "m2", "m1"}));
  const AnyCodableValue encoded = edits[0].encode();
  EXPECT_EQ(encoded.member("card_diffs"), nullptr);
  EXPECT_EQ(encoded.member("project_path"), nullptr);
  EXPECT_EQ(*encoded.member("changed_card_ids"),
            AnyCodableValue(AnyCodableValue::Array{cardUUID(1), cardUUID(2)}));
}

TEST_F(CheckpointDigestTest, DigestBoundsEveryListAndFailsOnlyWithTheBoard) {
  const Date before = std::chrono::floor<std::chrono::seconds>(currentDate());
  auto entry = [&](std::string id, int64_t seconds, Trigger trigger) {
    return testing::writeStateEntry(project_.path(), std::move(id), at(seconds), trigger);
  };
  const auto start = entry("s1", 100, Trigger::turnStart);
  const auto end = entry("s2", 200, Trigger::turnEnd);

  const auto digest = store_.checkpointDigest(project_.path(), 0, -3, 0);
  EXPECT_EQ(digest.projectPath, std::filesystem::canonical(project_.path()).string());
  EXPECT_EQ(digest.latestProjectCheckpoint, end);
  EXPECT_EQ(digest.recentProjectCheckpoints, std::vector{end});
  ASSERT_EQ(digest.recentMutationCheckpoints.size(), 1u);
  EXPECT_EQ(digest.recentMutationCheckpoints[0].checkpointID, "m4");
  EXPECT_EQ(digest.cardCheckpointSummaries.size(), 2u);
  EXPECT_GE(digest.generatedAt, before);
  EXPECT_LE(digest.generatedAt, currentDate());

  const auto scoped = store_.checkpointDigest(project_.path(), 4, 8, 48, {cardUUID(1)},
                                              std::set{Trigger::turnStart});
  EXPECT_EQ(scoped.latestProjectCheckpoint, start);
  EXPECT_EQ(scoped.recentMutationCheckpoints.size(), 4u);
  EXPECT_EQ(rows(scoped.cardCheckpointSummaries),
            (std::vector<Row>{{cardUUID(1), "m4", 3, 1, 0, 2}}));
  EXPECT_EQ(decodeValue<WorkspaceProjectCheckpointDigest>(scoped.encode()), scoped);

  const auto none =
      store_.checkpointDigest(project_.path(), 4, 8, 48, {}, std::set{Trigger::periodic});
  EXPECT_EQ(none.latestProjectCheckpoint, std::nullopt);
  EXPECT_EQ(none.encode().member("latest_project_checkpoint"), nullptr);

  // Reading the files never needs the board; summarising cards does.
  project_.writeDocument("{ broken");
  EXPECT_EQ(store_.recentMutationCheckpointSummaries(project_.path(), 8).size(), 4u);
  EXPECT_THROW(store_.checkpointDigest(project_.path(), 4, 8, 48), WorkspaceProjectSnapshotError);
}

}  // namespace
}  // namespace zorvik
