#include "workspace_store/card_model/workspace_image_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceImagePayload WorkspaceImagePayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("url"), object.optional<std::string>("summary")};
}

AnyCodableValue WorkspaceImagePayload::encode() const {
  return ObjectEncoder().add("url", url).add("summary", summary).build();
}

}  // namespace zorvik
