#include "workspace_store/card_model/workspace_chat_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceChatMessage WorkspaceChatMessage::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("role"), object.required<std::string>("text")};
}

AnyCodableValue WorkspaceChatMessage::encode() const {
  return ObjectEncoder().add("role", role).add("text", text).build();
}

WorkspaceChatPayload WorkspaceChatPayload::decode(const ValueDecoder& decoder) {
  using Messages = std::vector<WorkspaceChatMessage>;
  auto object = decoder.object();
  WorkspaceChatPayload payload;
  payload.summary = object.optional<std::string>("summary");
  payload.isInvisible = object.optional<bool>("isInvisible");

  std::optional<Messages> nestedMessages;
  std::optional<bool> nestedIsInvisible;
  if (const AnyCodableValue* chat = object.raw("chat"); chat && !chat->isNull()) {
    auto nested = object.nested(*chat, "chat").object();
    nestedMessages = nested.optional<Messages>("messages");
    nestedIsInvisible = nested.optional<bool>("isInvisible");
  }
  std::optional<Messages> topLevelMessages = object.optional<Messages>("messages");

  if (nestedMessages) {
    payload.messages = std::move(*nestedMessages);
  } else if (topLevelMessages) {
    payload.messages = std::move(*topLevelMessages);
  }
  if (!payload.isInvisible) payload.isInvisible = nestedIsInvisible;
  return payload;
}

AnyCodableValue WorkspaceChatPayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("chat",
           ObjectEncoder().add("messages", messages).add("isInvisible", isInvisible).build())
      .build();
}

}  // namespace zorvik
