#include "workspace_store/checkpoints/project_state_hash.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "foundation/json/json_writer.h"
#include "foundation/json/value_encoder.h"
#include "foundation/sha256.h"

namespace zorvik {
namespace {

AnyCodableValue metadataHashPayload(const ProjectMetadata& metadata) {
  return ObjectEncoder()
      .add("structure_version", metadata.structureVersion)
      .add("project_id", metadata.projectId)
      .add("resources_folder_name", metadata.resourcesFolderName)
      .add("background_style", metadata.backgroundStyle)
      .add("current_folder_id", metadata.currentFolderId)
      .build();
}

// The cards in hash order. Upper-case hexadecimal text sorts like the bytes it spells, so ordering
// by the UUID value is ordering by its upper-case string; a stable sort keeps duplicates in entry
// order.
std::vector<const CardRecord*> cardsInHashOrder(const WorkspaceProjectSnapshot& snapshot) {
  std::vector<const CardRecord*> cards;
  cards.reserve(snapshot.cards.size());
  for (const CardRecord& card : snapshot.cards) cards.push_back(&card);
  std::stable_sort(cards.begin(), cards.end(),
                   [](const CardRecord* a, const CardRecord* b) { return a->id < b->id; });
  return cards;
}

// Appends the compact text of `value`; false when it holds a non-finite number.
bool appendCompactJSON(std::string& out, const AnyCodableValue& value) {
  std::optional<std::string> json = writeJSON(value, JSONStyle::compact);
  if (!json) return false;
  out += *json;
  return true;
}

AnyCodableValue cardHashPayloadWithoutPayload(const CardRecord& card) {
  return ObjectEncoder()
      .add("id", card.id)
      .add("parent_id", card.parentID)
      .add("title", card.title)
      .add("path", card.path)
      .add("folder_id", card.folderID)
      .add("frame", card.frame)
      .add("z_index", card.zIndex)
      .add("snap_constraints", card.snapConstraints)
      .add("group_stacks", card.groupStacks)
      .build();
}

// Appends the compact text of cardHashPayload(card) without copying the card's payload: the other
// members are written in key order with the payload spliced in at its sorted place.
bool appendCardHashJSON(std::string& out, const CardRecord& card) {
  constexpr std::string_view kPayloadKey = "payload";
  const AnyCodableValue rest = cardHashPayloadWithoutPayload(card);
  bool first = true;
  auto member = [&](std::string_view key, const AnyCodableValue& value) {
    out += first ? "{" : ",";
    first = false;
    appendJSONString(out, key);
    out += ':';
    return appendCompactJSON(out, value);
  };
  bool payloadWritten = false;
  for (const auto& [key, value] : *rest.asObject()) {
    if (!payloadWritten && key > kPayloadKey) {
      if (!member(kPayloadKey, card.payload)) return false;
      payloadWritten = true;
    }
    if (!member(key, value)) return false;
  }
  if (!payloadWritten && !member(kPayloadKey, card.payload)) return false;
  out += '}';
  return true;
}

}  // namespace

AnyCodableValue cardHashPayload(const CardRecord& card) {
  AnyCodableValue form = cardHashPayloadWithoutPayload(card);
  form.asObject()->set("payload", card.payload);
  return form;
}

AnyCodableValue stateHashPayload(const WorkspaceProjectSnapshot& snapshot) {
  AnyCodableValue::Array cards;
  cards.reserve(snapshot.cards.size());
  for (const CardRecord* card : cardsInHashOrder(snapshot)) cards.push_back(cardHashPayload(*card));
  return AnyCodableValue(JSONObject{{"cards", std::move(cards)},
                                    {"metadata", metadataHashPayload(snapshot.metadata)}});
}

std::string cardHash(const CardRecord& card) {
  std::string json;
  return appendCardHashJSON(json, card) ? sha256Hex(json) : std::string(kHashErrorText);
}

std::string projectStateHash(const WorkspaceProjectSnapshot& snapshot) {
  // Streams the compact text of stateHashPayload card by card: the same bytes, without building
  // the whole form or copying any payload.
  Sha256Hasher hasher;
  hasher.update(R"({"cards":[)");
  std::string json;
  bool first = true;
  for (const CardRecord* card : cardsInHashOrder(snapshot)) {
    json.clear();
    if (!first) json += ',';
    first = false;
    if (!appendCardHashJSON(json, *card)) return std::string(kHashErrorText);
    hasher.update(json);
  }
  json = R"(],"metadata":)";
  if (!appendCompactJSON(json, metadataHashPayload(snapshot.metadata))) {
    return std::string(kHashErrorText);
  }
  json += '}';
  hasher.update(json);
  return hasher.finishHex();
}

}  // namespace zorvik
