// list_card_metadata: light facts, ownership and edit policy of the board's cards, with the health
// of the board load.
//
// Works from the snapshot of cards and load diagnostics given at construction; immutable
// afterwards, so concurrent runs are safe (execution "parallel"). Undecodable input throws
// DecodingError; scope "selection" without card ids throws DomainError
// ("BoardListCardMetadataTool", 1), since only the live application knows the selection.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "tools/cards/shared_cards.h"
#include "tools/cards/workspace_card_context.h"
#include "tools/framework/agent_tool.h"
#include "workspace_store/card_model/workspace_card.h"
#include "workspace_store/workspace_compile_diagnostic.h"

namespace zorvik {

class BoardListCardMetadataTool final : public AgentTool {
 public:
  static constexpr std::string_view selectionScopeError =
      "list_card_metadata on the current project snapshot supports only scope='board' (or "
      "explicit card_ids). scope='selection' requires the live runtime.";

  BoardListCardMetadataTool(SharedCards cards,
                            std::vector<WorkspaceCompileDiagnostic> loadDiagnostics,
                            std::optional<std::filesystem::path> projectURL);

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: scope, card_ids, max_cards. Answer: scope_requested, scope_used, scope_label,
  // total_cards, board_health, results, not_found.
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  SharedCards cards_;
  std::vector<WorkspaceCompileDiagnostic> loadDiagnostics_;
  WorkspaceCardContext context_;
  AgentToolSpec spec_;
};

// "empty" (no cards, no errors), "ok" (cards, no errors), "error" (errors, no cards) or "degraded"
// (cards and errors).
std::string_view boardHealthStatus(size_t cardCount, size_t loadErrorCount);

}  // namespace zorvik
