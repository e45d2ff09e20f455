// `zorvik project validate` and `zorvik project inspect compile_project`, run as the real binary on
// real folders: the report on standard output, nothing on standard error, and the exit codes.
#include <gtest/gtest.h>

#include <string>

#include "foundation/json/any_codable_value.h"
#include "support/process_runner.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

using testing::ProcessOptions;
using testing::ProcessResult;
using testing::TempDirectory;

constexpr const char* kNoteID = "C0000000-0000-4000-8000-000000000001";
constexpr const char* kLinkID = "C0000000-0000-4000-8000-000000000002";
constexpr const char* kLostID = "C0000000-0000-4000-8000-000000000003";
constexpr const char* kMissingParentID = "C0000000-0000-4000-8000-0000000000FF";

std::string entry(const std::string& id, const std::string& kind, const std::string& payload,
                  const std::string& extra) {
  return R"({"id":")" + id + R"(","kindRawValue":")" + kind +
         R"(","title":"T","shadowEnabled":true,"createdAt":"2026-01-01T00:00:00Z",)"
         R"("layout":{"position":{"x":0,"y":0},"zIndex":0,"actualWidth":100,"actualHeight":50},)"
         R"("payload":)" +
         payload + extra + "}";
}

// A note whose parent does not exist, a link with a malformed URL and an entry whose file is gone.
std::string faultyBoard() {
  return R"({"version":1,"projectId":"P","createdAt":"2026-01-01T00:00:00Z",)"
         R"("updatedAt":"2026-01-01T00:00:00Z","uiState":{},"entries":[)" +
         entry(kNoteID, "richText", R"({"type":"richText","richText":{}})",
               R"(,"relativePath":"notes/a.md","parentID":")" + std::string(kMissingParentID) +
                   "\"") +
         "," + entry(kLinkID, "link", R"({"type":"link","link":{"url":"not a url"}})", "") + "," +
         entry(kLostID, "table", R"({"type":"table","table":{}})",
               R"(,"relativePath":"data/gone.csv")") +
         "]}";
}

class ProjectValidateTest : public ::testing::Test {
 protected:
  void SetUp() override {
    faulty_.write(".zorvik/workspace.json", faultyBoard());
    faulty_.write("notes/a.md", "# A");
    clean_.write(".zorvik/workspace.json",
                 R"({"version":1,"projectId":"C","createdAt":"2026-01-01T00:00:00Z",)"
                 R"("updatedAt":"2026-01-01T00:00:00Z","uiState":{},"entries":[]})");
    options_.workingDirectory = sandbox_.path();
    options_.environment["ZORVIK_PROJECT_PATH"] = std::nullopt;
    options_.environment["HOME"] = sandbox_.path().string();
  }

  ProcessResult run(std::vector<std::string> arguments) {
    return testing::runZorvik(arguments, options_);
  }

  // Standard output with the elapsed time, which varies, replaced by "N".
  static std::string steady(std::string output) {
    const size_t start = output.find("Elapsed: ");
    if (start == std::string::npos) return output;
    const size_t digits = start + 9;
    const size_t end = output.find_first_not_of("0123456789", digits);
    if (end == digits || end == std::string::npos || output.compare(end, 2, "ms") != 0) {
      return output;
    }
    return output.replace(digits, end - digits, "N");
  }

  TempDirectory sandbox_;
  TempDirectory faulty_;
  TempDirectory clean_;
  ProcessOptions options_;
};

TEST_F(ProjectValidateTest, TextReportListsCountsThenEachDiagnosticAndExitsFive) {
  const ProcessResult result = run({"project", "validate", faulty_.path().string()});
  EXPECT_EQ(result.exitCode, 5);
  EXPECT_EQ(result.standardError, "");
  EXPECT_EQ(steady(result.standardOutput),
            std::string("Status: error\nCards: 2\nFiles checked: 2\nErrors: 2\nWarnings: 1\n"
                        "Elapsed: Nms\n\nDiagnostics:\n") +
                "  [error] parse.card: Failed to decode data/gone.csv: The file could not be read: "
                "No such file or directory. (data/gone.csv) card=" +
                kLostID +
                " hint: Repair the referenced content file or `.zorvik/workspace.json`, then "
                "re-run validation.\n"
                "  [error] structure.parent_missing: Parent card does not exist. (notes/a.md) "
                "card=" +
                kNoteID + " hint: Missing parent id: " + kMissingParentID +
                "\n"
                "  [warning] quality.url_malformed: Item card URL appears malformed. "
                "(.zorvik/workspace.json#" +
                kLinkID + ") card=" + kLinkID + "\n");

  // Errors only, and a cap, shorten the list but not the counts or the verdict.
  const ProcessResult capped = run(
      {"project", "validate", faulty_.path().string(), "--errors-only", "--max-diagnostics", "+1"});
  EXPECT_EQ(capped.exitCode, 5);
  const std::string output = steady(capped.standardOutput);
  EXPECT_NE(output.find("Errors: 2\nWarnings: 1\n"), std::string::npos) << output;
  EXPECT_NE(output.find("  [error] parse.card: "), std::string::npos) << output;
  EXPECT_EQ(output.find("structure.parent_missing"), std::string::npos) << output;
}

TEST_F(ProjectValidateTest, JSONReportIsTheCompileResult) {
  const ProcessResult result =
      run({"project", "validate", faulty_.path().string(), "--json", "--errors-only"});
  EXPECT_EQ(result.exitCode, 5);
  EXPECT_EQ(result.standardError, "");
  const AnyCodableValue answer = AnyCodableValue::parse(result.standardOutput);
  EXPECT_EQ(result.standardOutput, *answer.jsonString() + "\n");  // pretty, sorted, one print
  EXPECT_EQ(*answer.member("status"), AnyCodableValue("error"));
  const auto& diagnostics = *answer.member("diagnostics")->asArray();
  ASSERT_EQ(diagnostics.size(), 2u);
  EXPECT_EQ(*diagnostics[1].member("code"), AnyCodableValue("structure.parent_missing"));
  EXPECT_EQ(*diagnostics[1].member("card_id"), AnyCodableValue(kNoteID));
  EXPECT_EQ(*diagnostics[1].member("owner"), AnyCodableValue("user"));
  EXPECT_EQ(*diagnostics[1].member("actionability"), AnyCodableValue("fixable"));
  EXPECT_EQ(*answer.member("summary")->member("warning_count"), AnyCodableValue(1));
  EXPECT_EQ(answer.member("compile_token")->asString()->size(), 64u);
}

TEST_F(ProjectValidateTest, ACleanProjectPassesWithTheSameTokenEachTime) {
  const ProcessResult text = run({"project", "validate", clean_.path().string()});
  EXPECT_EQ(text.exitCode, 0);
  EXPECT_EQ(text.standardError, "");
  EXPECT_EQ(steady(text.standardOutput),
            "Status: ok\nCards: 0\nFiles checked: 1\nErrors: 0\nWarnings: 0\nElapsed: Nms\n");

  const ProcessResult first = run({"project", "validate", clean_.path().string(), "--json"});
  const ProcessResult second = run({"project", "validate", clean_.path().string(), "--json"});
  EXPECT_EQ(first.exitCode, 0);
  EXPECT_EQ(*AnyCodableValue::parse(first.standardOutput).member("compile_token"),
            *AnyCodableValue::parse(second.standardOutput).member("compile_token"));
}

TEST_F(ProjectValidateTest, ABrokenDocumentIsAProjectErrorAndBadArgumentsExitTwo) {
  faulty_.write(".zorvik/workspace.json", "{");
  const ProcessResult broken = run({"project", "validate", faulty_.path().string()});
  EXPECT_EQ(broken.exitCode, 5);
  EXPECT_NE(broken.standardOutput.find("Cards: 0\nFiles checked: 0\nErrors: 1\nWarnings: 0\n"),
            std::string::npos)
      << broken.standardOutput;
  EXPECT_NE(broken.standardOutput.find("  [error] parse.project: Failed to decode "
                                       ".zorvik/workspace.json: "),
            std::string::npos)
      << broken.standardOutput;

  sandbox_.write("file.txt", "x");
  for (const auto& [arguments, standardError] :
       std::vector<std::pair<std::vector<std::string>, std::string>>{
           {{"project", "validate", "file.txt"},
            "Error: project validate expects an existing project directory path.\n"},
           {{"project", "validate", ".", "--max-diagnostics", "-2"},
            "Error: --max-diagnostics requires a positive integer.\n"}}) {
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.exitCode, 2) << standardError;
    EXPECT_EQ(result.standardError, standardError);
    EXPECT_EQ(result.standardOutput, "");
  }
}

TEST_F(ProjectValidateTest, InspectCompileProjectAnswersJSONAndExitsSixOnErrors) {
  const ProcessResult faulty =
      run({"project", "inspect", "compile-project", "--project", faulty_.path().string(),
           "--args-json", R"({"include_warnings":false,"max_diagnostics":1})"});
  EXPECT_EQ(faulty.exitCode, 6);
  EXPECT_EQ(faulty.standardError, "");
  const AnyCodableValue answer = AnyCodableValue::parse(faulty.standardOutput);
  EXPECT_EQ(*answer.member("status"), AnyCodableValue("error"));
  EXPECT_EQ(answer.member("diagnostics")->asArray()->size(), 1u);
  EXPECT_EQ(*answer.member("summary")->member("error_count"), AnyCodableValue(2));

  // project_path in the arguments wins over --project.
  const ProcessResult clean =
      run({"project", "inspect", "compile_project", "--project", faulty_.path().string(),
           "--args-json", R"({"project_path":")" + clean_.path().string() + R"("})"});
  EXPECT_EQ(clean.exitCode, 0);
  EXPECT_EQ(*AnyCodableValue::parse(clean.standardOutput).member("status"), AnyCodableValue("ok"));
}

}  // namespace
}  // namespace zorvik
