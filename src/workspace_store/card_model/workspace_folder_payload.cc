#include "workspace_store/card_model/workspace_folder_payload.h"

#include "foundation/json/value_decoder.h"
#include "foundation/json/value_encoder.h"

namespace zorvik {

WorkspaceFolderPayload WorkspaceFolderPayload::decode(const ValueDecoder& decoder) {
  auto object = decoder.object();
  WorkspaceFolderPayload payload;
  payload.summary = object.optional<std::string>("summary");
  payload.layout = object.required<std::string>("layout");
  payload.nodeRole = object.optionalAny<std::string>({"node_role", "nodeRole"}).value_or("folder");
  payload.gridColumns =
      object.optionalAny<int64_t>({"grid_columns", "gridColumns", "gridColumnCount"});
  payload.isDropbox = object.value<bool>("is_dropbox", false);
  payload.slideLayoutMode = object.value<std::string>("slide_layout_mode", "adaptive");
  payload.slideTemplateId = object.optional<std::string>("slideTemplateId");
  payload.slideThemeId = object.optional<std::string>("slideThemeId");
  payload.slideVersion = object.optional<int64_t>("slideVersion");
  payload.groupKind = object.optional<std::string>("group_kind")
                          .value_or(payload.slideTemplateId ? "slide" : "regular");
  return payload;
}

AnyCodableValue WorkspaceFolderPayload::encode() const {
  return ObjectEncoder()
      .add("summary", summary)
      .add("layout", layout)
      .add("node_role", nodeRole)
      .add("grid_columns", gridColumns)
      .add("group_kind", groupKind)
      .add("is_dropbox", isDropbox)
      .add("slide_layout_mode", slideLayoutMode)
      .add("slideTemplateId", slideTemplateId)
      .add("slideThemeId", slideThemeId)
      .add("slideVersion", slideVersion)
      .build();
}

}  // namespace zorvik
