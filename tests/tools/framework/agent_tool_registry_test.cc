#include "tools/framework/agent_tool_registry.h"

#include <gtest/gtest.h>

#include <thread>

#include "tools/framework/list_tools_tool.h"

namespace zorvik {
namespace {

std::shared_ptr<AnyAgentTool> makeTool(std::string name, std::string summary,
                                       AnyCodableValue answer = JSONObject{}) {
  AgentToolSpec spec{.name = std::move(name), .summary = std::move(summary)};
  return std::make_shared<AnyAgentTool>(
      spec, [answer](const AnyCodableValue&, const AgentToolContext&) { return answer; });
}

TEST(AgentToolRegistryTest, SameNameReplacesAndCatalogIsSortedByName) {
  AgentToolRegistry registry;
  registry.registerTool(makeTool("zeta", "last"));
  registry.registerTool(makeTool("Alpha", "capital sorts first"));
  registry.registerTool(makeTool("beta", "first beta", 1));
  registry.registerTool(makeTool("beta", "second beta", 2));

  const auto catalog = registry.catalog();
  ASSERT_EQ(catalog.size(), 3u);
  EXPECT_EQ(catalog[0].name, "Alpha");
  EXPECT_EQ(catalog[1].name, "beta");
  EXPECT_EQ(catalog[1].summary, "second beta");
  EXPECT_EQ(catalog[2].name, "zeta");
  EXPECT_EQ(registry.tool("beta")->run(JSONObject{}, AgentToolContext::forSingleCall()),
            AnyCodableValue(2));
  EXPECT_EQ(registry.tool("BETA"), nullptr);
  EXPECT_EQ(registry.spec("missing"), std::nullopt);
  EXPECT_EQ(registry.allSpecs().size(), 3u);
}

TEST(AgentToolRegistryTest, ConcurrentRegistrationAndLookupKeepEveryTool) {
  AgentToolRegistry registry;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&registry, t] {
      for (int i = 0; i < 200; ++i) {
        registry.registerTool(makeTool("tool_" + std::to_string(t) + "_" + std::to_string(i), ""));
        registry.catalog();
        registry.tool("tool_0_0");
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(registry.catalog().size(), 800u);
}

TEST(ListToolsToolTest, AnswersTheCatalogueWithOptionalKeysLeftOut) {
  AgentToolRegistry registry;
  const ListToolsTool listTools(registry);
  EXPECT_EQ(listTools.run(JSONObject{}, AgentToolContext::forSingleCall()).compactJSONString(),
            "{\"tools\":[]}");

  auto spec = makeTool("with_schema", "described")->spec();
  spec.execution = AgentToolExecutionMode::parallel;
  spec.inputSchema = JSONObject{{"type", "object"}};
  spec.outputSchema = JSONObject{{"type", "object"}};
  spec.examples = std::vector<AnyCodableValue>{JSONObject{}};
  registry.registerTool(std::make_shared<AnyAgentTool>(spec, nullptr));
  registry.registerTool(makeTool("plain", "bare"));
  EXPECT_EQ(listTools.run(JSONObject{}, AgentToolContext::forSingleCall()).compactJSONString(),
            "{\"tools\":[{\"name\":\"plain\",\"summary\":\"bare\"},{\"execution\":\"parallel\","
            "\"input_schema\":{\"type\":\"object\"},\"name\":\"with_schema\",\"summary\":"
            "\"described\"}]}");
}

}  // namespace
}  // namespace zorvik
