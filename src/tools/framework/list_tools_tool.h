// list_tools: the registry's catalogue as an agent-facing tool.
#pragma once

#include <memory>

#include "tools/framework/agent_tool.h"
#include "tools/framework/agent_tool_registry.h"

namespace zorvik {

class ListToolsTool final : public AgentTool {
 public:
  // The registry must outlive the tool.
  explicit ListToolsTool(const AgentToolRegistry& registry);

  const AgentToolSpec& spec() const override { return spec_; }
  // Ignores its input; answers {"tools": [catalogue entries sorted by name]}.
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  const AgentToolRegistry& registry_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
