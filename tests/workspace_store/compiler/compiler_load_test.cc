// The compiler over real project folders: what the loader reports, load failures and their owner,
// and the token across compiles of an unchanged and a changed folder.
#include <gtest/gtest.h>

#include "support/temp_directory.h"
#include "workspace_store/compiler/workspace_project_compiler.h"

namespace zorvik {
namespace {

using testing::TempDirectory;
using Owner = WorkspaceCompileDiagnosticOwner;
using Action = WorkspaceCompileDiagnosticActionability;

constexpr const char* kProjectHint =
    "Ensure the folder workspace and `.zorvik/workspace.json` are valid JSON, schema-compliant, "
    "and all referenced files are readable.";

// A workspace entry of a 100 x 50 card.
std::string entry(const std::string& id, const std::string& kind, const std::string& payload,
                  const std::string& relativePath = "", double width = 100) {
  std::string json = R"({"id":")" + id + R"(","kindRawValue":")" + kind +
                     R"(","title":"T","shadowEnabled":true,"createdAt":"2026-01-01T00:00:00Z",)" +
                     R"("layout":{"position":{"x":0,"y":0},"zIndex":0,"actualWidth":)" +
                     std::to_string(width) + R"(,"actualHeight":50},"payload":)" + payload;
  if (!relativePath.empty()) json += R"(,"relativePath":")" + relativePath + "\"";
  return json + "}";
}

std::string document(const std::vector<std::string>& entries, const std::string& id = "P") {
  std::string joined;
  for (const auto& item : entries) joined += (joined.empty() ? "" : ",") + item;
  return R"({"version":1,"projectId":")" + id +
         R"(","createdAt":"2026-01-01T00:00:00Z","updatedAt":"2026-01-01T00:00:00Z",)"
         R"("uiState":{},"entries":[)" +
         joined + "]}";
}

constexpr const char* kNoteID = "A0000000-0000-4000-8000-000000000001";
constexpr const char* kBrokenID = "A0000000-0000-4000-8000-000000000003";
constexpr const char* kNotePayload = R"({"type":"richText","richText":{}})";

class CompilerLoadTest : public ::testing::Test {
 protected:
  WorkspaceCompileResult compile(WorkspaceCompileRequest request = {}) const {
    return WorkspaceProjectCompiler().compile(project_.path(), request);
  }
  // The result with elapsed time cleared, for comparing whole results.
  WorkspaceCompileResult timeless(WorkspaceCompileResult result) const {
    result.summary.elapsedMS = 0;
    return result;
  }

  TempDirectory project_;
};

TEST_F(CompilerLoadTest, EmptyAndMissingDocumentsCompileCleanWithAStableToken) {
  // No document at all loads as an empty board.
  const WorkspaceCompileResult bare = compile();
  EXPECT_EQ(bare.status, WorkspaceCompileStatus::ok);
  EXPECT_TRUE(bare.diagnostics.empty());
  EXPECT_EQ(bare.summary.cardCount, 0);
  EXPECT_EQ(compile().compileToken, bare.compileToken);

  project_.write(".zorvik/workspace.json", document({}));
  const WorkspaceCompileResult empty = compile();
  EXPECT_EQ(empty.status, WorkspaceCompileStatus::ok);
  EXPECT_TRUE(empty.diagnostics.empty());
  EXPECT_EQ(empty.summary.checkedFiles, 1);
  EXPECT_EQ(compile().compileToken, empty.compileToken);
  EXPECT_NE(empty.compileToken, bare.compileToken);
}

TEST_F(CompilerLoadTest, LoaderFindingsComeFirstAndTheTokenTracksFileContents) {
  project_.write("notes/a.md", "# A");
  project_.write(
      ".zorvik/workspace.json",
      document({entry(kNoteID, "richText", kNotePayload, "notes/a.md", 0),
                entry(kBrokenID, "table", R"({"type":"table","table":{}})", "data/missing.csv")}));
  const WorkspaceCompileResult first = compile();
  ASSERT_EQ(first.diagnostics.size(), 2u);
  const WorkspaceCompileDiagnostic& parse = first.diagnostics[0];
  EXPECT_EQ(parse.code, "parse.card");
  EXPECT_EQ(parse.path, "data/missing.csv");
  EXPECT_EQ(parse.cardID, Uuid::parse(kBrokenID));
  EXPECT_EQ(parse.hint,
            "Repair the referenced content file or `.zorvik/workspace.json`, then re-run "
            "validation.");
  EXPECT_EQ(parse.owner, Owner::user);
  EXPECT_EQ(parse.actionability, Action::fixable);
  EXPECT_EQ(first.diagnostics[1].code, "layout.invalid_size");
  EXPECT_EQ(first.diagnostics[1].path, "notes/a.md");
  EXPECT_EQ(first.summary.cardCount, 1);
  EXPECT_EQ(first.summary.checkedFiles, 2);
  EXPECT_EQ(first.summary.errorCount, 2);

  // Mode and changed paths reach the compiler but every compile is whole.
  const WorkspaceCompileResult full = compile(
      {.mode = WorkspaceCompileMode::full, .changedPaths = std::vector<std::string>{"notes/a.md"}});
  EXPECT_EQ(timeless(full), timeless(first));

  // Same counts, other bytes: the token moves with the file.
  project_.write("notes/a.md", "# A, edited");
  const WorkspaceCompileResult edited = compile();
  EXPECT_EQ(timeless(edited).summary, timeless(first).summary);
  EXPECT_NE(edited.compileToken, first.compileToken);
}

TEST_F(CompilerLoadTest, ABrokenDocumentIsOneProjectErrorWithItsOwner) {
  struct Case {
    std::string document;
    Owner owner;
    Action actionability;
  };
  const Case cases[] = {
      {"{not json", Owner::unknown, Action::inspect},
      {R"({"version":1})", Owner::unknown, Action::inspect},
      // A document that reads like a card file is judged by its payload.
      {R"({"payload":{"type":"chat","chat":{"isInvisible":true}}})", Owner::runtime,
       Action::reportOnly},
      {R"({"payload":{"type":"richText","richText":{}}})", Owner::user, Action::fixable},
      {R"({"payload":"text"})", Owner::unknown, Action::inspect},
  };
  std::vector<std::string> tokens;
  for (const Case& test : cases) {
    SCOPED_TRACE(test.document);
    project_.write(".zorvik/workspace.json", test.document);
    const WorkspaceCompileResult result = compile({.includeWarnings = false, .maxDiagnostics = 0});
    EXPECT_EQ(result.status, WorkspaceCompileStatus::error);
    EXPECT_EQ(result.summary, (WorkspaceCompileSummary{0, 0, 1, 0, result.summary.elapsedMS}));
    ASSERT_EQ(result.diagnostics.size(), 1u);
    const WorkspaceCompileDiagnostic& diagnostic = result.diagnostics[0];
    EXPECT_EQ(diagnostic.code, "parse.project");
    EXPECT_EQ(diagnostic.severity, WorkspaceCompileSeverity::error);
    EXPECT_TRUE(diagnostic.message.starts_with("Failed to decode .zorvik/workspace.json: "))
        << diagnostic.message;
    EXPECT_EQ(diagnostic.path, ".zorvik/workspace.json");
    EXPECT_EQ(diagnostic.cardID, std::nullopt);
    EXPECT_EQ(diagnostic.hint, kProjectHint);
    EXPECT_EQ(diagnostic.owner, test.owner);
    EXPECT_EQ(diagnostic.actionability, test.actionability);
    // Stable for one failure.
    EXPECT_EQ(compile().compileToken, result.compileToken);
    tokens.push_back(result.compileToken);
  }
  EXPECT_NE(tokens[0], tokens[1]);  // other failure text, other token
}

}  // namespace
}  // namespace zorvik
