#include "workspace_store/card_model/workspace_card.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceCard WorkspaceCard::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceCard{
      .id = object.required<Uuid>("id"),
      .parentID = object.optional<Uuid>("parentID"),
      .title = object.required<std::string>("title"),
      .type = object.required<WorkspaceCardType>("type"),
      .summary = object.optional<std::string>("summary"),
      .isLoading = object.required<bool>("isLoading"),
      .payload = object.required<WorkspaceCardPayload>("payload"),
  };
}

AnyCodableValue WorkspaceCard::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("parentID", parentID)
      .add("title", title)
      .add("type", type)
      .add("summary", summary)
      .add("isLoading", isLoading)
      .add("payload", payload)
      .build();
}

WorkspaceCardFile WorkspaceCardFile::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return WorkspaceCardFile{
      .id = object.required<Uuid>("id"),
      .parentID = object.optional<Uuid>("parentID"),
      .title = object.required<std::string>("title"),
      .payload = object.required<WorkspaceCardPayload>("payload"),
  };
}

AnyCodableValue WorkspaceCardFile::encode() const {
  return ObjectEncoder()
      .add("id", id)
      .add("parentID", parentID)
      .add("title", title)
      .add("payload", payload)
      .build();
}

}  // namespace zorvik
