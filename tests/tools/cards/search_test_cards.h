// Small card builders for the search and grep tests.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workspace_store/card_model/workspace_card.h"

namespace zorvik::testing {

// A card with a fresh id, its type taken from the payload, and the payload's summary unless
// `summary` is given.
WorkspaceCard makeCard(std::string title, WorkspaceCardPayload::Value payload,
                       std::optional<std::string> summary = std::nullopt);

WorkspaceCard richTextCard(std::string title, std::string markdown);
WorkspaceCard tableCard(std::string title, std::vector<std::string> columns,
                        std::vector<std::vector<std::string>> rows);
WorkspaceCard linkCard(std::string title, std::string url, std::string note);

// The cards' addresses, in order.
std::vector<const WorkspaceCard*> pointersTo(const std::vector<WorkspaceCard>& cards);

}  // namespace zorvik::testing
