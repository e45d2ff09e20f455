#include "tools/project/create_project_tool.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

#include "foundation/iso8601_date.h"
#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/uuid.h"
#include "support/temp_directory.h"
#include "workspace_store/workspace_project_snapshot_store.h"

namespace zorvik {
namespace {

using testing::TempDirectory;

AnyCodableValue create(const std::filesystem::path& path, std::optional<bool> overwrite = {}) {
  JSONObject input{{"project_path", path.string()}};
  if (overwrite) input.set("overwrite_if_exists", *overwrite);
  return CreateProjectTool().run(input, AgentToolContext::forSingleCall());
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream stream(path);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

constexpr const char* kRefusal =
    "create_project target already exists. Set overwrite_if_exists=true to replace it.";

// The message of what `action` throws as std::invalid_argument.
template <class Action>
std::string invalidArgument(Action action) {
  try {
    action();
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "<no throw>";
}

TEST(CreateProjectToolTest, WritesTheBaselineTreeAndValidatesIt) {
  TempDirectory sandbox;
  const std::filesystem::path root = sandbox.path() / "boards" / "Research";
  const Date before = currentDate() - std::chrono::seconds(1);
  const AnyCodableValue answer = create(root);

  EXPECT_TRUE(std::filesystem::is_directory(root / "resources"));
  const std::string text = readFile(root / ".zorvik" / "workspace.json");
  const AnyCodableValue document = AnyCodableValue::parse(text);
  EXPECT_EQ(text, *document.jsonString());  // pretty-printed, keys sorted
  EXPECT_EQ(*document.member("version"), AnyCodableValue(1));
  EXPECT_TRUE(Uuid::parse(*document.member("projectId")->asString()));
  const AnyCodableValue* createdAt = document.member("createdAt");
  EXPECT_EQ(*createdAt, *document.member("updatedAt"));
  const auto created = parseISO8601(*createdAt->asString());
  ASSERT_TRUE(created);
  EXPECT_GE(*created, before);
  EXPECT_LE(*created, currentDate());
  EXPECT_EQ(document.member("uiState")->compactJSONString(),
            R"({"agentAffinityByScope":{},"backgroundStyle":"Dots","boardAgentGuideCardId":null,)"
            R"("chatSidebarOpen":null,"chatSidebarWidth":null,"currentFolderId":null,)"
            R"("leftSidebarOpen":null,"viewportCenter":null,"zoomLevelsByFolder":{}})");
  EXPECT_EQ(*document.member("entries"), AnyCodableValue(AnyCodableValue::Array{}));

  EXPECT_EQ(*answer.member("status"), AnyCodableValue("ok"));
  EXPECT_EQ(*answer.member("created"), AnyCodableValue(true));
  EXPECT_EQ(*answer.member("project_path"), AnyCodableValue(root.string()));
  EXPECT_EQ(answer.member("summary")->compactJSONString(),
            R"({"card_count":0,"checked_files":1,"elapsed_ms":)" +
                answer.member("summary")->member("elapsed_ms")->compactJSONString().value() +
                R"(,"error_count":0,"warning_count":0})");
  // The token is that of the tree as written.
  EXPECT_EQ(*answer.member("compile_token")->asString(),
            WorkspaceProjectCompiler().compile(root, {}).compileToken);
  // And the loader reads it as the project it claims to be.
  EXPECT_EQ(WorkspaceProjectSnapshotStore().load(root).metadata.projectId,
            *document.member("projectId")->asString());
}

TEST(CreateProjectToolTest, DropsAZpkExtensionBeforeTheExistenceCheck) {
  TempDirectory sandbox;
  const AnyCodableValue answer = create(sandbox.path() / "Legacy.ZPK");
  EXPECT_EQ(*answer.member("project_path"), AnyCodableValue((sandbox.path() / "Legacy").string()));
  EXPECT_TRUE(std::filesystem::exists(sandbox.path() / "Legacy" / ".zorvik" / "workspace.json"));
  EXPECT_FALSE(std::filesystem::exists(sandbox.path() / "Legacy.ZPK"));
  EXPECT_EQ(invalidArgument([&] { create(sandbox.path() / "Legacy.zpk"); }), kRefusal);
}

TEST(CreateProjectToolTest, RefusesOrReplacesAnExistingTarget) {
  TempDirectory sandbox;
  const std::filesystem::path root = sandbox.path() / "Board";
  create(root);
  sandbox.write("Board/resources/cards/C1/body.md", "sidecar");
  sandbox.write("Board/.zorvik-control/checkpoints/entries/one.json", "{}");
  const std::string firstDocument = readFile(root / ".zorvik" / "workspace.json");

  EXPECT_EQ(invalidArgument([&] { create(root); }), kRefusal);
  EXPECT_EQ(invalidArgument([&] { create(root, false); }), kRefusal);
  // A plain file is a target too.
  sandbox.write("file.txt", "x");
  EXPECT_EQ(invalidArgument([&] { create(sandbox.path() / "file.txt"); }), kRefusal);
  EXPECT_EQ(readFile(root / ".zorvik" / "workspace.json"), firstDocument);

  create(root, true);
  EXPECT_FALSE(std::filesystem::exists(root / "resources" / "cards"));
  EXPECT_FALSE(std::filesystem::exists(root / ".zorvik-control"));
  EXPECT_NE(readFile(root / ".zorvik" / "workspace.json"), firstDocument);  // a new identity
}

TEST(CreateProjectToolTest, BadInputIsThrown) {
  EXPECT_EQ(invalidArgument([] { create(" \n\t"); }),
            "create_project.project_path must be non-empty.");
  EXPECT_THROW(CreateProjectTool().run(JSONObject{}, AgentToolContext::forSingleCall()),
               DecodingError);

  // The file system's refusal passes through with its own message.
  TempDirectory sandbox;
  sandbox.write("plain", "x");
  EXPECT_THROW(create(sandbox.path() / "plain" / "Board"), std::system_error);
}

}  // namespace
}  // namespace zorvik
