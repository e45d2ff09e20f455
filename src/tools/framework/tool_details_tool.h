// tool_details: the full spec of one registered tool, optionally with its examples narrowed to one
// card type.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/framework/agent_tool.h"
#include "tools/framework/agent_tool_registry.h"

namespace zorvik {

class ToolDetailsTool final : public AgentTool {
 public:
  // The registry must outlive the tool.
  explicit ToolDetailsTool(const AgentToolRegistry& registry);

  const AgentToolSpec& spec() const override { return spec_; }
  // Input {"name", "card_type"?}. An unknown name throws AgentError::toolNotFound.
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  const AgentToolRegistry& registry_;
  AgentToolSpec spec_;
};

// The examples of `toolName` that concern `cardType` (lower-case), or nullopt for a tool whose
// examples cannot be told apart by card type. Only create_cards, edit_cards and get_card_content
// are known.
std::optional<std::vector<AnyCodableValue>> filterExamples(
    const std::vector<AnyCodableValue>& examples, std::string_view toolName,
    std::string_view cardType);

// `spec` with its notes prefixed by "Filtered examples for card_type=<cardType>." and its examples
// narrowed to the matching ones, or all of them when none match.
AgentToolSpec filterSpec(const AgentToolSpec& spec, std::string_view toolName,
                         std::string_view cardType);

}  // namespace zorvik
