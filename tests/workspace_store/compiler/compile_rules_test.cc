// The semantic checks over snapshots built in memory, so that values no JSON file can hold (NaN,
// infinities) and folder listings the loader never makes are reachable too.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <set>

#include "workspace_store/compiler/workspace_project_compiler.h"

namespace zorvik {
namespace {

using Owner = WorkspaceCompileDiagnosticOwner;
using Action = WorkspaceCompileDiagnosticActionability;
using Severity = WorkspaceCompileSeverity;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

Uuid id(int n) {
  char text[40];
  std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012d", n);
  return *Uuid::parse(text);
}

std::string idText(int n) { return id(n).uppercaseString(); }

AnyCodableValue payload(const std::string& kind, JSONObject body = {}) {
  return JSONObject{{"type", kind}, {kind, std::move(body)}};
}
AnyCodableValue folder() { return payload("folder"); }
AnyCodableValue note() { return payload("richText"); }
AnyCodableValue invisibleChat() { return payload("chat", {{"isInvisible", true}}); }
AnyCodableValue withURL(const std::string& kind, const std::string& url) {
  return payload(kind, {{"url", url}});
}
AnyCodableValue table(AnyCodableValue::Array rows) { return payload("table", {{"rows", rows}}); }
using Row = AnyCodableValue::Array;

CardRecord card(int n, AnyCodableValue payload, std::optional<int> parent = std::nullopt) {
  CardRecord record;
  record.id = id(n);
  if (parent) record.parentID = id(*parent);
  record.title = "Card " + std::to_string(n);
  record.path = "cards/" + std::to_string(n) + ".md";
  record.frame = Frame{10, 20, 200, 100};
  record.payload = std::move(payload);
  return record;
}

WorkspaceProjectSnapshot snapshotOf(std::vector<CardRecord> cards) {
  WorkspaceProjectSnapshot snapshot;
  snapshot.metadata.projectId = "P";
  snapshot.folders = {FolderRecord{.path = "."}};
  snapshot.cards = std::move(cards);
  snapshot.checkedFiles = 3;
  snapshot.projectFingerprint = "F";
  return snapshot;
}

WorkspaceCompileResult compile(const WorkspaceProjectSnapshot& snapshot,
                               WorkspaceCompileRequest request = {}) {
  return WorkspaceProjectCompiler::compileSnapshot(snapshot, request);
}

WorkspaceCompileDiagnostic userError(const CardRecord& card, std::string code, std::string message,
                                     std::optional<std::string> hint = std::nullopt) {
  return {Severity::error, std::move(code), std::move(message), card.path,
          card.id,         std::move(hint), Owner::user,        Action::fixable};
}

std::vector<std::string> codes(const std::vector<WorkspaceCompileDiagnostic>& diagnostics) {
  std::vector<std::string> result;
  for (const auto& diagnostic : diagnostics) result.push_back(diagnostic.code);
  return result;
}

TEST(CompileRulesTest, EveryRuleInCheckOrderWithItsWordingAndOwner) {
  CardRecord group = card(1, folder());
  group.groupStacks = {GroupStack{"vertical", id(99), {id(3), id(3), id(2)}, 0}};
  const CardRecord orphanChild = card(2, note(), 98);
  const CardRecord child = card(3, note(), 1);
  const CardRecord wrongParent = card(4, note(), 2);
  const CardRecord first5 = card(5, note());
  CardRecord second5 = card(5, note());
  second5.path = "cards/5-copy.md";
  const CardRecord selfParent = card(6, folder(), 6);
  CardRecord badFrame = card(7, note());
  badFrame.frame = Frame{kInfinity, 0, 0, -5};
  CardRecord snapped = card(8, note());
  snapped.snapConstraints = SnapConstraints{
      .left = SnapConstraint{id(97), "middle", kNaN, Point{}, 4},
      .bottom = SnapConstraint{id(3), "top", 2, Point{kInfinity, kNaN}, 8},  // localOffset free
  };
  const CardRecord ragged = card(10, table({Row{"a", "b"}, Row{"c"}}));
  const CardRecord badLink = card(11, withURL("link", " not a url "));
  const CardRecord badImage = card(12, withURL("image", "http://a b"));
  CardRecord hiddenChat = card(13, invisibleChat());
  hiddenChat.frame.width = kNaN;

  WorkspaceProjectSnapshot snapshot =
      snapshotOf({group, orphanChild, child, wrongParent, first5, second5, selfParent, badFrame,
                  snapped, ragged, badLink, badImage, hiddenChat});
  snapshot.folders = {FolderRecord{.path = "."}, FolderRecord{.path = "boards/Stray"},
                      FolderRecord{.path = "boards/" + idText(1) + "/"}};
  const WorkspaceCompileDiagnostic loaderFinding{Severity::error, "parse.card",   "Broken file.",
                                                 "x.csv",         id(50),         "Repair it.",
                                                 Owner::user,     Action::fixable};
  snapshot.loadDiagnostics = {loaderFinding};

  const auto warning = [](const CardRecord& card, std::string code, std::string message) {
    return WorkspaceCompileDiagnostic{Severity::warning, std::move(code), std::move(message),
                                      card.path,         card.id,         std::nullopt,
                                      Owner::user,       Action::fixable};
  };
  const std::vector<WorkspaceCompileDiagnostic> expected = {
      loaderFinding,
      userError(orphanChild, "structure.parent_missing", "Parent card does not exist.",
                "Missing parent id: " + idText(98)),
      userError(wrongParent, "structure.parent_not_folder",
                "Parent card exists but is not a folder.", "Parent id: " + idText(2)),
      userError(second5, "structure.duplicate_id", "Duplicate card id found."),
      userError(selfParent, "structure.parent_cycle", "Detected parent cycle in folder hierarchy."),
      userError(badFrame, "layout.invalid_size", "Card dimensions must be positive finite values."),
      userError(badFrame, "layout.invalid_position", "Card position must be finite."),
      {Severity::error, "layout.invalid_size", "Card dimensions must be positive finite values.",
       hiddenChat.path, hiddenChat.id, std::nullopt, Owner::runtime, Action::reportOnly},
      userError(snapped, "constraints.anchor_missing", "snapConstraints anchor id does not exist.",
                "Missing anchor id: " + idText(97)),
      userError(snapped, "constraints.side_invalid", "snapConstraints side is invalid."),
      userError(snapped, "constraints.value_invalid",
                "snapConstraints offsets must be finite numbers."),
      userError(group, "group.anchor_missing", "groupStacks anchor card is missing.",
                "Missing anchor id: " + idText(99)),
      userError(group, "group.ordered_id_duplicate", "groupStacks orderedIds contains duplicates."),
      userError(group, "group.child_mismatch",
                "groupStacks references a card not owned by this folder.", "Card id: " + idText(2)),
      warning(ragged, "quality.table_row_shape", "Table rows have non-uniform column counts."),
      warning(badLink, "quality.url_malformed", "Item card URL appears malformed."),
      warning(badImage, "quality.url_malformed", "Image card URL appears malformed."),
      {Severity::warning, "folder.orphan_directory",
       "Folder directory exists but no matching folder card id was found.", "boards/Stray",
       std::nullopt, "Directory name should match a folder card UUID.", Owner::user,
       Action::fixable},
  };

  const WorkspaceCompileResult result = compile(snapshot);
  ASSERT_EQ(result.diagnostics.size(), expected.size())
      << ::testing::PrintToString(codes(result.diagnostics));
  for (size_t i = 0; i < expected.size(); ++i) {
    SCOPED_TRACE(expected[i].code);
    EXPECT_EQ(result.diagnostics[i].encode(), expected[i].encode());
  }
  EXPECT_EQ(result.status, WorkspaceCompileStatus::error);
  EXPECT_EQ(result.summary, (WorkspaceCompileSummary{3, 13, 14, 4, result.summary.elapsedMS}));
}

TEST(CompileRulesTest, CleanCardsOfEveryKindPass) {
  CardRecord group = card(1, folder());
  group.groupStacks = {GroupStack{"horizontal", id(2), {id(2), id(3)}, 0}};
  CardRecord snapped = card(4, note(), 1);
  snapped.snapConstraints = SnapConstraints{.right = SnapConstraint{id(2), "right", 0, {}, 8}};
  const WorkspaceProjectSnapshot snapshot = snapshotOf({
      group,
      card(2, note(), 1),
      card(3, table({Row{"a", "b"}, Row{"c", "d"}}), 1),
      snapped,
      card(5, withURL("link", "https://example.org/Straße?q=1#top")),
      card(6, withURL("image", "   ")),
      // Browser and video payloads are no kind the checks know: their URLs pass unseen.
      card(7, payload("browser", {{"currentURL", "::"}})),
  });
  const WorkspaceCompileResult result = compile(snapshot);
  EXPECT_EQ(result.status, WorkspaceCompileStatus::ok);
  EXPECT_TRUE(result.diagnostics.empty()) << ::testing::PrintToString(codes(result.diagnostics));
}

TEST(CompileRulesTest, ParentsResolveToTheLaterCardOfARepeatedID) {
  // The first card 1 is a folder, the second is not: the child sees the second.
  const WorkspaceProjectSnapshot laterNote =
      snapshotOf({card(1, folder()), card(1, note()), card(2, note(), 1)});
  EXPECT_EQ(codes(compile(laterNote).diagnostics),
            (std::vector<std::string>{"structure.duplicate_id", "structure.parent_not_folder"}));
  const WorkspaceProjectSnapshot laterFolder =
      snapshotOf({card(1, note()), card(1, folder()), card(2, note(), 1)});
  EXPECT_EQ(codes(compile(laterFolder).diagnostics),
            (std::vector<std::string>{"structure.duplicate_id"}));
}

TEST(CompileRulesTest, EachCycleIsReportedOnceOnTheCardThatClosesIt) {
  // 1 -> 2 -> 1 is a cycle; 3 hangs below it and 4 -> 5 -> 6 -> 4 is a second one.
  const WorkspaceProjectSnapshot snapshot =
      snapshotOf({card(1, folder(), 2), card(2, folder(), 1), card(3, folder(), 1),
                  card(4, folder(), 5), card(5, folder(), 6), card(6, folder(), 4)});
  const WorkspaceCompileResult result = compile(snapshot);
  ASSERT_EQ(codes(result.diagnostics),
            (std::vector<std::string>{"structure.parent_cycle", "structure.parent_cycle"}));
  EXPECT_EQ(result.diagnostics[0].cardID, id(2));
  EXPECT_EQ(result.diagnostics[1].cardID, id(6));
  EXPECT_EQ(result.diagnostics[1].path, "cards/6.md");
}

TEST(CompileRulesTest, ACycleBelongsToTheRuntimeWhenAnInvisibleChatIsPartOfIt) {
  const auto cycleOf = [](const WorkspaceProjectSnapshot& snapshot) {
    for (const auto& diagnostic : compile(snapshot).diagnostics) {
      if (diagnostic.code == "structure.parent_cycle") return diagnostic;
    }
    ADD_FAILURE() << "no cycle reported";
    return WorkspaceCompileDiagnostic{};
  };
  // The chat 3 only leads into the cycle 1 <-> 2.
  const auto leading = cycleOf(
      snapshotOf({card(3, invisibleChat(), 1), card(1, folder(), 2), card(2, folder(), 1)}));
  EXPECT_EQ(leading.cardID, id(2));
  EXPECT_EQ(leading.owner, Owner::user);
  EXPECT_EQ(leading.actionability, Action::fixable);
  // Here the chat is in the cycle 3 -> 1 -> 3, which the folder 1 closes.
  const auto inside = cycleOf(snapshotOf({card(3, invisibleChat(), 1), card(1, folder(), 3)}));
  EXPECT_EQ(inside.cardID, id(1));
  EXPECT_EQ(inside.owner, Owner::runtime);
  EXPECT_EQ(inside.actionability, Action::reportOnly);
  // Report-only errors still fail the compile.
  CardRecord hiddenChat = card(3, invisibleChat());
  hiddenChat.frame.width = -1;
  EXPECT_EQ(compile(snapshotOf({hiddenChat})).status, WorkspaceCompileStatus::error);
}

TEST(CompileRulesTest, CapAndErrorsOnlyKeepCountsAndStatusWhole) {
  CardRecord zeroSize = card(1, note());
  zeroSize.frame.height = 0;
  const auto link = [](int n) { return card(n, withURL("link", "no scheme")); };
  // Two errors (card 1 twice over, card 2 once) and two warnings.
  CardRecord offBoard = card(2, note());
  offBoard.frame.y = kNaN;
  const WorkspaceProjectSnapshot snapshot = snapshotOf({zeroSize, offBoard, link(3), link(4)});
  const std::vector<std::string> all = {"layout.invalid_size", "layout.invalid_position",
                                        "quality.url_malformed", "quality.url_malformed"};

  struct Case {
    bool includeWarnings;
    int64_t maxDiagnostics;
    std::vector<std::string> reported;
  };
  const Case cases[] = {
      {true, 200, all},     {true, 3, {all[0], all[1], all[2]}}, {true, 0, {all[0]}},
      {true, -7, {all[0]}}, {false, 200, {all[0], all[1]}},      {false, 1, {all[0]}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(::testing::Message() << test.includeWarnings << " " << test.maxDiagnostics);
    const auto result = compile(
        snapshot, {.includeWarnings = test.includeWarnings, .maxDiagnostics = test.maxDiagnostics});
    EXPECT_EQ(codes(result.diagnostics), test.reported);
    EXPECT_EQ(result.summary.errorCount, 2);
    EXPECT_EQ(result.summary.warningCount, 2);
    EXPECT_EQ(result.status, WorkspaceCompileStatus::error);
  }

  // Warnings alone never make the status "error", and errors-only then reports nothing.
  const auto warningsOnly = compile(snapshotOf({link(3), link(4)}), {.includeWarnings = false});
  EXPECT_EQ(warningsOnly.status, WorkspaceCompileStatus::ok);
  EXPECT_TRUE(warningsOnly.diagnostics.empty());
  EXPECT_EQ(warningsOnly.summary.warningCount, 2);
}

TEST(CompileRulesTest, TokenFollowsTheValidatedState) {
  const WorkspaceProjectSnapshot base = snapshotOf({card(1, note())});
  const std::string token = compile(base).compileToken;
  EXPECT_EQ(token.size(), 64u);
  EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos);
  // Reporting options and the compile mode leave it alone.
  EXPECT_EQ(compile(base, {.mode = WorkspaceCompileMode::full,
                           .changedPaths = std::vector<std::string>{"cards/1.md"},
                           .includeWarnings = false,
                           .maxDiagnostics = 1})
                .compileToken,
            token);

  const auto edited = [&](auto edit) {
    WorkspaceProjectSnapshot snapshot = base;
    edit(snapshot);
    return compile(snapshot).compileToken;
  };
  const auto addCard = [&](AnyCodableValue payload) {
    return edited([&](auto& snapshot) { snapshot.cards.push_back(card(2, std::move(payload))); });
  };
  const std::string nowWarned = addCard(withURL("image", "bad url"));
  std::set<std::string> tokens = {token};
  for (const std::string& changed : {
           edited([](auto& snapshot) { snapshot.metadata.projectId = "Q"; }),
           edited([](auto& snapshot) { snapshot.projectFingerprint = "G"; }),
           addCard(note()),
           edited([](auto& snapshot) { snapshot.cards[0].frame.width = -1; }),
           nowWarned,
       }) {
    EXPECT_TRUE(tokens.insert(changed).second);
  }
  // The token proves the state, not the wording of its findings.
  // The same counts from another warning, with identity and fingerprint unchanged.
  EXPECT_EQ(addCard(table({Row{"a"}, Row{}})), nowWarned);
}

}  // namespace
}  // namespace zorvik
