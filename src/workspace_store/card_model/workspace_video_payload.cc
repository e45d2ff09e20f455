#include "workspace_store/card_model/workspace_video_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceVideoPayload WorkspaceVideoPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.required<std::string>("url"), object.required<std::string>("sourceType"),
          object.optional<std::string>("summary")};
}

AnyCodableValue WorkspaceVideoPayload::encode() const {
  return ObjectEncoder()
      .add("url", url)
      .add("sourceType", sourceType)
      .add("summary", summary)
      .build();
}

}  // namespace zorvik
