#include "workspace_store/checkpoints/project_state_hash.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "checkpoint_test_support.h"
#include "foundation/json/json_writer.h"
#include "foundation/sha256.h"
#include "workspace_store/checkpoints/workspace_project_mutation_checkpoint_store.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

using testing::TestDocument;
using testing::TestEntry;
using testing::TestProject;

const std::vector<TestEntry> kCards = {{.n = 1, .title = "One"},
                                       {.n = 2, .title = "Two", .markdown = "# Two"},
                                       {.n = 3, .title = "Three", .x = 400}};

WorkspaceProjectSnapshot load(const TestProject& project) {
  return WorkspaceProjectSnapshotStore().load(project.path());
}

// The state hash of a board written from `cards` and `document`.
std::string hashOf(const std::vector<TestEntry>& cards, const TestDocument& document = {}) {
  TestProject project;
  project.writeBoard(cards, document);
  return projectStateHash(load(project));
}

TEST(ProjectStateHashTest, IgnoresKeyOrderAndEntryOrderOnDisk) {
  TestProject written;
  written.writeBoard(kCards);
  const WorkspaceProjectSnapshot snapshot = load(written);

  // The same board with every object's keys re-ordered (parsing sorts them; the writer above does
  // not) and the entries reversed.
  std::vector<std::string> entries = testing::entriesOf(kCards);
  std::reverse(entries.begin(), entries.end());
  TestProject reordered;
  reordered.writeDocument(
      AnyCodableValue::parse(testing::workspaceJSON(entries)).compactJSONString().value());
  const WorkspaceProjectSnapshot other = load(reordered);

  const std::string hash = projectStateHash(snapshot);
  EXPECT_EQ(hash.size(), 64u);
  EXPECT_EQ(hash.find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_EQ(hash, projectStateHash(other));
  ASSERT_EQ(snapshot.cards.size(), 3u);
  ASSERT_EQ(other.cards.front().id, snapshot.cards.back().id);
  EXPECT_EQ(cardHash(snapshot.cards.front()), cardHash(other.cards.back()));
  EXPECT_NE(cardHash(snapshot.cards[0]), cardHash(snapshot.cards[1]));
}

TEST(ProjectStateHashTest, SavingPanningAndViewSettingsLeaveTheStateUnmoved) {
  const std::string base = hashOf(kCards);
  EXPECT_EQ(base, hashOf(kCards, {.updatedAt = "2030-05-05T05:05:05Z"}));

  std::vector<TestEntry> recreated = kCards;
  recreated[0].createdAt = "2029-01-01T00:00:00Z";
  EXPECT_EQ(base, hashOf(recreated));

  const std::string viewSettings =
      R"({"backgroundStyle":"Dots","viewportCenter":{"x":500,"y":-20},"leftSidebarOpen":true,)"
      R"("chatSidebarWidth":320,"chatSidebarOpen":true,"boardAgentGuideCardId":")" +
      testing::cardUUID(2) + R"(","agentAffinityByScope":{"root":")" + testing::cardUUID(3) +
      R"("},"zoomLevelsByFolder":{"root":2.5}})";
  EXPECT_EQ(base, hashOf(kCards, {.uiState = viewSettings}));
  // "Dots" is also what an absent background means.
  EXPECT_EQ(base, hashOf(kCards, {.uiState = "{}"}));
}

TEST(ProjectStateHashTest, EveryHashedFieldMovesTheState) {
  auto changed = [](auto edit) {
    std::vector<TestEntry> cards = kCards;
    edit(cards[1]);
    return hashOf(cards);
  };
  const std::vector<std::string> hashes = {
      hashOf(kCards),
      hashOf(kCards, {.uiState = R"({"backgroundStyle":"Grid"})"}),
      hashOf(kCards, {.projectId = "PROJECT-2"}),
      hashOf(kCards, {.uiState = R"({"currentFolderId":")" + testing::cardUUID(1) + R"("})"}),
      hashOf(kCards, {.version = 2}),
      changed([](TestEntry& card) { card.title = "Renamed"; }),
      changed([](TestEntry& card) { card.x = 11; }),
      changed([](TestEntry& card) { card.zIndex = 7; }),
      changed([](TestEntry& card) { card.markdown = "# Two, edited"; }),
      hashOf({kCards[0], kCards[1]}),
  };
  EXPECT_EQ(std::set<std::string>(hashes.begin(), hashes.end()).size(), hashes.size());
}

TEST(ProjectStateHashTest, StreamedHashIsTheHashOfTheWholeCanonicalForm) {
  TestProject project;
  project.writeBoard(kCards, {.uiState = R"({"currentFolderId":")" + testing::cardUUID(1) + "\"}"});
  const WorkspaceProjectSnapshot snapshot = load(project);
  const AnyCodableValue form = stateHashPayload(snapshot);
  EXPECT_EQ(projectStateHash(snapshot), sha256Hex(writeJSON(form, JSONStyle::compact).value()));

  const AnyCodableValue& metadata = *form.member("metadata");
  std::set<std::string> keys;
  for (const auto& [key, value] : *metadata.asObject()) keys.insert(key);
  EXPECT_EQ(keys, (std::set<std::string>{"background_style", "current_folder_id", "project_id",
                                         "resources_folder_name", "structure_version"}));
  const AnyCodableValue& firstCard = form.member("cards")->asArray()->front();
  EXPECT_EQ(*firstCard.member("id")->asString(), testing::cardUUID(1));
  EXPECT_EQ(firstCard.member("created_at"), nullptr);
  EXPECT_EQ(sha256Hex(writeJSON(firstCard, JSONStyle::compact).value()),
            cardHash(snapshot.cards.front()));
}

TEST(ProjectStateHashTest, UnencodableStatesHashAsTheErrorText) {
  TestProject project;
  project.writeBoard(kCards);
  WorkspaceProjectSnapshot first = load(project);
  WorkspaceProjectSnapshot second = first;
  first.cards[0].frame.x = std::nan("");
  second.cards[2].frame.width = INFINITY;
  EXPECT_EQ(cardHash(first.cards[0]), "hash_error");
  EXPECT_EQ(projectStateHash(first), "hash_error");
  EXPECT_EQ(projectStateHash(first), projectStateHash(second));
  EXPECT_NE(cardHash(first.cards[1]), "hash_error");

  const WorkspaceProjectMutationCheckpointStore store;
  EXPECT_EQ(store.stateHash(second), "hash_error");
}

}  // namespace
}  // namespace zorvik
