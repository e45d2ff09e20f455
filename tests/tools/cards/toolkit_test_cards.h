// Cards for the card toolkit tests, built by decoding payload JSON as the board loader does.
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/value_decoder.h"
#include "foundation/uuid.h"
#include "workspace_store/card_model/workspace_card.h"

namespace zorvik::testing {

// A valid UUID whose last group is `n`.
inline Uuid cardID(int n) {
  char text[40];
  std::snprintf(text, sizeof text, "00000000-0000-4000-8000-%012d", n);
  return *Uuid::parse(text);
}

// `payloadJSON` is the payload's JSON form, e.g. {"image": {"url": "..."}}.
inline WorkspaceCard makeCard(int n, std::string title, std::string_view payloadJSON,
                              std::optional<int> parent = std::nullopt,
                              std::optional<std::string> summary = std::nullopt) {
  WorkspaceCard card;
  card.id = cardID(n);
  if (parent) card.parentID = cardID(*parent);
  card.title = std::move(title);
  card.payload = decodeValue<WorkspaceCardPayload>(AnyCodableValue::parse(payloadJSON));
  card.type = card.payload.type();
  card.summary = std::move(summary);
  return card;
}

// Compact JSON text with "/" left unescaped, so that expectations read naturally.
inline std::string compactJSON(const AnyCodableValue& value) {
  std::string text = *value.compactJSONString();
  for (size_t at = text.find("\\/"); at != std::string::npos; at = text.find("\\/", at)) {
    text.erase(at, 1);
  }
  return text;
}

inline WorkspaceCard tableCard(int n, std::vector<std::string> columns,
                               std::vector<std::vector<std::string>> rows) {
  WorkspaceCard card;
  card.id = cardID(n);
  card.title = "Table";
  card.type = WorkspaceCardType::table;
  card.payload.value =
      WorkspaceTablePayload{std::nullopt, std::move(columns), std::move(rows), false};
  return card;
}

}  // namespace zorvik::testing
