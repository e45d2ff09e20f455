#include "workspace_store/card_model/workspace_table_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceTablePayload WorkspaceTablePayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  return {object.optional<std::string>("summary"),
          object.required<std::vector<std::string>>("columns"), object.required<TableRows>("rows"),
          object.required<bool>("showsRowHeaders")};
}

AnyCodableValue WorkspaceTablePayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("columns", columns)
      .add("rows", rows)
      .add("showsRowHeaders", showsRowHeaders)
      .build();
}

}  // namespace zorvik
