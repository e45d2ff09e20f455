#include "workspace_store/card_model/workspace_rich_text_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceRichTextPayload WorkspaceRichTextPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<std::string>("summary"), object.required<std::string>("markdown"),
          object.optional<double>("font_size")};
}

AnyCodableValue WorkspaceRichTextPayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("markdown", markdown)
      .add("font_size", fontSize)
      .build();
}

}  // namespace zorvik
