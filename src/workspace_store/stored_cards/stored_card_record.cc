#include "workspace_store/stored_cards/stored_card_record.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "workspace_store/card_model/workspace_card_contract_registry.h"
#include "workspace_store/stored_cards/stored_card_storage_error.h"

namespace zorvik {

StoredCardMetadata StoredCardMetadata::decode(const ValueDecoder& decoder) {
  return {decoder.object().required<int64_t>("version")};
}

AnyCodableValue StoredCardMetadata::encode() const {
  return ObjectEncoder().add("version", version).build();
}

StoredCardPosition StoredCardPosition::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<double>("x"), object.required<double>("y")};
}

AnyCodableValue StoredCardPosition::encode() const {
  return ObjectEncoder().add("x", x).add("y", y).build();
}

void StoredCardRecord::validateCurrentContract() const {
  if (meta.version != WorkspaceCardContractRegistry::current().version) {
    throw StoredCardStorageError(
        StoredCardStorageError::Kind::invalidPayload,
        "Card file uses an unsupported internal storage format for this build.");
  }
}

StoredCardRecord StoredCardRecord::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {.meta = object.required<StoredCardMetadata>("meta"),
          .id = object.required<Uuid>("id"),
          .parentID = object.optional<Uuid>("parentID"),
          .title = object.required<std::string>("title"),
          .shadowEnabled = object.required<bool>("shadowEnabled"),
          .payload = object.required<StoredCardPayload>("payload"),
          .responsibleAgentChatId = object.optional<Uuid>("responsibleAgentChatId"),
          .createdAt = object.required<Date>("createdAt"),
          .position = object.required<StoredCardPosition>("position"),
          .zIndex = object.required<int64_t>("zIndex"),
          .actualWidth = object.required<double>("actualWidth"),
          .actualHeight = object.required<double>("actualHeight"),
          .snapConstraints = object.optional<AnyCodableValue>("snapConstraints")};
}

AnyCodableValue StoredCardRecord::encode() const {
  return ObjectEncoder()
      .add("meta", meta)
      .add("id", id)
      .add("parentID", parentID)
      .add("title", title)
      .add("shadowEnabled", shadowEnabled)
      .add("payload", payload)
      .add("responsibleAgentChatId", responsibleAgentChatId)
      .add("createdAt", createdAt)
      .add("position", position)
      .add("zIndex", zIndex)
      .add("actualWidth", actualWidth)
      .add("actualHeight", actualHeight)
      .add("snapConstraints", snapConstraints)
      .build();
}

}  // namespace zorvik
