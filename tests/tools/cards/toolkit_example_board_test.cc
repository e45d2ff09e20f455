// The card reading tools over the bundled example board, loaded as the command line loads it.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "tools/cards/board_get_card_content_tool.h"
#include "tools/cards/board_list_card_metadata_tool.h"
#include "workspace_store/cli_workspace_cards_loader.h"

namespace zorvik {
namespace {

std::filesystem::path boardPath() {
  return std::filesystem::path(ZORVIK_SOURCE_DIR) / "examples" / "research-board";
}

// Loaded once for the whole suite.
const CLIWorkspaceLoadedBoard& board() {
  static const CLIWorkspaceLoadedBoard loaded =
      CLIWorkspaceCardsLoader::loadBoard(boardPath(), WorkspaceProjectSnapshotStore());
  return loaded;
}

TEST(ExampleBoardToolsTest, MetadataCoversEveryCard) {
  const BoardListCardMetadataTool tool(board().cards, board().loadDiagnostics, boardPath());
  const auto answer = tool.run(JSONObject{}, AgentToolContext::forSingleCall());
  EXPECT_EQ(*answer.member("board_health")->member("status")->asString(), "ok");
  const auto& results = *answer.member("results")->asArray();
  ASSERT_EQ(results.size(), board().cards.size());
  for (const auto& result : results) {
    EXPECT_TRUE(result.member("deep_link_url")->asString()->starts_with("zorvik://project/card/"));
    EXPECT_TRUE(result.member("metadata")->isObject());
  }
}

TEST(ExampleBoardToolsTest, TypeSpecificContentUsesTheKeyOfEachType) {
  const BoardGetCardContentTool tool(board().cards, boardPath());
  const auto answer = tool.run(AnyCodableValue::parse(R"({"mode": "type_specific"})"),
                               AgentToolContext::forSingleCall());
  const std::map<std::string, std::string> keyByType = {
      {"item", "item"},          {"image", "image"},  {"chat", "chat"},
      {"richText", "rich_text"}, {"html", "html"},    {"folder", "folder"},
      {"table", "table"},        {"browser", "text"}, {"video", "text"},
  };
  std::set<std::string> seen;
  for (const auto& result : *answer.member("results")->asArray()) {
    const std::string type = *result.member("type")->asString();
    seen.insert(type);
    ASSERT_TRUE(keyByType.contains(type)) << type;
    const auto* content = result.member("content")->asObject();
    EXPECT_TRUE(content->contains(keyByType.at(type))) << type;
    EXPECT_EQ(content->size(), 2u) << type << ": mode and one content key";
  }
  EXPECT_EQ(seen.size(), keyByType.size());
}

}  // namespace
}  // namespace zorvik
