#include "tools/project/compile_project_tool.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "support/temp_directory.h"

namespace zorvik {
namespace {

using testing::TempDirectory;

constexpr const char* kCleanBoard = R"({"version":1,"projectId":"CLEAN",
  "createdAt":"2026-01-01T00:00:00Z","updatedAt":"2026-01-01T00:00:00Z","uiState":{},
  "entries":[{"id":"B0000000-0000-4000-8000-000000000001","kindRawValue":"richText","title":"N",
    "shadowEnabled":true,"createdAt":"2026-01-01T00:00:00Z",
    "layout":{"position":{"x":0,"y":0},"zIndex":0,"actualWidth":100,"actualHeight":50},
    "payload":{"type":"richText","richText":{"markdown":"hi"}}}]})";

AnyCodableValue run(const AgentTool& tool, const AnyCodableValue& input) {
  return tool.run(input, AgentToolContext::forSingleCall());
}

class CompileProjectToolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    clean_.write(".zorvik/workspace.json", kCleanBoard);
    broken_.write(".zorvik/workspace.json", "[]");
  }

  TempDirectory clean_;
  TempDirectory broken_;
};

TEST_F(CompileProjectToolTest, EveryExampleIsAnInputTheToolAccepts) {
  const CompileProjectTool tool(WorkspaceProjectCompiler(), std::nullopt);
  for (const AnyCodableValue& example : *tool.spec().examples) {
    EXPECT_NO_THROW(decodeValue<WorkspaceCompileRequest>(example));
  }
}

TEST_F(CompileProjectToolTest, ProjectPathWinsOverTheSessionProject) {
  const CompileProjectTool bound(WorkspaceProjectCompiler(), broken_.path());
  const auto sessionAnswer = decodeValue<WorkspaceCompileResult>(run(bound, JSONObject{}));
  EXPECT_EQ(sessionAnswer.status, WorkspaceCompileStatus::error);
  EXPECT_EQ(sessionAnswer.diagnostics.at(0).code, "parse.project");

  const auto explicitAnswer = decodeValue<WorkspaceCompileResult>(run(
      bound, JSONObject{{"project_path", "  " + clean_.path().string() + "\n"}, {"mode", "full"}}));
  EXPECT_EQ(explicitAnswer.status, WorkspaceCompileStatus::ok);
  EXPECT_EQ(explicitAnswer.summary.cardCount, 1);
  // The answer is the compiler's result for that project, token included.
  EXPECT_EQ(explicitAnswer.compileToken,
            WorkspaceProjectCompiler().compile(clean_.path(), {}).compileToken);
  // A blank path falls back to the session's project.
  EXPECT_EQ(
      decodeValue<WorkspaceCompileResult>(run(bound, JSONObject{{"project_path", " "}})).status,
      WorkspaceCompileStatus::error);
}

TEST_F(CompileProjectToolTest, BadInputAndAnUnboundSessionThrow) {
  const CompileProjectTool unbound(WorkspaceProjectCompiler(), std::nullopt);
  try {
    run(unbound, JSONObject{{"max_diagnostics", 5}});
    FAIL() << "expected a throw";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "compile_project requires project_path when session is not bound.");
  }
  const CompileProjectTool bound(WorkspaceProjectCompiler(), clean_.path());
  EXPECT_THROW(run(bound, JSONObject{{"max_diagnostics", "many"}}), DecodingError);
  EXPECT_THROW(run(bound, JSONObject{{"mode", "partial"}}), DecodingError);
}

}  // namespace
}  // namespace zorvik
