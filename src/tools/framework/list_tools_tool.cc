#include "tools/framework/list_tools_tool.h"

#include "foundation/json/value_encoder.h"
#include "tools/framework/json_schema.h"

namespace zorvik {
namespace {

AgentToolSpec listToolsSpec() {
  AnyCodableValue toolEntry = schema::object(
      {
          {"name", schema::string()},
          {"summary", schema::string()},
          {"execution", schema::stringEnum({"serial", "parallel"})},
          {"input_schema", schema::typed("object")},
      },
      {"name", "summary"});
  return AgentToolSpec{
      .name = "list_tools",
      .summary = "List available tools and their summaries.",
      .inputSchema = schema::object({}),
      .outputSchema = schema::object({{"tools", schema::array(toolEntry)}}, {"tools"}),
      .examples = std::vector<AnyCodableValue>{JSONObject{}},
      .notes =
          "Use only when explicitly needed. In standard planner runs the tool catalog is "
          "preloaded in prompt context.",
  };
}

}  // namespace

ListToolsTool::ListToolsTool(const AgentToolRegistry& registry)
    : registry_(registry), spec_(listToolsSpec()) {}

AnyCodableValue ListToolsTool::run(const AnyCodableValue&, const AgentToolContext&) const {
  return ObjectEncoder().add("tools", registry_.catalog()).build();
}

}  // namespace zorvik
