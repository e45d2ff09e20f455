#include "workspace_store/stored_cards/stored_card_record.h"

#include <gtest/gtest.h>

#include "foundation/json/decoding_error.h"
#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"
#include "stored_cards_test_support.h"
#include "workspace_store/card_model/workspace_card_contract_registry.h"

namespace zorvik {
namespace {

constexpr const char* kEnvelope =
    R"({"meta":{"version":3},"id":"6FA459EA-EE8A-3CA4-894E-DB77E160355E",)"
    R"("parentID":"1B4E28BA-2FA1-11D2-883F-0016D3CCA427","title":"Notes","shadowEnabled":true,)"
    R"("payload":{"type":"table","table":{"dataSource":{"mode":"external","format":"csv",)"
    R"("path":"resources/cards/6FA459EA-EE8A-3CA4-894E-DB77E160355E/table.csv",)"
    R"("encoding":"utf-8","headerRow":true}}},)"
    R"("responsibleAgentChatId":"9C5B94B1-35AD-49BB-B118-8E8FC24ABF80",)"
    R"("createdAt":"2024-03-02T10:00:00Z","position":{"x":-40,"y":12.25},"zIndex":4,)"
    R"("actualWidth":320,"actualHeight":180.5,"snapConstraints":{"left":null}})";

TEST(StoredCardRecordTest, EnvelopeRoundTrips) {
  const AnyCodableValue raw = AnyCodableValue::parse(kEnvelope);
  const StoredCardRecord record = decodeValue<StoredCardRecord>(raw);
  EXPECT_EQ(record.meta.version, 3);
  EXPECT_EQ(record.id, kCardID);
  EXPECT_EQ(record.position, (StoredCardPosition{-40, 12.25}));
  EXPECT_EQ(record.payload.referencedSidecarPaths(),
            std::vector<std::string>{kCardFolder + "/table.csv"});
  EXPECT_EQ(encodeValue(record), raw);

  // The optional keys may be absent and are then not written.
  AnyCodableValue minimal = raw;
  for (const char* key : {"parentID", "responsibleAgentChatId", "snapConstraints"}) {
    minimal.asObject()->erase(key);
  }
  EXPECT_EQ(encodeValue(decodeValue<StoredCardRecord>(minimal)), minimal);
  for (const char* key : {"meta", "title", "shadowEnabled", "payload", "createdAt", "zIndex"}) {
    AnyCodableValue incomplete = raw;
    incomplete.asObject()->erase(key);
    EXPECT_THROW(decodeValue<StoredCardRecord>(incomplete), DecodingError) << key;
  }
  AnyCodableValue untyped = raw;
  untyped.asObject()->set("payload", JSONObject{});
  expectStorageError([&] { decodeValue<StoredCardRecord>(untyped); },
                     StoredCardStorageError::Kind::invalidPayload,
                     "Stored card payload is missing required field `type`.");
}

TEST(StoredCardRecordTest, OnlyTheCurrentContractVersionIsAccepted) {
  StoredCardRecord record = decodeValue<StoredCardRecord>(AnyCodableValue::parse(kEnvelope));
  const int64_t current = WorkspaceCardContractRegistry::current().version;
  record.meta.version = current;
  EXPECT_NO_THROW(record.validateCurrentContract());
  for (int64_t other : {current - 1, current + 1}) {
    record.meta.version = other;
    expectStorageError([&] { record.validateCurrentContract(); },
                       StoredCardStorageError::Kind::invalidPayload,
                       "Card file uses an unsupported internal storage format for this build.");
  }
}

}  // namespace
}  // namespace zorvik
