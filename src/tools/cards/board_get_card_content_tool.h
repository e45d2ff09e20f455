// get_card_content: cards of the board in full, summary or type-specific form, each cut to a
// character budget.
//
// Works from the snapshot of cards given at construction; the tool is immutable afterwards, so
// concurrent runs are safe (execution "parallel"). Undecodable input (an unknown mode such as
// "raw" included) throws DecodingError; everything else is answered.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "tools/cards/shared_cards.h"
#include "tools/cards/workspace_card_context.h"
#include "tools/framework/agent_tool.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik {

class BoardGetCardContentTool final : public AgentTool {
 public:
  // Each card's budget when the request names none.
  static constexpr int64_t defaultMaxCharsPerCard = 2000;

  BoardGetCardContentTool(SharedCards cards, std::optional<std::filesystem::path> projectURL);

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: scope, card_ids, max_cards, mode, max_chars, max_chars_per_card, type_options.
  // Answer: scope_requested, scope_used, scope_label, total_cards, results, not_found.
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  SharedCards cards_;
  WorkspaceCardContext context_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
