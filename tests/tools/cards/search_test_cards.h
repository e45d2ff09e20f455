// Small card builders for the search and grep tests.
#pragma once

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "foundation/json/any_codable_value.h"

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

// The keys of a JSON object, in order.
std::vector<std::string> keysOf(const AnyCodableValue& object);

// The titles of a tool's result items, in order.
template <class Items>
std::vector<std::string> titlesOf(const Items& items) {
  std::vector<std::string> titles;
  for (const auto& item : items) titles.push_back(item.title);
  return titles;
}

// The message of the `Error` that `run` throws, or "no error".
template <class Error, class Run>
std::string thrownMessage(Run run) {
  try {
    run();
  } catch (const Error& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace zorvik::testing
