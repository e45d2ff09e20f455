// list_card_layouts: the geometry of chosen cards (frame, center, z-index, parent, and on request
// snap constraints), read from the project on disk at each call; the application is not needed.
//
// The project is the input's project_path, else the default given at construction. Argument
// errors throw std::invalid_argument with the fixed messages below; a project that fails to load
// throws the load's error. Immutable; concurrent runs are safe.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "tools/framework/agent_tool.h"

namespace zorvik {

class ListCardLayoutsTool final : public AgentTool {
 public:
  static constexpr std::string_view kInvalidInputPrefix =
      "Invalid input for list_card_layouts. Expected "
      "{\"card_ids\":[\"UUID\"],\"include_constraints\":true} or {\"scope\":\"board\"}. Error: ";
  static constexpr std::string_view kUnsupportedScopeMessage =
      "list_card_layouts only supports scope='board' (or provide explicit card_ids).";
  static constexpr std::string_view kMissingSelectionMessage =
      "list_card_layouts requires non-empty card_ids, or scope='board'.";
  // Followed by the offending ids as given, joined by ", ".
  static constexpr std::string_view kInvalidIDsPrefix =
      "list_card_layouts card_ids contains invalid UUID values: ";

  explicit ListCardLayoutsTool(std::optional<std::filesystem::path> defaultProjectURL);

  const AgentToolSpec& spec() const override { return spec_; }
  // Input: project_path, card_ids, scope, include_constraints. Non-empty card_ids select those
  // cards in requested order, each once (a scope is then ignored); otherwise scope "board" selects
  // every card in entry order. Answer: total (layouts returned), layouts (LayoutItem),
  // missing_card_ids (requested ids without a card, as given).
  AnyCodableValue run(const AnyCodableValue& input, const AgentToolContext& context) const override;

 private:
  std::optional<std::filesystem::path> defaultProjectURL_;
  AgentToolSpec spec_;
};

}  // namespace zorvik
