// StoredCardRecord: the persisted envelope of one card, with its stored payload.
//
// JSON keys equal the field names; parentID, responsibleAgentChatId and snapConstraints are
// optional and written only when present, every other key is required on decoding. Where the
// envelope is kept is the caller's business. Plain values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "foundation/iso8601_date.h"
#include "foundation/json/any_codable_value.h"
#include "foundation/uuid.h"
#include "workspace_store/stored_cards/stored_card_payload.h"

namespace zorvik {

class ValueDecoder;

struct StoredCardMetadata {
  int64_t version = 0;  // the card contract version the envelope was written for

  static StoredCardMetadata decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredCardMetadata&) const = default;
};

struct StoredCardPosition {
  double x = 0;
  double y = 0;

  static StoredCardPosition decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredCardPosition&) const = default;
};

struct StoredCardRecord {
  StoredCardMetadata meta;
  Uuid id;
  std::optional<Uuid> parentID;
  std::string title;
  bool shadowEnabled = false;
  StoredCardPayload payload;
  std::optional<Uuid> responsibleAgentChatId;
  Date createdAt;
  StoredCardPosition position;
  int64_t zIndex = 0;
  double actualWidth = 0;
  double actualHeight = 0;
  std::optional<AnyCodableValue> snapConstraints;

  // Throws StoredCardStorageError (invalidPayload) unless meta.version is the version of the
  // current card contract: "Card file uses an unsupported internal storage format for this build."
  void validateCurrentContract() const;

  static StoredCardRecord decode(const ValueDecoder& decoder);
  AnyCodableValue encode() const;
  bool operator==(const StoredCardRecord&) const = default;
};

}  // namespace zorvik
