#include "search_test_cards.h"

#include "foundation/uuid.h"

namespace zorvik::testing {

WorkspaceCard makeCard(std::string title, WorkspaceCardPayload::Value payload,
                       std::optional<std::string> summary) {
  WorkspaceCardPayload body{std::move(payload)};
  WorkspaceCard card{
      .id = Uuid::random(),
      .title = std::move(title),
      .type = body.type(),
      .summary = summary ? summary : body.summary(),
      .payload = std::move(body),
  };
  return card;
}

WorkspaceCard richTextCard(std::string title, std::string markdown) {
  return makeCard(std::move(title), WorkspaceRichTextPayload{.markdown = std::move(markdown)});
}

WorkspaceCard tableCard(std::string title, std::vector<std::string> columns,
                        std::vector<std::vector<std::string>> rows) {
  return makeCard(std::move(title),
                  WorkspaceTablePayload{.columns = std::move(columns), .rows = std::move(rows)});
}

WorkspaceCard linkCard(std::string title, std::string url, std::string note) {
  return makeCard(std::move(title),
                  WorkspaceLinkPayload{.url = std::move(url), .note = std::move(note)});
}

std::vector<const WorkspaceCard*> pointersTo(const std::vector<WorkspaceCard>& cards) {
  std::vector<const WorkspaceCard*> pointers;
  for (const WorkspaceCard& card : cards) pointers.push_back(&card);
  return pointers;
}

std::vector<std::string> keysOf(const AnyCodableValue& object) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : *object.asObject()) keys.push_back(key);
  return keys;
}

}  // namespace zorvik::testing
